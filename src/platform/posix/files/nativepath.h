// Paths at the operations: UTF-16 in, bytes at the system's calls.
#pragma once

#include "platform/win32.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell::posix
{

// The bytes of `path`. Nothing, with the last error set, if it is empty (a missing folder to the
// platform), has a lone surrogate that stands for no byte, or memory is short.
std::optional<std::string> NativePath(LPCWSTR path);

// A path without the separators at its end; "/" stays as it is.
std::string_view WithoutTrailingSeparators(std::string_view path);
// Behind the last separator, trailing ones not counted. Empty for a root.
std::string_view LeafOf(std::string_view path);
// What comes before the leaf: with its separator, or "." if there is none.
std::string FolderOf(std::string_view path);

// The code for a call that failed with `number` on `path`. The platform tells a missing entry
// from a missing folder on the way to it, errno doesn't.
DWORD LookupError(const std::string& path, int number);

// Whether a link whose target can't be had for this reason, an errno, has no target at all.
bool IsDangling(int number);

} // namespace tarnwell::posix
