#include "perforce/p4marshal.h"

#include <charconv>
#include <utility>

namespace tarnwell
{

namespace
{

constexpr char dictionaryMark = '{';
constexpr char endMark = '0';
constexpr char textMark = 's';
constexpr char numberMark = 'i';
constexpr std::size_t numberSize = 4; // bytes
// Texts beyond this are nobody's: contents come in small pieces.
constexpr std::uint32_t longestText = 256 * 1024 * 1024; // bytes

} // namespace

const std::string& P4Record::Text(std::string_view key) const
{
    static const std::string none;
    const auto found = texts_.find(key);
    return found == texts_.end() ? none : found->second;
}

const std::string& P4Record::Text(std::string_view key, std::size_t index) const
{
    return Text(std::string(key) + std::to_string(index));
}

bool P4Record::Has(std::string_view key) const
{
    return texts_.find(key) != texts_.end();
}

void P4Record::Set(std::string key, std::string value)
{
    texts_.insert_or_assign(std::move(key), std::move(value));
}

// The parts of a dictionary from the first byte on.
class P4RecordParser::Reading
{
public:
    explicit Reading(std::string_view bytes) : bytes_(bytes) {}

    std::size_t Position() const
    {
        return position_;
    }
    bool IsBroken() const
    {
        return isBroken_;
    }

    // Nothing if it hasn't come as a whole, or is none.
    std::optional<std::string_view> Text()
    {
        const std::optional<std::uint32_t> size = Number(textMark);
        if (!size)
            return std::nullopt;
        isBroken_ = isBroken_ || *size > longestText;
        if (isBroken_ || bytes_.size() - position_ < *size)
            return std::nullopt;
        const std::string_view text = bytes_.substr(position_, *size);
        position_ += *size;
        return text;
    }
    std::optional<std::string> Value()
    {
        if (position_ < bytes_.size() && bytes_[position_] == numberMark)
        {
            const std::optional<std::uint32_t> number = Number(numberMark);
            if (!number)
                return std::nullopt;
            return std::to_string(static_cast<std::int32_t>(*number));
        }
        const std::optional<std::string_view> text = Text();
        if (!text)
            return std::nullopt;
        return std::string(*text);
    }

private:
    // The lowest byte first, behind its mark.
    std::optional<std::uint32_t> Number(char mark)
    {
        if (position_ == bytes_.size())
            return std::nullopt;
        isBroken_ = isBroken_ || bytes_[position_] != mark;
        if (isBroken_ || bytes_.size() - position_ <= numberSize)
            return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t i = numberSize; i > 0; --i)
            number = number << 8 | static_cast<unsigned char>(bytes_[position_ + i]);
        position_ += 1 + numberSize;
        return number;
    }

    std::string_view bytes_;
    std::size_t position_ = 0;
    bool isBroken_ = false;
};

std::optional<P4Record> P4RecordParser::Next()
{
    while (!isBroken_ && !feed_.IsEmpty())
    {
        const char mark = feed_.Rest().front();
        if (isInside_ && mark == endMark)
        {
            feed_.Drop(1);
            isInside_ = false;
            size_ = 0;
            return std::exchange(record_, {});
        }
        if (isInside_)
        {
            if (!ReadPair())
                break;
            continue;
        }
        isInside_ = mark == dictionaryMark;
        isBroken_ = !isInside_;
        feed_.Drop(1);
    }
    return std::nullopt;
}

bool P4RecordParser::ReadPair()
{
    Reading reading(feed_.Rest());
    const std::optional<std::string_view> key = reading.Text();
    std::optional<std::string> value = key ? reading.Value() : std::nullopt;
    isBroken_ = reading.IsBroken();
    if (!value)
        return false;
    record_.Set(std::string(*key), std::move(*value));
    feed_.Drop(reading.Position());
    size_ += reading.Position();
    isBroken_ = size_ > most_;
    return !isBroken_;
}

std::optional<std::uint64_t> P4Number(std::string_view text)
{
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace tarnwell
