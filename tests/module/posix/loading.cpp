// The library as the system loads it: there is nothing to register, and it never goes.
#include "module/localtest.h"

#include <dlfcn.h>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

using GetClassObjectFunction = decltype(&::DllGetClassObject);

TEST(Registration, HasNothingToDo)
{
    EXPECT_EQ(TheModule().RegisterServer(), S_OK);
    EXPECT_EQ(TheModule().UnregisterServer(), S_OK);
    EXPECT_EQ(TheModule().UnregisterServer(), S_OK) << "as often as one likes";
}

ComPtr<IFileSystem> FileSystemOf(void* library)
{
    const auto getClassObject =
        reinterpret_cast<GetClassObjectFunction>(dlsym(library, "DllGetClassObject"));
    ComPtr<::IClassFactory> factory;
    ComPtr<IFileSystem> system;
    if (getClassObject == nullptr ||
        getClassObject(CLSID_Win32FileSystem, IidOf<::IClassFactory>(), factory.OutVoid()) != S_OK)
        return system;
    factory->CreateInstance(nullptr, IID_IFileSystem, system.OutVoid());
    return system;
}

// A copy, which nobody else in this process has loaded.
TEST(Loading, ObjectsOutliveTheLastHandleOfTheLibrary)
{
    const TempFolder folder;
    const fs::path copy = folder.Path() / "copy.so";
    fs::copy_file(LoadedModule::DefaultFile(), copy);
    void* const library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const ComPtr<IFileSystem> system = FileSystemOf(library);
    ASSERT_TRUE(system);
    ASSERT_EQ(dlclose(library), 0);
    ASSERT_NE(dlopen(copy.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << "the library is gone";
    std::uint32_t mask = 0;
    EXPECT_EQ(system->GetOperationMask(2, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 65535U);
}

} // namespace

} // namespace tarnwell::test
