/// @file
/// The module's counted lists, for range-for.
#pragma once

#include <tarnwell/client/failure.hpp>

#include <cstddef>
#include <iterator>

namespace tarnwell::client
{

/// A list of the module's, `L`, whose entries are asked for one by one and come as `Value`, which
/// is made of a `ComPtr<I>`. What it holds doesn't change.
template <class L, class I, class Value> class List
{
public:
    /// Goes over the entries once, in order.
    class Iterator
    {
    public:
        /// @cond
        using iterator_category = std::input_iterator_tag;
        using value_type = Value;
        using difference_type = std::ptrdiff_t;
        using pointer = const Value*;
        using reference = Value;

        Iterator(const List& list, std::size_t index) : list_(&list), index_(index) {}

        Value operator*() const
        {
            return (*list_)[index_];
        }
        Iterator& operator++()
        {
            ++index_;
            return *this;
        }
        Iterator operator++(int)
        {
            Iterator before = *this;
            ++index_;
            return before;
        }
        bool operator==(const Iterator& other) const
        {
            return index_ == other.index_;
        }
        bool operator!=(const Iterator& other) const
        {
            return index_ != other.index_;
        }
        /// @endcond

    private:
        const List* list_;
        std::size_t index_;
    };

    /// Takes a reference of its own, and asks for the count.
    explicit List(const ComPtr<L>& list)
        : list_(list), size_(detail::NumberOf<std::uint32_t>(
                           [&](std::uint32_t* count) { return list->GetCount(count); }))
    {
    }

    /// How many entries there are.
    std::size_t size() const
    {
        return size_;
    }
    /// Whether there are none.
    bool empty() const
    {
        return size_ == 0;
    }
    /// The first entry.
    Iterator begin() const
    {
        return Iterator(*this, 0);
    }
    /// Behind the last.
    Iterator end() const
    {
        return Iterator(*this, size_);
    }

    /// Failure for an index that is out of range.
    Value operator[](std::size_t index) const
    {
        ComPtr<I> entry;
        Check([&] { return list_->GetItem(static_cast<std::int32_t>(index), entry.Out()); });
        return Value(entry);
    }

    /// The interface behind it.
    const ComPtr<L>& Get() const
    {
        return list_;
    }

private:
    ComPtr<L> list_;
    std::size_t size_;
};

} // namespace tarnwell::client
