// What a client has printed and a parser hasn't read yet.
#pragma once

#include <cstddef>
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

} // namespace tarnwell
