#include "unit/fakebackend.h"

namespace tarnwell::test
{

FakeServer& Server()
{
    static FakeServer server;
    return server;
}

void* OnServersMemory::operator new(std::size_t size, const std::nothrow_t& nothrow) noexcept
{
    return Server().memory ? ::operator new(size, nothrow) : nullptr;
}

void OnServersMemory::operator delete(void* object)
{
    ::operator delete(object);
}

ComPtr<IFolderContents> FakeFolder::MakeContents()
{
    ++Server().listings;
    Server().asked = Address().GetText();
    if (Server().failure)
        throw ComException(*Server().failure);
    return MakeFolderContents<FakeContents>(HostObject(), Server().listing);
}

} // namespace tarnwell::test
