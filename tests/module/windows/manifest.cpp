// The module's classes made by the system without a registration: tarnwell.manifest beside the
// library says where they are.
#include "support/loadedmodule.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

class ActivationContext
{
public:
    explicit ActivationContext(const std::filesystem::path& manifest)
    {
        ACTCTXW wanted{};
        wanted.cbSize = sizeof(wanted);
        wanted.lpSource = manifest.c_str();
        context_ = CreateActCtxW(&wanted);
        isActive_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
    }
    ActivationContext(const ActivationContext&) = delete;
    ActivationContext& operator=(const ActivationContext&) = delete;
    ~ActivationContext()
    {
        if (isActive_)
            DeactivateActCtx(0, cookie_);
        if (context_ != INVALID_HANDLE_VALUE)
            ReleaseActCtx(context_);
    }

    bool IsActive() const
    {
        return isActive_;
    }

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool isActive_ = false;
};

HRESULT Create(const GUID& clsid)
{
    ComPtr<IFileSystemInit> system;
    return CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IidOf<IFileSystemInit>(),
                            system.OutVoid());
}

TEST(Manifest, MakesTheSixClassesWithoutARegistration)
{
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    for (const GUID& clsid : {CLSID_Win32FileSystem, CLSID_FTPFileSystem, CLSID_P4FileSystem,
                              CLSID_SVNFileSystem, CLSID_HGFileSystem, CLSID_GITFileSystem})
    {
        EXPECT_EQ(Create(clsid), REGDB_E_CLASSNOTREG);
        const ActivationContext context(
            LoadedModule::DefaultFile().replace_extension(L".manifest"));
        ASSERT_TRUE(context.IsActive());
        EXPECT_EQ(Create(clsid), S_OK);
    }
    CoUninitialize();
}

} // namespace

} // namespace tarnwell::test
