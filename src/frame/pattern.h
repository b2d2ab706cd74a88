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

struct CompiledPattern;

} // namespace tarnwell

// Every match is a call of this: a plain name, by which tests count them at link time. Whether
// `text` matches, all of it or any place in it. False leaves `groups` as it was.
extern "C" bool MatchPattern(const tarnwell::CompiledPattern& pattern, std::u16string_view text,
                             bool whole, tarnwell::Groups& groups);

namespace tarnwell
{

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
    bool MatchWhole(std::u16string_view text, Groups& groups) const
    {
        return MatchPattern(*compiled_, text, true, groups);
    }

    // The first place in `text` that matches.
    bool Search(std::u16string_view text, Groups& groups) const
    {
        return MatchPattern(*compiled_, text, false, groups);
    }

private:
    std::unique_ptr<const CompiledPattern> compiled_;
};

} // namespace tarnwell
