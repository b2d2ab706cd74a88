// A call's status together with the text that it left, and what tests say about the two.
#pragma once

#include "support/errorinfo.h"

#include <gmock/gmock.h>

#include <utility>

namespace tarnwell::test
{

struct Outcome
{
    HRESULT status;
    std::optional<PublishedError> error;
};

void PrintTo(const Outcome& outcome, std::ostream* out);

// Runs `call` with the error information cleared before it.
template <class F> Outcome OutcomeOf(F&& call)
{
    ClearError();
    const HRESULT status = std::forward<F>(call)();
    return {status, TakeError()};
}

constexpr HRESULT Status(std::uint32_t value)
{
    return static_cast<HRESULT>(value);
}

// The status of the platform's error `code`.
constexpr HRESULT Win32Status(std::uint32_t code)
{
    return Status(0x80070000 | code);
}

// Succeeded, and left no text.
MATCHER(Succeeded, "")
{
    return arg.status == S_OK && !arg.error;
}

// Failed with this status and left no text.
MATCHER_P(FailedBare, status, "")
{
    return arg.status == status && !arg.error;
}

// Failed with this status and exactly this message.
MATCHER_P2(Refused, status, message, "")
{
    return arg.status == status && arg.error && arg.error->text == message;
}

// Failed with this status and this message, with the system's text behind it.
MATCHER_P2(Failed, status, message, "")
{
    const std::u16string start = std::u16string(message) + u" ";
    return arg.status == status && arg.error && arg.error->text.starts_with(start) &&
           arg.error->text.size() > start.size();
}

// Failed with this status, and a text that begins so.
MATCHER_P2(FailedSaying, status, beginning, "")
{
    return arg.status == status && arg.error &&
           WithLineFeeds(arg.error->text).starts_with(std::u16string_view(beginning));
}

// The same, where platforms differ in the status.
MATCHER_P(FailedSomehow, message, "")
{
    return arg.status < 0 && arg.error &&
           arg.error->text.starts_with(std::u16string(message) + u" ");
}

// Failed, and named this interface.
MATCHER_P(NamesInterface, id, "")
{
    return arg.status < 0 && arg.error && arg.error->interfaceId == id;
}

} // namespace tarnwell::test
