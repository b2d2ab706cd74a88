// Histories in full and trees, as a host asks for them. What comes otherwise than it should throws.
#pragma once

#include "client/bare.h"

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tarnwell::bench
{

// The first `count` revisions of the item at `path`, or all for 0, which are `expected` ones;
// `flags` are those of HistoryOptions.
std::function<void()> Telling(const ComPtr<IFileSystem>& system, const std::string& path,
                              std::uint32_t count, std::uint32_t expected, std::uint32_t flags = 0);

// So many contents of the same size, through one tree of the folder.
std::function<void()> ReadingAll(const ComPtr<IFileSystem>& system, const std::string& folder,
                                 const std::function<std::string(std::uint32_t)>& nameOf,
                                 std::uint32_t count, std::size_t size);

// All that is below the folder, so many files among it.
std::function<void()> ListingAll(const ComPtr<IFileSystem>& system, const std::string& folder,
                                 std::uint32_t count);

// A run that prints something.
std::function<void()> Bare(const BareRun& run);

} // namespace tarnwell::bench
