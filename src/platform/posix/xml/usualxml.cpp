#include "platform/posix/xml/usualxml.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <array>
#include <vector>

namespace tarnwell::posix
{
namespace
{

// Of one element: each is looked for among those before it.
constexpr std::size_t mostAttributes = 16;

// What a byte may be.
enum Kind : unsigned char
{
    Blank = 1,
    BeginsName = 2,
    InName = 4,
    // Stands for itself in a text and in any value.
    Plain = 8,
};

constexpr bool IsIn(std::string_view set, char byte)
{
    return set.find(byte) != std::string_view::npos;
}

constexpr unsigned char KindOf(unsigned char byte)
{
    const char unit = static_cast<char>(byte);
    const bool isLetter =
        (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_';
    const bool isBlank = IsIn(" \t\n\r", unit);
    const bool isPlain = isBlank || (byte > ' ' && byte < 0x80 && !IsIn("<&]'\"", unit));
    return static_cast<unsigned char>(
        (isBlank ? Blank : 0) | (isLetter ? BeginsName : 0) |
        (isLetter || (byte >= '0' && byte <= '9') || IsIn("-.", unit) ? InName : 0) |
        (isPlain ? Plain : 0));
}

constexpr auto kinds = [] {
    std::array<unsigned char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = KindOf(static_cast<unsigned char>(i));
    return table;
}();

// Follows the tags of a document and finds the elements that nothing is asked about.
class UnaskedFinder
{
public:
    UnaskedFinder(const XmlUnasked& unasked, std::vector<std::string_view>& found)
        : parent_(unasked.parent), name_(unasked.name), found_(found)
    {
    }

    // The tag begins at `start`, in elements of these names.
    void Begin(std::string_view name, const char* start, const std::vector<std::string_view>& open)
    {
        if (name == parent_)
            start_ = nullptr;
        else if (start_ == nullptr && name == name_ && !open.empty() && open.back() == parent_)
        {
            start_ = start;
            depth_ = open.size();
        }
    }
    // The tag ends in front of `end`, `depth` elements are open still.
    void End(const char* end, std::size_t depth)
    {
        if (start_ == nullptr || depth != depth_)
            return;
        found_.emplace_back(start_, static_cast<std::size_t>(end - start_));
        start_ = nullptr;
    }

private:
    const std::string_view parent_;
    const std::string_view name_;
    std::vector<std::string_view>& found_;
    const char* start_ = nullptr; // of the element that is looked through
    std::size_t depth_ = 0;       // how many are open around it
};

// Takes a document from its start. What it doesn't know it doesn't take.
class Taker
{
public:
    explicit Taker(std::string_view document, UnaskedFinder* finder = nullptr)
        : rest_(document), finder_(finder)
    {
    }

    bool TakeDocument()
    {
        Take("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        TakeAll(Blank);
        if (!TakeTag())
            return false;
        while (!open_.empty())
        {
            if (!TakeCharacters('<') || !TakeTag())
                return false;
        }
        TakeAll(Blank);
        return rest_.empty();
    }

private:
    bool Take(std::string_view text)
    {
        const bool isThere = rest_.starts_with(text);
        if (isThere)
            rest_.remove_prefix(text.size());
        return isThere;
    }

    bool Take(char byte)
    {
        const bool isThere = rest_.starts_with(byte);
        if (isThere)
            rest_.remove_prefix(1);
        return isThere;
    }

    std::string_view TakeAll(Kind kind)
    {
        const auto end = std::find_if(rest_.begin(), rest_.end(), [=](char byte) {
            return (kinds[static_cast<unsigned char>(byte)] & kind) == 0;
        });
        const std::string_view taken(rest_.begin(), end);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    // Empty if there is none.
    std::string_view TakeName()
    {
        const bool begins =
            !rest_.empty() && (kinds[static_cast<unsigned char>(rest_[0])] & BeginsName) != 0;
        return begins ? TakeAll(InName) : std::string_view();
    }

    bool TakeTag()
    {
        const char* const start = rest_.data();
        if (!Take('<'))
            return false;
        if (Take('/'))
            return TakeEnd();
        const std::string_view name = TakeName();
        if (name.empty() || !TakeAttributes())
            return false;
        if (finder_ != nullptr)
            finder_->Begin(name, start, open_);
        if (Take("/>"))
        {
            TellEnd();
            return true;
        }
        open_.push_back(name);
        return Take('>');
    }

    bool TakeEnd()
    {
        if (open_.empty() || !Take(open_.back()))
            return false;
        open_.pop_back();
        TakeAll(Blank);
        if (!Take('>'))
            return false;
        TellEnd();
        return true;
    }

    void TellEnd()
    {
        if (finder_ != nullptr)
            finder_->End(rest_.data(), open_.size());
    }

    bool TakeAttributes()
    {
        attributes_.clear();
        while (!TakeAll(Blank).empty() && !rest_.starts_with('>') && !rest_.starts_with('/'))
        {
            const std::string_view name = TakeName();
            const auto end = attributes_.end();
            if (name.empty() || attributes_.size() == mostAttributes || name == "xmlns" ||
                std::find(attributes_.begin(), end, name) != end)
                return false;
            attributes_.push_back(name);
            if (!TakeValue())
                return false;
        }
        return true;
    }

    bool TakeValue()
    {
        TakeAll(Blank);
        if (!Take('='))
            return false;
        TakeAll(Blank);
        const char quote = rest_.starts_with('"') ? '"' : '\'';
        return Take(quote) && TakeCharacters(quote) && Take(quote);
    }

    // Up to `end`, which is there.
    bool TakeCharacters(char end)
    {
        for (;;)
        {
            TakeAll(Plain);
            if (rest_.starts_with(end))
                return true;
            if (!TakeOther(end))
                return false;
        }
    }

    // A character that isn't plain.
    bool TakeOther(char end)
    {
        constexpr std::string_view endOfSection = "]]>";
        constexpr std::string_view references[] = {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"};
        if (rest_.starts_with('&'))
            return std::any_of(std::begin(references), std::end(references),
                               [this](std::string_view reference) { return Take(reference); });
        if (rest_.starts_with(']'))
            return (end != '<' || !rest_.starts_with(endOfSection)) && Take(']');
        return Take('"') || Take('\'') || TakeBeyondAscii();
    }

    bool TakeBeyondAscii()
    {
        const detail::DecodedPoint point = detail::DecodePoint(rest_);
        // Two points are no characters of XML. One byte is a control character, or what no text
        // has.
        if (rest_.empty() || point.bytes < 2 || point.point == 0xFFFE || point.point == 0xFFFF)
            return false;
        rest_.remove_prefix(point.bytes);
        return true;
    }

    std::string_view rest_;
    UnaskedFinder* const finder_;
    std::vector<std::string_view> open_;
    std::vector<std::string_view> attributes_; // of one element
};

} // namespace

bool IsUsualXml(std::string_view document)
{
    return Taker(document).TakeDocument();
}

bool IsUsualXml(std::string_view document, const XmlUnasked& unasked,
                std::vector<std::string_view>& found)
{
    UnaskedFinder finder(unasked, found);
    return Taker(document, &finder).TakeDocument();
}

} // namespace tarnwell::posix
