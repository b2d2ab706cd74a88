// A text of which there are very many.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace tarnwell
{

// Up to `capacity` units, as nearly all have, it has no memory of its own.
template <std::size_t capacity> class ShortText
{
public:
    // To be called once.
    void Set(std::u16string_view text)
    {
        if (text.size() > capacity)
            long_ = std::make_unique<char16_t[]>(text.size());
        std::copy(text.begin(), text.end(), long_ ? long_.get() : short_.data());
        size_ = static_cast<std::uint32_t>(text.size());
    }

    // Valid as long as this is.
    std::u16string_view View() const
    {
        return {long_ ? long_.get() : short_.data(), size_};
    }

private:
    std::unique_ptr<char16_t[]> long_;
    std::uint32_t size_ = 0;
    std::array<char16_t, capacity> short_; // set as far as it is used
};

} // namespace tarnwell
