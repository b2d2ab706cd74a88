// Any bytes as the Perforce client's output, in the line ends of both platforms.
#pragma once

#include "addressed/fsitem.h"
#include "runner/bufferedreader.h"
#include "support/output.h"
#include "support/target.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tarnwell::fuzz
{

// What `read` makes of the bytes, and that it leaves a reader that is still one.
template <class Read> auto ReadP4(std::string_view bytes, BareLineFeed bare, Read read)
{
    BufferedReader reader(OutputOf(bytes), Decoding::Widen, bare);
    auto result = read(reader);
    reader.SkipAll();
    return result;
}

template <class Read> auto ReadOnLinux(std::string_view bytes, Read read)
{
    return ReadP4(bytes, BareLineFeed::IsALine, read);
}

// The same text as a client on Windows prints it. It is without carriage returns of its own, one of
// which at the end of a line would count as the line's end.
template <class Read> auto ReadOnWindows(std::string_view bytes, Read read)
{
    std::string text;
    for (const char byte : bytes)
        text += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
    return ReadP4(text, BareLineFeed::LooksLikeTheEnd, read);
}

inline std::string WithoutReturns(std::string_view bytes)
{
    std::string text(bytes);
    std::erase(text, '\r');
    return text;
}

inline bool IsSame(const FSItems& left, const FSItems& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& l, const auto& r) {
                          return l->text == r->text && l->modifiedTime == r->modifiedTime &&
                                 l->size == r->size && l->isDirectory == r->isDirectory &&
                                 l->isReadOnly == r->isReadOnly && l->revision == r->revision;
                      });
}

// What holds for listings of both kinds.
template <class Read> FSItems CheckP4Listing(std::string_view bytes, Read read)
{
    // Whatever a bare line feed does there, it ends.
    ReadP4(bytes, BareLineFeed::LooksLikeTheEnd, read);

    const std::string text = WithoutReturns(bytes);
    FSItems items = ReadOnLinux(text, read);
    Expect(IsSame(items, ReadOnWindows(text, read)), "both platforms read the same");
    FSItems twice = items;
    twice.insert(twice.end(), items.begin(), items.end());
    Expect(IsSame(ReadOnLinux(text + "\n\n" + text, read), twice),
           "what stands in front of an item doesn't change it");
    for (const auto& item : items)
    {
        const std::string name(item->text.begin(), item->text.end());
        Expect(text.find(name) != std::string::npos, "a name is one that was told");
    }
    return items;
}

} // namespace tarnwell::fuzz
