// Copying files.
#include "platform/copied.h"
#include "platform/extendedcopy.h"
#include "support/opened.h"
#include "support/tempfolder.h"
#include "support/wine.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

constexpr std::size_t piece = std::size_t{4} << 20;

std::string Bytes(std::size_t size)
{
    std::string bytes(size, 0);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 251);
    return bytes;
}

class FileCopy : public testing::Test
{
protected:
    void Put(std::string_view bytes) const
    {
        WriteBytes(source_, bytes);
    }
    DWORD Copy(DWORD flags = 0, Progress* progress = nullptr) const
    {
        return ErrorOfCopy(source_, target_, flags, progress);
    }
    static void SetTime(const std::u16string& path, const FILETIME& time)
    {
        EXPECT_TRUE(SetFileTime(Opened(path, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING).Get(), nullptr,
                                nullptr, &time));
    }
    static FILETIME TimeOf(const std::u16string& path)
    {
        FILETIME time{};
        EXPECT_TRUE(GetFileTime(OpenedForReading(path).Get(), nullptr, nullptr, &time));
        return time;
    }

    TempFolder folder_;
    std::u16string source_ = folder_ / u"source";
    std::u16string target_ = folder_ / u"ツ target";
};

TEST_F(FileCopy, EveryByteArrives)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{65536}, piece - 1,
                                   piece, piece + 1, 2 * piece + 77})
    {
        const std::string bytes = Bytes(size);
        Put(bytes);
        EXPECT_EQ(Copy(), ERROR_SUCCESS) << size;
        EXPECT_TRUE(ReadBytes(target_) == bytes) << size;
        EXPECT_TRUE(ReadBytes(source_) == bytes) << size;
    }
}

TEST_F(FileCopy, ReplacesTheBytesOfAnExistingFile)
{
    Put("new");
    WriteBytes(target_, Bytes(100'000));
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(FileCopy, AnExistingFileCanBeSpared)
{
    Put("new");
    WriteBytes(target_, "old");
    EXPECT_EQ(Copy(COPY_FILE_FAIL_IF_EXISTS), ERROR_FILE_EXISTS);
    EXPECT_EQ(ReadBytes(target_), "old");
    fs::remove(target_);
    EXPECT_EQ(Copy(COPY_FILE_FAIL_IF_EXISTS), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(FileCopy, AMissingSourceMakesNoTarget)
{
    EXPECT_EQ(Copy(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_EQ(ErrorOfCopy(Joined(folder_ / u"none", u"a"), target_), ERROR_PATH_NOT_FOUND);
    WriteBytes(target_, "old");
    EXPECT_EQ(Copy(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ReadBytes(target_), "old");
}

TEST_F(FileCopy, TheTargetsFolderMustBeThere)
{
    Put("a");
    EXPECT_EQ(ErrorOfCopy(source_, Joined(folder_ / u"none", u"a")), ERROR_PATH_NOT_FOUND);
}

TEST_F(FileCopy, FoldersAreDenied)
{
    Put("a");
    fs::create_directory(folder_ / u"sub");
    EXPECT_EQ(ErrorOfCopy(folder_ / u"sub", target_), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_EQ(ErrorOfCopy(source_, folder_ / u"sub"), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(fs::is_empty(folder_ / u"sub"));
}

TEST_F(FileCopy, OntoItselfIsRefusedAndNothingIsLost)
{
    Put("mine");
    EXPECT_EQ(ErrorOfCopy(source_, source_), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(source_), "mine");
}

TEST_F(FileCopy, TheWriteTimeIsTheSources)
{
    Put("a");
    const FILETIME time{1234567890, 29396000};
    SetTime(source_, time);
    WriteBytes(target_, "old");
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    const FILETIME copied = TimeOf(target_);
    EXPECT_EQ(copied.dwHighDateTime, time.dwHighDateTime);
    EXPECT_EQ(copied.dwLowDateTime, time.dwLowDateTime);
}

TEST_F(FileCopy, ReadOnlyIsCarriedOver)
{
    Put("a");
    ASSERT_TRUE(SetFileAttributesW(Wide(source_), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_NE(GetFileAttributesW(Wide(target_)) & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_EQ(ReadBytes(target_), "a");
}

TEST_F(FileCopy, AReadOnlyTargetIsDenied)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine lets root write what is read-only";
    Put("new");
    WriteBytes(target_, "old");
    ASSERT_TRUE(SetFileAttributesW(Wide(target_), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(Copy(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadBytes(target_), "old");
}

TEST_F(FileCopy, ThePlainFormDoesTheSame)
{
    Put("new");
    WriteBytes(target_, "old");
    EXPECT_FALSE(CopyFileW(Wide(source_), Wide(target_), 1));
    EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
    EXPECT_EQ(ReadBytes(target_), "old");
    EXPECT_TRUE(CopyFileW(Wide(source_), Wide(target_), 0));
    EXPECT_EQ(ReadBytes(target_), "new");
}

TEST_F(FileCopy, TheProgressHearsOfItAll)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine does not ask in between";
    Put(Bytes(2 * piece));
    Progress progress;
    EXPECT_EQ(Copy(0, &progress), ERROR_SUCCESS);
    EXPECT_GE(progress.questions, 2);
    EXPECT_EQ(progress.size, static_cast<LONGLONG>(2 * piece));
    EXPECT_EQ(progress.done, static_cast<LONGLONG>(2 * piece));
}

TEST_F(FileCopy, ACancelledCopyLeavesNoTarget)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine does not ask in between";
    Put(Bytes(piece));
    for (const int last : {1, 2})
    {
        Progress progress;
        progress.answer = [last](int n) {
            return n < last ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
        };
        EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
        EXPECT_EQ(progress.questions, last);
        EXPECT_FALSE(fs::exists(target_));
        EXPECT_EQ(fs::file_size(source_), piece);
    }
}

TEST_F(FileCopy, TheExtendedFormIsFoundByName)
{
    HMODULE library = nullptr;
    const ExtendedCopy copy = FindExtendedCopy(&library);
    ASSERT_NE(copy, nullptr);
    Put("found");
    EXPECT_TRUE(copy(Wide(source_), Wide(target_), nullptr, nullptr, nullptr, 0));
    ReleaseExtendedCopy(library);
    EXPECT_EQ(ReadBytes(target_), "found");
}

} // namespace
} // namespace tarnwell::test
