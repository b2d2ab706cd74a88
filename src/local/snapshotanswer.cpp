#include "local/snapshotanswer.h"

#include "frame/pattern.h"
#include "local/findrecord.h"

namespace tarnwell
{

namespace
{

constexpr std::size_t namedCountOffset = 4;
constexpr std::size_t namesSizeOffset = 8;
constexpr std::size_t namesOffset = 12;

std::uint32_t Number(std::span<const std::byte> answer, std::size_t offset, std::size_t size)
{
    std::uint32_t number = 0;
    for (std::size_t i = size; i > 0; --i)
        number = number << 8 | std::to_integer<std::uint32_t>(answer[offset + i - 1]);
    return number;
}

// An odd byte at the end belongs to no name.
std::u16string UnitsFrom(std::span<const std::byte> answer, std::size_t offset)
{
    std::u16string units;
    for (; answer.size() - offset >= sizeof(char16_t); offset += sizeof(char16_t))
        units += static_cast<char16_t>(Number(answer, offset, sizeof(char16_t)));
    return units;
}

WORD DecimalNumber(std::u16string_view digits)
{
    unsigned number = 0;
    for (const char16_t digit : digits)
        number = number * 10 + (digit - u'0');
    return static_cast<WORD>(number);
}

} // namespace

std::uint64_t SnapshotAnswerSize(std::span<const std::byte, snapshotAnswerStart> start)
{
    return std::uint64_t{Number(start, namesSizeOffset, sizeof(std::uint32_t))} +
           snapshotAnswerStart;
}

std::vector<std::u16string> ReadSnapshotTokens(std::span<const std::byte> answer)
{
    std::vector<std::u16string> tokens;
    if (answer.size() < namesOffset)
        return tokens;
    const std::uint32_t count = Number(answer, namedCountOffset, sizeof(std::uint32_t));
    const std::u16string units = UnitsFrom(answer, namesOffset);
    std::u16string_view left = units;
    while (tokens.size() < count)
    {
        const std::size_t length = left.find(u'\0');
        // A name that doesn't end here is cut off, and an empty one names the live volume.
        if (length == std::u16string_view::npos || length == 0)
            break;
        tokens.emplace_back(left.substr(0, length));
        left.remove_prefix(length + 1);
    }
    return tokens;
}

std::uint64_t SnapshotTimeFromToken(std::u16string_view token)
{
    static const Pattern time(u"@GMT-(\\d\\d\\d\\d)\\.(\\d\\d)\\.(\\d\\d)-(\\d\\d)\\.(\\d\\d)"
                              u"\\.(\\d\\d)");
    Groups groups;
    if (!time.Search(token, groups))
        return 0;
    SYSTEMTIME parts{};
    parts.wYear = DecimalNumber(groups[1]);
    parts.wMonth = DecimalNumber(groups[2]);
    parts.wDay = DecimalNumber(groups[3]);
    parts.wHour = DecimalNumber(groups[4]);
    parts.wMinute = DecimalNumber(groups[5]);
    parts.wSecond = DecimalNumber(groups[6]);
    FILETIME fileTime{};
    return SystemTimeToFileTime(&parts, &fileTime) ? TimeOf(fileTime) : 0;
}

} // namespace tarnwell
