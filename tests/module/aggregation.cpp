// A file system object as a part of another object.
#include "module/localtest.h"
#include "support/whole.h"

namespace tarnwell::test
{

namespace
{

// Classes that can be parts; to grow with each backend.
constexpr GUID classes[] = {CLSID_Win32FileSystem, CLSID_SVNFileSystem, CLSID_HGFileSystem,
                            CLSID_GITFileSystem};

TEST(Aggregation, IsForIUnknownOnly)
{
    for (const GUID& classId : classes)
    {
        Whole whole;
        void* out = &out;
        EXPECT_EQ(TheModule().CreateInstance(classId, &whole, IID_IFileSystem, &out),
                  CLASS_E_NOAGGREGATION);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(whole.count, 1U);
    }
}

TEST(Aggregation, InterfacesAreReachedThroughTheWhole)
{
    for (const GUID& classId : classes)
    {
        Whole whole;
        ASSERT_EQ(
            TheModule().CreateInstance(classId, &whole, IidOf<::IUnknown>(), whole.part.OutVoid()),
            S_OK);
        EXPECT_NE(whole.part.Get(), &whole) << "the part's own IUnknown";
        auto system = ComPtr<::IUnknown>::Share(&whole).As<IFileSystem>();
        ASSERT_TRUE(system);
        EXPECT_EQ(whole.count, 2U);
        EXPECT_EQ(system.As<::IUnknown>().Get(), &whole);
        EXPECT_TRUE(system.As<IFileSystemInit>()) << "asked at the whole, found in the part";

        std::uint32_t mask = 0;
        EXPECT_EQ(system->GetOperationMask(2, nullptr, &mask), S_OK);
        EXPECT_EQ(mask, 65535U);
        system.Reset();
        EXPECT_EQ(whole.count, 1U);
    }
}

} // namespace

} // namespace tarnwell::test
