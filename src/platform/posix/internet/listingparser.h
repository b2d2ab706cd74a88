// Listings of FTP servers: text in, entries out. Nothing here is asked of a server or of the clock.
#pragma once

#include "platform/posix/internet/listingdates.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::posix
{

struct ListedEntry
{
    // As the server's bytes.
    std::string name = {};
    std::uint64_t size = 0;
    // Nothing if the server doesn't tell.
    std::optional<Moment> time = std::nullopt;
    // Of the second, in nanoseconds.
    std::uint32_t fraction = 0;
    // Otherwise the time is by the server's clock on the wall.
    bool isUtc = false;
    bool isFolder = false;
    // Whatever it leads to: a link is none of the folders.
    bool isLink = false;
    bool isReadOnly = false;
};

enum class ListingForm
{
    // Of LIST: lines as "ls -l" or "dir" print them.
    Lines,
    // Of MLSD.
    Facts,
};

// Of one line without its end. Nothing if it is none of an entry, or of one that a path can't
// name: a "/", NUL, line end, U+2028 or U+2029 is in it. `now` is by the same clock as the lines.
std::optional<ListedEntry> ParseListLine(std::string_view line, Moment now);
// "." and ".." under their own types are no entries.
std::optional<ListedEntry> ParseFactLine(std::string_view line);

// Whether a name may stand in a path.
bool IsPlainName(std::string_view name);

// A listing that comes in pieces. What it takes of memory is bounded, whatever the server sends.
class ListingReader
{
public:
    // In bytes: the text of one listing, what is kept of it, and a line; a longer line is skipped.
    static constexpr std::uint64_t longestText = 268435456;
    static constexpr std::uint64_t mostKept = 268435456;
    static constexpr std::size_t longestLine = 65536;

    ListingReader(ListingForm form, Moment now);

    // False if that is more than a listing may have.
    bool Take(std::string_view piece);
    // In the server's order, "." and ".." as well where they stand in a list of lines.
    std::vector<ListedEntry> Finish();

private:
    void TakeLine(std::string_view line);

    ListingForm form_;
    Moment now_;
    std::string unfinished_;
    bool isTooLong_ = false;
    std::uint64_t textSize_ = 0;
    std::uint64_t kept_ = 0;
    std::vector<ListedEntry> entries_;
};

} // namespace tarnwell::posix
