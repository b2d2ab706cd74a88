// Statuses.
#pragma once

#include "platform/status.h"

namespace tarnwell
{

// A failed call is reported as failed, also where the platform left no code.
constexpr HRESULT EnsureFailed(HRESULT status)
{
    return FAILED(status) ? status : DISP_E_EXCEPTION;
}

} // namespace tarnwell
