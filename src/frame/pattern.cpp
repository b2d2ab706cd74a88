#include "frame/pattern.h"

#include <boost/regex.hpp>

#include <algorithm>
#include <stdexcept>

namespace tarnwell
{

namespace
{

// The engine is fastest with bytes, and no expression names a unit beyond ASCII. So each unit
// becomes a byte that every expression treats alike: the two line ends beyond ASCII become one
// within, and all other units the same byte.
char Fold(char16_t unit)
{
    constexpr char other = '\x7F';
    if (unit < 0x7F)
        return static_cast<char>(unit);
    return unit == u'\u2028' || unit == u'\u2029' ? '\n' : other;
}

std::string Fold(std::u16string_view text)
{
    std::string folded(text.size(), '\0');
    std::transform(text.begin(), text.end(), folded.begin(),
                   [](char16_t unit) { return Fold(unit); });
    return folded;
}

// The engine's "." takes any byte; ECMAScript's takes no line end.
std::string WithStrictDots(std::u16string_view expression)
{
    std::string strict;
    bool escaped = false;
    bool inClass = false;
    for (const char unit : Fold(expression))
    {
        const bool dot = unit == '.' && !escaped && !inClass;
        strict += dot ? std::string("[^\\n\\r]") : std::string(1, unit);
        if (!escaped && (unit == '[' || unit == ']'))
            inClass = unit == '[';
        escaped = unit == '\\' && !escaped;
    }
    return strict;
}

// Runs `attempt` over the folded text and tells its groups in terms of `text`.
template <class Attempt> bool Try(std::u16string_view text, Groups& groups, Attempt&& attempt)
{
    const std::string folded = Fold(text);
    const char* const begin = folded.data();
    boost::cmatch match;
    try
    {
        if (!attempt(begin, begin + folded.size(), match))
            return false;
    }
    catch (const std::runtime_error&) // the engine gave up
    {
        return false;
    }
    groups.clear();
    for (const boost::csub_match& part : match)
    {
        groups.push_back(part.matched ? text.substr(static_cast<std::size_t>(part.first - begin),
                                                    static_cast<std::size_t>(part.length()))
                                      : std::u16string_view());
    }
    return true;
}

} // namespace

struct CompiledPattern
{
    boost::regex expression;
};

Pattern::Pattern(std::u16string_view expression)
    : compiled_(std::make_unique<CompiledPattern>(CompiledPattern{boost::regex(
          WithStrictDots(expression), boost::regex::ECMAScript | boost::regex::icase)}))
{
}

Pattern::~Pattern() = default;

} // namespace tarnwell

extern "C" bool MatchPattern(const tarnwell::CompiledPattern& pattern, std::u16string_view text,
                             bool whole, tarnwell::Groups& groups)
{
    using boost::cmatch;
    return tarnwell::Try(text, groups, [&](const char* begin, const char* end, cmatch& match) {
        return whole ? boost::regex_match(begin, end, match, pattern.expression)
                     : boost::regex_search(begin, end, match, pattern.expression);
    });
}
