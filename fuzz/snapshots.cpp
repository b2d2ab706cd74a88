// Any bytes as a file server's answer to the question for a volume's snapshots.
#include "local/snapshotanswer.h"
#include "local/snapshotpaths.h"
#include "support/target.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace tarnwell::fuzz
{

namespace
{

constexpr std::size_t namesOffset = 12;
// The last moment of the year 9999.
constexpr std::uint64_t latestTime = 2650467743990000000;

std::uint64_t NumberAt(std::string_view bytes, std::size_t offset)
{
    std::uint64_t number = 0;
    for (std::size_t i = 4; i > 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[offset + i - 1]);
    return number;
}

// From memory of just that size.
std::vector<std::u16string> Read(std::string_view bytes)
{
    const std::unique_ptr<std::byte[]> answer(new std::byte[bytes.size()]);
    std::copy_n(reinterpret_cast<const std::byte*>(bytes.data()), bytes.size(), answer.get());
    return ReadSnapshotTokens({answer.get(), bytes.size()});
}

void CheckSize(std::string_view bytes)
{
    if (bytes.size() < snapshotAnswerStart)
        return;
    const auto* const start = reinterpret_cast<const std::byte*>(bytes.data());
    Expect(SnapshotAnswerSize(std::span<const std::byte, snapshotAnswerStart>(
               start, snapshotAnswerStart)) == NumberAt(bytes, 8) + snapshotAnswerStart,
           "the size is that of the names and 16");
}

void CheckTokens(std::string_view bytes, const std::vector<std::u16string>& tokens)
{
    if (bytes.size() < namesOffset)
    {
        Expect(tokens.empty(), "without a number there are no names");
        return;
    }
    Expect(tokens.size() <= NumberAt(bytes, 4), "there are no more names than announced");
    std::string_view names = bytes.substr(namesOffset);
    for (const std::u16string& token : tokens)
    {
        Expect(!token.empty() && token.find(u'\0') == std::u16string::npos, "a name is a name");
        const std::size_t size = (token.size() + 1) * sizeof(char16_t);
        Expect(size <= names.size(), "a name ends within the answer");
        Expect(std::memcmp(token.c_str(), names.data(), size) == 0, "a name is as it stands there");
        names.remove_prefix(size);
    }
}

void CheckMeaning(const std::u16string& token)
{
    const std::uint64_t time = SnapshotTimeFromToken(token);
    Expect(time <= latestTime, "a time is one of the calendar");
    Expect(time == 0 || token.find(u'@') != std::u16string::npos, "a time is told by the name");

    const std::optional<std::u16string> live =
        NormalizeRevisionPath(u"\\\\localhost\\C$\\" + token + u"\\dir\\file.txt");
    if (!live)
        return;
    const std::optional<DrivePath> split = SplitDrivePath(*live);
    Expect(split.has_value(), "a live path begins at the root of a drive");
}

} // namespace

void Try(std::string_view bytes)
{
    CheckSize(bytes);
    const std::vector<std::u16string> tokens = Read(bytes);
    CheckTokens(bytes, tokens);
    for (const std::u16string& token : tokens)
        CheckMeaning(token);
}

} // namespace tarnwell::fuzz
