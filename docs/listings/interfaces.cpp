// interfaces FOLDER: without client.hpp, by the interfaces and their owners.
#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <cstdio>

using namespace tarnwell;

int main(int, char** arguments) {
    // Linked to the library. One that is loaded by path looks DllGetClassObject up by its
    // name.
    ComPtr<IClassFactory> factory;
    ComPtr<IFileSystemInit> start;
    HRESULT status = DllGetClassObject(CLSID_Win32FileSystem, IidOf<IClassFactory>(),
                                       factory.OutVoid());
    if (SUCCEEDED(status))
        status =
            factory->CreateInstance(nullptr, IidOf<IFileSystemInit>(), start.OutVoid());
    if (FAILED(status))
        return 1;
    start->SetHost(nullptr);
    const ComPtr<IFileSystem> files = start.As<IFileSystem>();

    SetErrorInfo(0, nullptr); // or a bare failure would show the text of an earlier one
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    const Bstr path(std::u16string(
        arguments[1], arguments[1] + std::char_traits<char>::length(arguments[1])));
    status = files->GetFolder(path.Get(), VARIANT_TRUE, folder.Out());
    if (SUCCEEDED(status))
        status = folder->GetContents(contents.Out());
    std::uint32_t count = 0;
    if (SUCCEEDED(status))
        status = contents->GetCount(&count);
    std::printf("0x%08X, %u items\n", static_cast<unsigned>(status),
                static_cast<unsigned>(count));
}
