// Failures on their way to the host: the text in the calling thread's error information.
#pragma once

#include "frame/exception.h"
#include "frame/messages.h"

#include <string>

namespace tarnwell
{

// Whom a failure's error information names: the object's class and the interface called.
struct Reporter
{
    const GUID& classId;
    const GUID& interfaceId;
};

// Publishes `text` and returns `status`, or 0x80020009 in place of 0. Never throws: if something
// is missing for the text, only the text is lost.
HRESULT PublishError(const GUID& classId, const std::u16string& text, const GUID& interfaceId,
                     HRESULT status) noexcept;

// The exception's message with its position in the source; nothing is published if it has neither.
// Returns its code.
HRESULT PublishException(const ComException& exception, const GUID& classId,
                         const GUID& interfaceId) noexcept;

// Publishes a message, without or with the system's text for the status behind it. A message
// without a text is published as an empty one.
HRESULT PublishMessage(const Reporter& reporter, MessageId id, HRESULT status,
                       Inserts inserts = {}) noexcept;
HRESULT PublishFailure(const Reporter& reporter, MessageId id, HRESULT status,
                       Inserts inserts = {}) noexcept;

// Throws if `status`, the answer of `object` by its interface `interfaceId`, is a failure: with
// message `id`, whose insert is the object's own text, if it left one, and the place in
// `file` that called it. `object` may be null.
void ThrowOnFailure(HRESULT status, MessageId id, ::IUnknown* object, const GUID& interfaceId,
                    const char16_t* file, std::uint32_t line);

} // namespace tarnwell
