#include "session.h"

namespace tarnwell::host
{

namespace
{

Place Open(const Session& session, const Address& address)
{
    Place place{address, {}};
    Call([&] {
        HRESULT status = S_OK;
        place.fileSystem = session.module.CreateFileSystem(place.address.kind->clsid,
                                                           session.hostObject.Get(), &status);
        return status;
    });
    return place;
}

} // namespace

Place Open(const Session& session, const std::u16string& address)
{
    return Open(session, ParseAddress(address));
}

Place OpenLocal(const Session& session, const std::u16string& path)
{
    return Open(session, Address{&FileSystemKinds().front(), path});
}

} // namespace tarnwell::host
