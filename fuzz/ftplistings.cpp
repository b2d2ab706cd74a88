// Any text as a whole listing of an FTP server, in pieces. The first byte says of what form it is
// and how long the pieces are.
#include "platform/posix/internet/listingparser.h"
#include "support/target.h"

#include <algorithm>

namespace tarnwell::fuzz
{
namespace
{

std::vector<posix::ListedEntry> Read(posix::ListingForm form, std::string_view text,
                                     std::size_t piece)
{
    constexpr posix::Moment now = 1718452800;
    posix::ListingReader reader(form, now);
    for (std::size_t at = 0; at < text.size(); at += piece)
        Expect(reader.Take(text.substr(at, piece)), "a short listing isn't too long");
    return reader.Finish();
}

} // namespace

void Try(std::string_view bytes)
{
    if (bytes.empty())
        return;
    const auto first = static_cast<unsigned char>(bytes[0]);
    bytes.remove_prefix(1);
    const auto form = (first & 1) != 0 ? posix::ListingForm::Facts : posix::ListingForm::Lines;
    const auto whole = Read(form, bytes, std::max<std::size_t>(bytes.size(), 1));
    const auto inPieces = Read(form, bytes, std::size_t{1} + first / 2);
    Expect(whole.size() == inPieces.size(), "pieces lose nothing");
    const auto lines = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
    Expect(whole.size() <= lines, "a line is at most one entry");
    for (std::size_t i = 0; i < whole.size(); ++i)
    {
        Expect(posix::IsPlainName(whole[i].name), "a name may stand in a path");
        Expect(whole[i].name == inPieces[i].name && whole[i].size == inPieces[i].size &&
                   whole[i].time == inPieces[i].time,
               "pieces change nothing");
    }
}

} // namespace tarnwell::fuzz
