/// @file
/// Failures as exceptions.
#pragma once

#include <tarnwell/client/text.hpp>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

namespace tarnwell::client
{

/// A call that failed: its status, and the text that the module published for the user.
class Failure : public std::runtime_error
{
public:
    /// The text is UTF-8.
    Failure(HRESULT status, const std::string& text) : std::runtime_error(text), status_(status) {}

    /// What the call returned. `what()` is the text, in UTF-8 and in the user's language; for a
    /// call that published none, a plain one with the status.
    HRESULT Status() const
    {
        return status_;
    }

private:
    HRESULT status_;
};

namespace detail
{

// Where a host's own function puts what it throws while the module calls it: that may not pass
// through the module, so it waits with the call until that is back. Null outside of a call. Only a
// pointer, since a thread's variable with a destructor ends the process where memory is short.
inline std::exception_ptr*& Place()
{
    static thread_local std::exception_ptr* place = nullptr;
    return place;
}

class Waiting
{
public:
    Waiting() : before_(std::exchange(Place(), &thrown_)) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting()
    {
        Place() = before_;
    }

    void Rethrow() const
    {
        if (thrown_)
            std::rethrow_exception(thrown_);
    }

private:
    std::exception_ptr thrown_;
    // Calls come about within calls.
    std::exception_ptr* before_;
};

// Runs the host's own code inside of a call of the module.
template <class F> HRESULT Guarded(F&& body)
{
    try
    {
        return body();
    }
    catch (...)
    {
        if (Place() != nullptr)
            *Place() = std::current_exception();
        return E_FAIL;
    }
}

inline std::string PlainText(HRESULT status)
{
    if (status == E_NOTIMPL)
        return "The file system doesn't offer this operation.";
    if (status == E_OUTOFMEMORY)
        return "Out of memory.";
    char text[64];
    std::snprintf(text, sizeof text, "The call failed with status 0x%08X.",
                  static_cast<unsigned>(status));
    return text;
}

// Before any other call on this thread, since the next failure takes the text's place.
inline Failure TakeFailure(HRESULT status)
{
    ComPtr<IErrorInfo> info;
    Bstr text;
    if (::GetErrorInfo(0, info.Out()) == S_OK && info)
        info->GetDescription(text.Out());
    return Failure(status, text.View().empty() ? PlainText(status) : Utf8(text));
}

} // namespace detail

/// Runs one call, `Check([&] { return file->GetName(name.Out()); })`, and throws Failure if its
/// status says so; or what one of the host's own functions threw meanwhile. The error information
/// is cleared first: a call that fails without a text would otherwise show that of an earlier one.
template <class F> void Check(F&& call)
{
    ::SetErrorInfo(0, nullptr);
    const detail::Waiting waiting;
    const HRESULT status = call();
    waiting.Rethrow();
    if (FAILED(status))
        throw detail::TakeFailure(status);
}

namespace detail
{

// The interface `I` of an object; Failure if it has none such.
template <class I, class From> ComPtr<I> Need(const ComPtr<From>& object)
{
    ComPtr<I> other;
    Check([&] { return object->QueryInterface(IidOf<I>(), other.OutVoid()); });
    return other;
}

// What a getter of text gives.
template <class F> std::string TextOf(F&& getter)
{
    Bstr text;
    Check([&] { return getter(text.Out()); });
    return Utf8(text);
}

// What a getter of a number gives.
template <class Number, class F> Number NumberOf(F&& getter)
{
    Number number{};
    Check([&] { return getter(&number); });
    return number;
}

inline VARIANT_BOOL Truth(bool value)
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace detail

} // namespace tarnwell::client
