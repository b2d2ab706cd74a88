#include "frame/boundary.h"

#include "frame/status.h"

#include <new>

namespace tarnwell
{

HRESULT StatusOfException(const Reporter& reporter) noexcept
try
{
    try
    {
        throw;
    }
    catch (const ComException& exception)
    {
        return EnsureFailed(PublishException(exception, reporter.classId, reporter.interfaceId));
    }
}
catch (const std::bad_alloc&)
{
    return E_OUTOFMEMORY;
}
catch (...)
{
    return E_UNEXPECTED;
}

HRESULT RefuseNull(const Reporter& reporter, NullPointer null) noexcept
{
    if (null == NullPointer::Bare)
        return E_POINTER;
    return AtBoundary(reporter,
                      [&] { return PublishMessage(reporter, MessageId::NullPointer, E_POINTER); });
}

} // namespace tarnwell
