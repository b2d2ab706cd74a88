#include "session.h"

namespace tarnwell::host
{

namespace
{

Place Open(const Session& session, const Address& address)
{
    return {address, MakeFileSystem(session, *address.kind)};
}

} // namespace

ComPtr<IFileSystem> MakeFileSystem(const Session& session, const FileSystemKind& kind)
{
    return Told([&] { return session.module.Create(kind.clsid, session.hostObject.Get()).Get(); });
}

Place Open(const Session& session, const std::u16string& address)
{
    return Open(session, ParseAddress(address));
}

Place OpenLocal(const Session& session, const std::u16string& path)
{
    return Open(session, Address{&FileSystemKinds().front(), path});
}

} // namespace tarnwell::host
