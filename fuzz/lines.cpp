// Any bytes as a client's output, read by lines and whole, in both decodings.
#include "runner/bufferedreader.h"
#include "support/output.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::fuzz
{

namespace
{

// What the reader takes at a time.
constexpr std::size_t blockSize = 10240;

// A line that, in front of `bytes`, makes the middle of them the end of the first block.
std::string FillerFor(std::string_view bytes)
{
    return std::string(blockSize - std::min(blockSize, bytes.size() / 2 + 1), 'x') + '\n';
}

// Takes the first line off `bytes`, without its line feed.
std::string_view CutLine(std::string_view& bytes)
{
    const std::string_view line = bytes.substr(0, bytes.find('\n'));
    bytes.remove_prefix(std::min(bytes.size(), line.size() + 1));
    return line;
}

std::u16string WithoutReturn(std::u16string line)
{
    if (line.ends_with(u'\r'))
        line.pop_back();
    return line;
}

// Half of the lines one by one, and the rest at once.
void CheckLines(BufferedReader& reader, std::string_view bytes, Decoding decoding,
                BareLineFeed bareLineFeed = BareLineFeed::LooksLikeTheEnd)
{
    std::u16string line;
    for (auto count = std::count(bytes.begin(), bytes.end(), '\n') / 2; count >= 0; --count)
    {
        const bool isFeed = bytes.starts_with('\n');
        const std::string_view expected = CutLine(bytes);
        const bool isLine = !expected.empty() || (isFeed && bareLineFeed == BareLineFeed::IsALine);
        Expect(reader.ReadLine(line) == isLine, "a line is there if it has a byte that counts");
        Expect(line == WithoutReturn(Decode(expected, decoding)), "lines are decoded one by one");
    }
    Expect(reader.ReadAll() == Decode(bytes, decoding), "no byte is lost or made up");
    Expect(!reader.ReadLine(line) && line.empty() && reader.ReadAll().empty(), "the end is final");
}

void CheckOneBlock(std::string_view bytes, Decoding decoding, BareLineFeed bareLineFeed)
{
    BufferedReader reader(OutputOf(bytes), decoding, bareLineFeed);
    CheckLines(reader, bytes, decoding, bareLineFeed);
}

void CheckTwoBlocks(std::string_view bytes)
{
    const std::string filler = FillerFor(bytes);
    BufferedReader reader(OutputOf(filler + std::string(bytes)), Decoding::Utf8);
    std::u16string line;
    reader.ReadLine(line);
    Expect(line.size() == filler.size() - 1, "a line is as long as it is");
    CheckLines(reader, bytes, Decoding::Utf8);
}

// Without what stands for ill-formed bytes: replacements, and surrogates that are in no pair.
std::u16string WellFormed(std::u16string_view text)
{
    std::u16string kept;
    for (const char16_t unit : text)
    {
        const bool isLow = (unit & 0xFC00) == 0xDC00;
        const bool isPaired = !kept.empty() && (kept.back() & 0xFC00) == 0xD800;
        if (unit != u'\uFFFD' && isLow == isPaired)
            kept += unit;
    }
    return kept;
}

void CheckDecoding(std::string_view bytes)
{
    const std::u16string wide = Decode(bytes, Decoding::Widen);
    Expect(std::equal(
               bytes.begin(), bytes.end(), wide.begin(), wide.end(),
               [](char byte, char16_t unit) { return unit == static_cast<unsigned char>(byte); }),
           "a byte is a unit");

    // Names are decoded on their own, and each of their ill-formed bytes is one surrogate.
    const std::u16string text = Decode(bytes, Decoding::Utf8);
    const std::u16string names = DecodeName(bytes);
    const std::u16string kept = WellFormed(text);
    const auto replacements = [](const std::u16string& in) {
        return static_cast<std::size_t>(std::count(in.begin(), in.end(), u'\uFFFD'));
    };
    Expect(kept == WellFormed(names), "what is well-formed is kept");
    Expect(kept.size() + replacements(text) == text.size(), "what is ill-formed is replaced");
    Expect(text.size() <= names.size(), "a replacement stands for a byte or more");
    const bool isWellFormed = kept.size() + replacements(names) == names.size();
    Expect(isWellFormed == (text == names), "nothing else is replaced");
}

} // namespace

void Try(std::string_view bytes)
{
    CheckDecoding(bytes);
    CheckOneBlock(bytes, Decoding::Utf8, BareLineFeed::LooksLikeTheEnd);
    CheckOneBlock(bytes, Decoding::Widen, BareLineFeed::IsALine);
    CheckTwoBlocks(bytes);
}

} // namespace tarnwell::fuzz
