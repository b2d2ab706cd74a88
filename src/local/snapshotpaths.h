// Paths on the way to a volume's snapshots, as text. Only drives have snapshots, so these are paths
// of drives on every platform. (On Linux only in tests, see snapshots.h.)
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// The plain path of what `path` means: an extended-length path without its prefix, or the live item
// of which `path` is an earlier version. Nothing if it is plain already.
std::optional<std::u16string> NormalizeRevisionPath(std::u16string_view path);

struct DrivePath
{
    char16_t letter;
    std::u16string_view rest; // behind the root
};

// The two parts of a path that begins at the root of a drive. `rest` is a view into `path`.
std::optional<DrivePath> SplitDrivePath(std::u16string_view path);

} // namespace tarnwell
