// The question before something is deleted on a server. (Local deletion asks through the shell.)
#pragma once

#include "platform/win32.h"

#include <string>

namespace tarnwell
{

// Whether the user says yes. `host` may be null: then the dialog has no owner.
bool ConfirmDeletionOfItem(::IUnknown* host, const std::u16string& item);
bool ConfirmDeletionOfItems(::IUnknown* host);

} // namespace tarnwell
