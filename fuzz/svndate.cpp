// Any text as a date of the Subversion client's.
#include "frame/pattern.h"
#include "subversion/svnvalues.h"
#include "support/target.h"

#include <tarnwell/text.h>

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    // The pattern that dates are said to have, which is read by hand.
    static const Pattern pattern(
        u"([0-9]+)-([0-9]+)-([0-9]+)T([0-9]+)\\:([0-9]+)\\:([0-9]+)\\.([0-9]+)Z");
    const std::u16string text = DecodeName(bytes);
    const std::uint64_t time = ParseSvnDate(text);
    Groups groups;
    const bool matches = pattern.Search(text, groups);
    Expect(matches || time == 0, "what isn't of the form is no date");
    if (!matches)
        return;
    const std::u16string alone(groups[0]);
    Expect(ParseSvnDate(alone) == time, "what stands around it doesn't matter");
    std::u16string whole = alone.substr(0, alone.find(u'.')) + u".0Z";
    const std::uint64_t second = ParseSvnDate(whole);
    Expect(second % 10'000'000 == 0, "without a fraction there are whole seconds");
    // The first second there is has the number of no time at all.
    if (second == 0)
        return;
    Expect(time - second == 10 * ParseSvnNumber(groups[7], 2147483647),
           "the fraction is a number of microseconds");
}

} // namespace tarnwell::fuzz
