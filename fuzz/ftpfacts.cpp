// Any text as one line of facts of an FTP server.
#include "platform/posix/internet/listingparser.h"
#include "support/target.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    using namespace posix;
    const auto entry = ParseFactLine(bytes);
    if (!entry)
        return;
    Expect(IsPlainName(entry->name), "a name may stand in a path");
    Expect(bytes.ends_with(" " + entry->name), "the name is what the line ends in");
    Expect(!(entry->isFolder && entry->isLink), "a link is no folder");
    Expect(entry->fraction < 1'000'000'000, "a fraction is less than a second");
    // One more fact that nobody knows changes nothing.
    const auto same = ParseFactLine("x-unknown=1;" + std::string(bytes));
    Expect(same && same->name == entry->name && same->size == entry->size &&
               same->time == entry->time,
           "unknown facts are passed over");
}

} // namespace tarnwell::fuzz
