// Failures of the module's calls.
#pragma once

#include <tarnwell/client/failure.hpp>

#include <string>

namespace tarnwell::host
{

// What a failed call leaves: its status, and the text that the module put into the thread's
// error information.
struct Failure
{
    HRESULT status;
    std::u16string message;
};

// For a call that left no text of its own, a plain one by its status.
Failure TakeFailure(HRESULT status);

// The same of a failure that was taken by the client's functions.
Failure FailureOf(const client::Failure& failure);

// Of a copy that ends at Ctrl-C.
Failure CopyCancelled();

// Runs one call and throws Failure if its status says so. The error information is cleared first,
// so that a call that fails without a text doesn't show the text of an earlier one.
template <class F> void Call(F&& call)
{
    ::SetErrorInfo(0, nullptr);
    if (const HRESULT status = call(); FAILED(status))
        throw TakeFailure(status);
}

// Runs what fails as the client's functions do, and throws Failure instead.
template <class F> auto Told(F&& body) -> decltype(body())
{
    try
    {
        return body();
    }
    catch (const client::Failure& failure)
    {
        throw FailureOf(failure);
    }
}

// On standard error: the text and, below it, the status; or both as one JSON object.
void PrintFailure(const Failure& failure, bool json);

} // namespace tarnwell::host
