// A host that is linked to the library: makes the local file system and asks for its own folder.
#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <cstdio>

using namespace tarnwell;

int main()
{
    ComPtr<IClassFactory> factory;
    ComPtr<IFileSystem> fileSystem;
    HRESULT status =
        DllGetClassObject(CLSID_Win32FileSystem, IidOf<IClassFactory>(), factory.OutVoid());
    if (SUCCEEDED(status))
        status = factory->CreateInstance(nullptr, IidOf<IFileSystem>(), fileSystem.OutVoid());
    ComPtr<IFolder> folder;
    if (SUCCEEDED(status))
        status = fileSystem->GetFolder(u".", VARIANT_TRUE, folder.Out());
    std::printf("0x%08X\n", static_cast<unsigned>(status));
    return SUCCEEDED(status) ? 0 : 1;
}
