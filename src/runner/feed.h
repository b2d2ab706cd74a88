// What a client has printed and a parser hasn't read yet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

class Feed
{
public:
    void Add(std::string_view bytes)
    {
        // What was read goes once it is more than what wasn't, so that nothing is moved often.
        if (position_ > bytes_.size() / 2)
        {
            bytes_.erase(0, position_);
            position_ = 0;
        }
        bytes_ += bytes;
    }

    std::string_view Rest() const
    {
        return std::string_view(bytes_).substr(position_);
    }
    // The first `count` bytes of the rest were read.
    void Drop(std::size_t count)
    {
        position_ += count;
    }
    bool IsEmpty() const
    {
        return position_ == bytes_.size();
    }

private:
    std::string bytes_;
    std::size_t position_ = 0; // of the rest
};

// Records beyond this are nobody's.
inline constexpr std::size_t mostRecordBytes = std::size_t{1024} * 1024 * 1024;

// The same for records that are read part by part, as these come: what was looked at is never
// looked at again, however small the pieces are. Behind what is no record, or too large a one,
// nothing is read or kept, however much comes.
class RecordFeed
{
public:
    RecordFeed() = default;
    explicit RecordFeed(std::size_t most) : most_(most) {}

    void Add(std::string_view bytes)
    {
        if (!isBroken_)
            feed_.Add(bytes);
    }
    // Whether nothing is read any more.
    bool IsBroken() const
    {
        return isBroken_;
    }
    // The byte that is taken next, if it has come.
    std::optional<char> First() const
    {
        return feed_.IsEmpty() ? std::nullopt : std::optional(feed_.Rest().front());
    }

    // The text in front of the next `mark`, which is taken with it; valid until more comes. Nothing
    // if the mark hasn't come: then the same mark is to be asked for again.
    std::optional<std::string_view> TakeTo(char mark)
    {
        const std::string_view rest = feed_.Rest();
        const std::size_t end = isBroken_ ? std::string_view::npos : rest.find(mark, searched_);
        searched_ = rest.size();
        if (end == std::string_view::npos)
            return Wait();
        return Taken(rest.substr(0, end), end + 1);
    }
    // The next so many bytes, once they have come.
    std::optional<std::string_view> Take(std::uint64_t count)
    {
        const std::string_view rest = feed_.Rest();
        if (isBroken_ || count > rest.size())
            return Wait();
        const auto size = static_cast<std::size_t>(count);
        return Taken(rest.substr(0, size), size);
    }

    // What was taken since the last one was a record.
    void EndRecord()
    {
        size_ = 0;
    }
    // What was taken is none.
    std::nullopt_t Break()
    {
        isBroken_ = true;
        feed_ = {};
        return std::nullopt;
    }
    // Whether all that came was records.
    bool IsComplete() const
    {
        return !isBroken_ && size_ == 0 && feed_.IsEmpty();
    }

private:
    std::nullopt_t Wait()
    {
        return feed_.Rest().size() > most_ - size_ ? Break() : std::nullopt;
    }
    std::optional<std::string_view> Taken(std::string_view text, std::size_t count)
    {
        if (count > most_ - size_)
            return Break();
        feed_.Drop(count);
        size_ += count;
        searched_ = 0;
        return text;
    }

    Feed feed_;
    std::size_t most_ = mostRecordBytes;
    std::size_t size_ = 0;     // of the record, as far as it was taken
    std::size_t searched_ = 0; // how far the next mark was looked for
    bool isBroken_ = false;
};

} // namespace tarnwell
