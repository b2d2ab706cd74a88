// Messages for the user, in the language of the user interface.
#pragma once

#include "platform/win32.h"
#include "resources/messages.h"

#include <initializer_list>
#include <string>

namespace tarnwell
{

using Inserts = std::initializer_list<std::u16string>;

// The message with its inserts; empty if it has no text. There must be as many inserts as the
// message's highest.
std::u16string FormatMessageById(MessageId id, Inserts inserts = {});

// The same, one blank, and the system's text for `status`.
std::u16string FormatMessageWithStatus(MessageId id, HRESULT status, Inserts inserts = {});

} // namespace tarnwell
