// The lines of the Perforce client's output that are known by a pattern. They are matched by hand,
// since the engine's time grows with the square of a long line that nearly fits.
#pragma once

#include <optional>
#include <string_view>

namespace tarnwell
{

// Views into the line.
struct P4Revision
{
    std::u16string_view id;
    std::u16string_view change;
    std::u16string_view action;
    // Year, month, day, hour, minute, second.
    std::u16string_view time[6];
    std::u16string_view author;
};

// What a search of `line` finds for this pattern (a blank stands at the break), regardless of case:
//
//   \.\.\. #([0-9]+) change ([0-9]+) (.*) on ([0-9]+)/([0-9]+)/([0-9]+)
//                                        ([0-9]+):([0-9]+):([0-9]+) by ([^ ]+)
//
// So an action may be of several words, and what stands behind the author doesn't matter.
std::optional<P4Revision> FindP4Revision(std::u16string_view line);

// The group of ".*#[0-9]+ - (.*)", searched for in `line`.
std::optional<std::u16string_view> FindP4LocalPath(std::u16string_view line);

} // namespace tarnwell
