// A text of which there are very many.
#pragma once

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
    // To be called once. Room for `size` units, which the caller sets.
    char16_t* Make(std::size_t size)
    {
        if (size > capacity)
            long_ = std::make_unique_for_overwrite<char16_t[]>(size);
        size_ = static_cast<std::uint32_t>(size);
        return long_ ? long_.get() : short_.data();
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
