/// @file
/// tarnwell: one object model of file systems, items, folders, contents, streams and revisions.
///
/// A host includes this header, loads the module by path, asks `DllGetClassObject` for one of
/// the six file system classes (classes.h), calls `IFileSystemInit::SetHost`, and then works
/// with `IFileSystem`. A host in C++ has less to write with client.hpp, which does all of that.
/// The rules that hold for every method:
///
/// - Every method returns a status; negative is failure. A failed method has cleared its out
///   values. Beside the statuses that a method lists, each may give E_OUTOFMEMORY, and what comes
///   from the system is `0x80070000` plus the system's number, on Linux its nearest counterpart.
/// - A failure of a method leaves a ready text in the calling thread's error information
///   (`GetErrorInfo`) wherever `ISupportErrorInfo` says so and the method's comment doesn't say
///   "bare". Bare failures leave what was there before, so clear it (`SetErrorInfo(0, nullptr)`)
///   before each call.
/// - Text parameters are terminated UTF-16. A null text counts as the empty one. Texts that come
///   out are `BSTR`s, never null on success; the caller frees them.
/// - Interface pointers that come out carry a reference that the caller releases. Interface
///   pointers that go in are the caller's; the module takes references of its own where it keeps
///   them beyond the call.
/// - Times are `FILETIME` values: 100-nanosecond intervals since 1 January 1601 UTC.
/// - Objects may be used from any thread, one thread at a time per object. Error information
///   belongs to the thread that made the call. On Windows each thread initialises COM.
#pragma once

#include <tarnwell/classes.h>
#include <tarnwell/constants.h>
#include <tarnwell/entrypoints.h>
#include <tarnwell/filesystem.h>
#include <tarnwell/history.h>
#include <tarnwell/host.h>
#include <tarnwell/interfaceid.h>
#include <tarnwell/items.h>
#include <tarnwell/revisions.h>
#include <tarnwell/streams.h>
#include <tarnwell/trees.h>
