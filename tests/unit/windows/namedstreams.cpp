// Paths that name a data stream, as the local file system opens them. The streams are made up here.
#include "frame/handle.h"
#include "frame/text.h"
#include "local/filesystem.h"
#include "support/errorinfo.h"
#include "support/fakeprogress.h"
#include "support/tempfolder.h"
#include "unit/fakebackup.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

class NamedStreams : public testing::Test
{
protected:
    NamedStreams()
    {
        WriteBytes(file_, "main");
        EXPECT_EQ(MakeInstance<CWin32FileSystemObject>(nullptr, IID_IFileSystem, system_.OutVoid()),
                  S_OK);
    }

    ComPtr<IFile> Open(const std::u16string& path, VARIANT_BOOL mustExist)
    {
        ComPtr<IFile> file;
        ClearError();
        status_ = system_->GetFile(Wide(path), mustExist, file.Out());
        text_ = TakeErrorText();
        return file;
    }
    static std::uint32_t SizeOf(const ComPtr<IFile>& file)
    {
        std::uint32_t size = 99;
        EXPECT_EQ(file->GetSizeLow(&size), S_OK);
        return size;
    }
    static std::u16string NameOf(const ComPtr<IFile>& file)
    {
        Bstr name;
        EXPECT_EQ(file.As<IFileSystemItem>()->GetName(name.Out()), S_OK);
        return std::u16string(name.View());
    }

    TempFolder folder_;
    std::u16string file_ = folder_ / u"a.txt";
    ComPtr<IFileSystem> system_;
    HRESULT status_ = S_OK;
    std::u16string text_;
    FakeBackup backup_{std::vector<FakeStream>{
        {1, u"", 4, 0, 4}, {4, u":other:$DATA", 7, 0, 7}, {4, u":s1:$DATA", 100, 0, 100}}};
};

TEST_F(NamedStreams, AStreamIsAnItemOfItsOwnSize)
{
    const auto file = Open(file_ + u":s1", VARIANT_TRUE);
    ASSERT_TRUE(file);
    EXPECT_EQ(SizeOf(file), 100U);
    EXPECT_EQ(NameOf(file), u"a.txt:s1");
    EXPECT_EQ(backup_.walks, 1);
}

TEST_F(NamedStreams, NamesAreComparedWithoutRegardToCase)
{
    const auto file = Open(folder_ / u"A.TXT:S1", VARIANT_TRUE);
    ASSERT_TRUE(file);
    EXPECT_EQ(SizeOf(file), 100U);
}

TEST_F(NamedStreams, AMissingStreamIsMissing)
{
    EXPECT_FALSE(Open(file_ + u":s2", VARIANT_TRUE));
    EXPECT_EQ(status_, StatusFromError(ERROR_FILE_NOT_FOUND));
    EXPECT_TRUE(text_.starts_with(u"Failed to open \"" + file_ + u":s2\"."));
}

TEST_F(NamedStreams, AMissingStreamMayBeOneToBe)
{
    const auto file = Open(file_ + u":s2", VARIANT_FALSE);
    ASSERT_TRUE(file);
    EXPECT_EQ(SizeOf(file), 0U);
    EXPECT_EQ(NameOf(file), u"a.txt:s2");
    std::uint32_t attributes = 0;
    std::uint32_t filesAttributes = 1;
    EXPECT_EQ(file.As<IFileSystemItem>()->GetAttributes(&attributes), S_OK);
    EXPECT_EQ(Open(file_, VARIANT_TRUE).As<IFileSystemItem>()->GetAttributes(&filesAttributes),
              S_OK);
    EXPECT_EQ(attributes, filesAttributes);
}

TEST_F(NamedStreams, AStreamOfAMissingFileIsMissing)
{
    EXPECT_FALSE(Open(folder_ / u"missing:s1", VARIANT_TRUE));
    EXPECT_EQ(status_, StatusFromError(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(backup_.walks, 0);
}

TEST_F(NamedStreams, AFileThatSomebodyWritesHasNone)
{
    const OsHandle writer(CreateFileW(Wide(file_), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(writer);
    EXPECT_FALSE(Open(file_ + u":s1", VARIANT_TRUE));
    EXPECT_EQ(status_, StatusFromError(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(backup_.walks, 0);
}

TEST_F(NamedStreams, AStreamIsCopiedThroughItsStreamAndTheFlagsMeanNothing)
{
    const std::string bytes(100'000, 's');
    const std::u16string target = folder_ / u"b.txt";
    WriteBytes(file_ + u":s1", bytes);
    WriteBytes(target, "old");
    FakeProgress progress;
    EXPECT_EQ(system_.As<IFileSystemCopyEx>()->CopyItemEx(Wide(file_ + u":s1"), Wide(target),
                                                          COPY_FILE_FAIL_IF_EXISTS, &progress),
              S_OK);
    EXPECT_TRUE(ReadBytes(target) == bytes);
    EXPECT_THAT(progress.presets, testing::ElementsAre(VARIANT_FALSE, VARIANT_FALSE));
}

TEST_F(NamedStreams, AnInnerTextIsReplacedByThatOfTheCopy)
{
    FakeProgress progress;
    const std::u16string target = folder_ / u"missing\\b.txt:s";
    ClearError();
    EXPECT_EQ(system_->CopyItem(Wide(file_), Wide(target), &progress),
              StatusFromError(ERROR_PATH_NOT_FOUND));
    EXPECT_TRUE(
        TakeErrorText().starts_with(u"Failed to copy \"" + file_ + u"\" to \"" + target + u"\". "));
}

TEST_F(NamedStreams, PlainPathsAreNotWalked)
{
    EXPECT_TRUE(Open(file_, VARIANT_TRUE));
    EXPECT_EQ(backup_.walks, 0);
}

} // namespace

} // namespace tarnwell::test
