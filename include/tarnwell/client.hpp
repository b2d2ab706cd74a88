/// @file
/// tarnwell for hosts in C++17: one include, nothing to link but the system's own.
///
///     using namespace tarnwell::client;
///     ThreadScope thread;
///     const Module module;
///     const FileSystem files = module.Open("svn://host/repository/trunk");
///     for (const Item& item : files.GetFolder("svn://host/repository/trunk").Contents())
///         std::cout << item.Name() << "\n";
///
/// Whatever fails throws Failure, whose `what()` is the text for the user. Texts go in as UTF-8,
/// UTF-16 or paths and come out as UTF-8. Objects are small, copied freely, and own what they hold;
/// `Get()` gives the interface behind one, for all that isn't here. The rules for threads are those
/// of tarnwell.h.
#pragma once

#include <tarnwell/client/answers.hpp>
#include <tarnwell/client/failure.hpp>
#include <tarnwell/client/filesystem.hpp>
#include <tarnwell/client/history.hpp>
#include <tarnwell/client/items.hpp>
#include <tarnwell/client/library.hpp>
#include <tarnwell/client/list.hpp>
#include <tarnwell/client/revisions.hpp>
#include <tarnwell/client/sinks.hpp>
#include <tarnwell/client/streams.hpp>
#include <tarnwell/client/text.hpp>
#include <tarnwell/client/trees.hpp>
#include <tarnwell/tarnwell.h>
