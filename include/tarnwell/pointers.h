/// @file
/// Owners of interface pointers and of texts, for hosts written in C++.
#pragma once

#include <tarnwell/interfaceid.h>

#include <string>
#include <string_view>
#include <utility>

namespace tarnwell
{

/// Owns one reference to an interface, or nothing.
template <class I> class ComPtr
{
public:
    ComPtr() = default;
    /// Takes a reference of its own.
    ComPtr(const ComPtr& other) : pointer_(other.pointer_)
    {
        if (pointer_ != nullptr)
            pointer_->AddRef();
    }
    /// Takes the reference over.
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ~ComPtr()
    {
        Reset();
    }

    /// Gives up what was held.
    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    /// Takes over the caller's reference.
    static ComPtr Adopt(I* pointer)
    {
        ComPtr owner;
        owner.pointer_ = pointer;
        return owner;
    }

    /// Adds a reference of its own. Null is allowed.
    static ComPtr Share(I* pointer)
    {
        if (pointer != nullptr)
            pointer->AddRef();
        return Adopt(pointer);
    }

    /// The same object by another of its interfaces; null if it has none such.
    template <class J> ComPtr<J> As() const
    {
        ComPtr<J> other;
        if (pointer_ != nullptr)
            pointer_->QueryInterface(IidOf<J>(), other.OutVoid());
        return other;
    }

    /// Gives up what is held.
    void Reset()
    {
        if (I* const old = std::exchange(pointer_, nullptr); old != nullptr)
            old->Release();
    }

    /// Where a call puts the reference that it hands out. What was held is released first.
    I** Out()
    {
        Reset();
        return &pointer_;
    }
    /// The same, for calls that give any interface.
    void** OutVoid()
    {
        return reinterpret_cast<void**>(Out());
    }

    /// Gives the reference to the caller.
    I* Detach()
    {
        return std::exchange(pointer_, nullptr);
    }

    /// Null for nothing.
    I* Get() const
    {
        return pointer_;
    }
    /// Not for nothing.
    I* operator->() const
    {
        return pointer_;
    }
    /// Whether there is something.
    explicit operator bool() const
    {
        return pointer_ != nullptr;
    }

private:
    I* pointer_ = nullptr;
};

/// Owns a text that a call handed out, or nothing.
class Bstr
{
public:
    Bstr() = default;
    /// A copy of `text`; holds null if memory is short.
    explicit Bstr(std::u16string_view text)
        : text_(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                  static_cast<std::uint32_t>(text.size())))
    {
    }
    Bstr(const Bstr&) = delete;
    /// Takes the text over.
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(const Bstr&) = delete;
    /// Exchanges the texts.
    Bstr& operator=(Bstr&& other) noexcept
    {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr()
    {
        SysFreeString(text_);
    }

    /// Where a call puts the text. What was held is freed first.
    BSTR* Out()
    {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    /// Gives the text to the caller.
    BSTR Detach()
    {
        return std::exchange(text_, nullptr);
    }
    /// Null for nothing.
    BSTR Get() const
    {
        return text_;
    }
    /// Whether there is something.
    explicit operator bool() const
    {
        return text_ != nullptr;
    }

    /// All units, also behind a terminator inside. Empty for null; valid as long as the owner.
    std::u16string_view View() const
    {
        if (text_ == nullptr)
            return {};
        return {reinterpret_cast<const char16_t*>(text_), SysStringLen(text_)};
    }

private:
    BSTR text_ = nullptr;
};

} // namespace tarnwell
