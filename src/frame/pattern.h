// Patterns over UTF-16 text: ECMAScript grammar, case ignored. The one place that matches them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// The groups of one match; group 0 is all that matched. A group that took no part is empty. Views
// into the text that was matched.
using Groups = std::vector<std::u16string_view>;

// Compiled once and usable from any thread. A match that the engine gives up as too complex
// counts as none.
class Pattern
{
public:
    explicit Pattern(std::u16string_view expression);
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;
    ~Pattern();

    // The whole of `text` must match. False leaves `groups` as it was.
    bool MatchWhole(std::u16string_view text, Groups& groups) const;

    // The first place in `text` that matches.
    bool Search(std::u16string_view text, Groups& groups) const;

private:
    struct Compiled;
    std::unique_ptr<const Compiled> compiled_;
};

} // namespace tarnwell
