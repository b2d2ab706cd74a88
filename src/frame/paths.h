// Local paths as text: nothing here looks at a disk.
#pragma once

#include "platform/pathrules.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

bool IsSeparator(char16_t unit, const PathRules& rules = platformPathRules);

// The index just behind the last separator, with a drive's colon counting as one; 0 if there is
// none.
std::size_t FindLeafOffset(std::u16string_view path, const PathRules& rules = platformPathRules);

// Whether `path` is the root of a file system, separator included, with nothing behind.
bool IsRootPath(std::u16string_view path, const PathRules& rules = platformPathRules);

// Whether `path` begins where the file systems do.
bool IsWholePath(std::u16string_view path, const PathRules& rules = platformPathRules);

// Whether `path` begins at the root of a drive, or of all that there is. So looking at it asks no
// other machine, as a share would, and no device.
bool IsLocalPath(std::u16string_view path, const PathRules& rules = platformPathRules);

// Makes `path` ready for a name to be put behind it.
void AppendSeparator(std::u16string& path, const PathRules& rules = platformPathRules);

// The folder that holds the item at `path`, without a separator at its end unless it is a root.
// Empty if `path` has no separator.
std::u16string_view ParentFolderOf(std::u16string_view path,
                                   const PathRules& rules = platformPathRules);

// The text behind the last separator.
std::u16string_view LeafNameOf(std::u16string_view path,
                               const PathRules& rules = platformPathRules);

// `parent`, the text in front of a leaf, without the one separator at its end. A root, a drive's
// colon and a lone separator stay whole: without their last character they would mean something
// else.
std::u16string_view DropLastSeparator(std::u16string_view parent,
                                      const PathRules& rules = platformPathRules);

struct StreamPath
{
    std::u16string_view file;
    std::u16string_view stream;
};

// The two sides of the colon of a path that names a data stream.
std::optional<StreamPath> SplitStreamPath(std::u16string_view path,
                                          const PathRules& rules = platformPathRules);

// The end of the name that begins at `at`, and the end of a run of at most `most` separators.
std::size_t SkipName(std::u16string_view path, std::size_t at,
                     const PathRules& rules = platformPathRules);
std::size_t SkipSeparators(std::u16string_view path, std::size_t at,
                           std::size_t most = std::u16string_view::npos,
                           const PathRules& rules = platformPathRules);

// Where the first folder of `path` begins that one could create: behind a share, a drive or the
// leading separators. May be past the end of the path.
std::size_t FirstCreatableOffset(std::u16string_view path,
                                 const PathRules& rules = platformPathRules);

} // namespace tarnwell
