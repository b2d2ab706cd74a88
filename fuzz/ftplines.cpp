// Any text as one line of an FTP server's listing.
#include "platform/posix/internet/listingparser.h"
#include "support/target.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    using namespace posix;
    constexpr Moment now = 1718452800;
    constexpr Moment day = 86400;
    const auto entry = ParseListLine(bytes, now);
    if (!entry)
        return;
    Expect(IsPlainName(entry->name), "a name may stand in a path");
    Expect(bytes.find(entry->name) != std::string_view::npos, "a name stands in its line");
    Expect(!(entry->isFolder && entry->isLink), "a link is no folder");
    Expect(entry->time.has_value(), "a line without a date is none of an entry");
    // The same line a year later: a date with a year stands, one without is a later one, if any.
    const auto later = ParseListLine(bytes, now + 366 * day);
    Expect(later.has_value() && later->name == entry->name,
           "what is a name doesn't hang on the date");
    Expect(*later->time >= *entry->time, "a later listing has no earlier date");
}

} // namespace tarnwell::fuzz
