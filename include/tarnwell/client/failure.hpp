/// @file
/// Failures as exceptions.
#pragma once

#include <tarnwell/client/text.hpp>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

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

// What a host's own function threw while the module called it. It may not pass through the module,
// so it waits here until the call is back.
inline std::exception_ptr& Thrown()
{
    static thread_local std::exception_ptr thrown;
    return thrown;
}

// Runs the host's own code inside of a call of the module.
template <class F> HRESULT Guarded(F&& body)
{
    try
    {
        return body();
    }
    catch (...)
    {
        Thrown() = std::current_exception();
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
    detail::Thrown() = nullptr;
    const HRESULT status = call();
    if (const std::exception_ptr thrown = std::exchange(detail::Thrown(), nullptr))
        std::rethrow_exception(thrown);
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
