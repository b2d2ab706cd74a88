// What the parts of a local path are. Both platforms' rules exist everywhere, so that each can be
// tested anywhere; the module uses its own platform's.
#pragma once

#include <string_view>

namespace tarnwell
{

struct PathRules
{
    std::u16string_view separators;
    char16_t appended; // the separator that is added between a folder and a name
    bool drives;       // "X:" begins a path, "X:\" and "\\?\X:\" are roots, "\\a\b" are shares
    bool dataStreams;  // "file:name" is a named data stream of "file"
    char16_t listMark; // between the paths of a list, as a variable of the environment has them
};

inline constexpr PathRules windowsPathRules{u"\\/", u'\\', true, true, u';'};

// A backslash or a colon is a part of a name here: taking it for more would open, or delete, the
// wrong file.
inline constexpr PathRules posixPathRules{u"/", u'/', false, false, u':'};

// The rules of the platform that this code runs on.
extern const PathRules& platformPathRules;

} // namespace tarnwell
