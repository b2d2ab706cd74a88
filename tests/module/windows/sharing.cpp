// Who else may use a file that a stream is open on.
#include "module/localtest.h"
#include "module/windows/held.h"

namespace tarnwell::test
{

namespace
{

constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class Sharing : public LocalTest
{
};

TEST_F(Sharing, AFileIsSharedWithReadersAndWriters)
{
    const std::u16string path = Put(u"a.txt");
    for (const std::uint32_t access : {readAccess, readAccess | writeAccess})
    {
        const auto stream = Open(path, access);
        EXPECT_EQ(Held(path, GENERIC_READ, all).Error(), ERROR_SUCCESS);
        EXPECT_EQ(Held(path, GENERIC_WRITE, all).Error(), ERROR_SUCCESS);
        EXPECT_EQ(Held(path, DELETE, all).Error(), ERROR_SHARING_VIOLATION);
    }
}

TEST_F(Sharing, AFileBeingWrittenIsSharedWithReadersOnly)
{
    const std::u16string path = Put(u"a.txt");
    const auto stream = Open(path, writeAccess);
    EXPECT_EQ(Held(path, GENERIC_READ, all).Error(), ERROR_SUCCESS);
    EXPECT_EQ(Held(path, GENERIC_WRITE, all).Error(), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(Held(path, DELETE, all).Error(), ERROR_SHARING_VIOLATION);
}

TEST_F(Sharing, AnOpenFileIsNotDeleted)
{
    const std::u16string path = Put(u"a.txt");
    const auto stream = Open(path);
    const auto item = File(path).As<IFileSystemItem>();
    EXPECT_THAT(OutcomeOf([&] { return item->Delete(VARIANT_TRUE, VARIANT_FALSE); }),
                Failed(Win32Status(32), u"Can't delete the file or folder \"" + path + u"\"."));
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_THAT(OutcomeOf([&] { return item->Delete(VARIANT_TRUE, VARIANT_FALSE); }), Succeeded())
        << "the file is free at Close, not only at the last Release";
}

TEST_F(Sharing, AFileThatIsReadElsewhereIsMadeAnew)
{
    const std::u16string path = Put(u"a.txt");
    const Held held(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_EQ(held.Error(), ERROR_SUCCESS);
    const auto stream = Open(path, writeAccess, createAlways);
    EXPECT_EQ(stream->Close(), S_OK);
    EXPECT_EQ(std::filesystem::file_size(std::filesystem::path(path)), 0U);
}

} // namespace

} // namespace tarnwell::test
