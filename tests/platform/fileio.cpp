// Reading, writing, seeking, cutting off.
#include "support/opened.h"
#include "support/tempfolder.h"
#include "support/wine.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

constexpr DWORD everything = GENERIC_READ | GENERIC_WRITE;
constexpr LONGLONG beyond32Bits = 0x123456789;

class FileIo : public testing::Test
{
protected:
    // A new file with these bytes, open for reading and writing at its start.
    OsHandle FileWith(std::string_view bytes)
    {
        WriteBytes(path_, bytes);
        return Opened(path_, everything, OPEN_EXISTING);
    }

    TempFolder folder_;
    std::u16string path_ = folder_ / u"file";
};

TEST_F(FileIo, WhatIsWrittenIsRead)
{
    const OsHandle file = FileWith("");
    DWORD moved = 99;
    ASSERT_TRUE(WriteFile(file.Get(), "hello", 5, &moved, nullptr));
    EXPECT_EQ(moved, 5U);
    ASSERT_EQ(SetFilePointer(file.Get(), 1, nullptr, FILE_BEGIN), 1U);
    char buffer[5] = {};
    ASSERT_TRUE(ReadFile(file.Get(), buffer, 3, &moved, nullptr));
    EXPECT_EQ(std::string(buffer, moved), "ell");
}

TEST_F(FileIo, ReadIsShortAtTheEndAndEmptyBehindIt)
{
    const OsHandle file = FileWith("abc");
    char buffer[10];
    DWORD moved = 99;
    ASSERT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &moved, nullptr));
    EXPECT_EQ(moved, 3U);
    ASSERT_TRUE(ReadFile(file.Get(), buffer, sizeof buffer, &moved, nullptr));
    EXPECT_EQ(moved, 0U);
}

TEST_F(FileIo, NothingIsReadAndWrittenWithSuccess)
{
    const OsHandle file = FileWith("abc");
    DWORD moved = 99;
    char byte = 0;
    EXPECT_TRUE(ReadFile(file.Get(), &byte, 0, &moved, nullptr));
    EXPECT_EQ(moved, 0U);
    moved = 99;
    EXPECT_TRUE(WriteFile(file.Get(), &byte, 0, &moved, nullptr));
    EXPECT_EQ(moved, 0U);
    EXPECT_EQ(ReadBytes(path_), "abc");
}

TEST_F(FileIo, GoesToTheFullSize)
{
    std::string bytes;
    for (unsigned i = 0; i < 5'000'000; ++i)
        bytes += static_cast<char>(i % 251);
    const DWORD size = static_cast<DWORD>(bytes.size());
    const OsHandle file = FileWith("");
    DWORD moved = 0;
    ASSERT_TRUE(WriteFile(file.Get(), bytes.data(), size, &moved, nullptr));
    EXPECT_EQ(moved, size);
    ASSERT_EQ(SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN), 0U);
    std::string back(bytes.size() + 1, 0);
    ASSERT_TRUE(ReadFile(file.Get(), back.data(), size + 1, &moved, nullptr));
    EXPECT_EQ(moved, size);
    back.resize(moved);
    EXPECT_TRUE(back == bytes);
}

TEST_F(FileIo, WrongAccessIsDenied)
{
    WriteBytes(path_, "abc");
    char byte = 'x';
    DWORD moved = 99;
    const OsHandle writer = Opened(path_, GENERIC_WRITE, OPEN_EXISTING);
    EXPECT_EQ(ErrorOf(ReadFile(writer.Get(), &byte, 1, &moved, nullptr)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(moved, 0U);
    const OsHandle reader = OpenedForReading(path_);
    EXPECT_EQ(ErrorOf(WriteFile(reader.Get(), &byte, 1, &moved, nullptr)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadBytes(path_), "abc");
}

TEST_F(FileIo, ReaderCannotCutTheFile)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine calls the access an invalid parameter";
    WriteBytes(path_, "abc");
    const OsHandle reader = OpenedForReading(path_);
    EXPECT_EQ(ErrorOf(SetEndOfFile(reader.Get())), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ReadBytes(path_), "abc");
}

TEST_F(FileIo, InvalidHandleIsRefused)
{
    char byte = 0;
    DWORD moved = 99;
    const HANDLE none = INVALID_HANDLE_VALUE;
    EXPECT_EQ(ErrorOf(ReadFile(none, &byte, 1, &moved, nullptr)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(WriteFile(none, &byte, 1, &moved, nullptr)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SetFilePointerEx(none, {}, nullptr, FILE_BEGIN)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SetEndOfFile(none)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(SetFilePointer(none, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(FileIo, SeeksFromEveryOrigin)
{
    const OsHandle file = FileWith("0123456789");
    EXPECT_EQ(SetFilePointer(file.Get(), 4, nullptr, FILE_BEGIN), 4U);
    EXPECT_EQ(SetFilePointer(file.Get(), -1, nullptr, FILE_CURRENT), 3U);
    EXPECT_EQ(SetFilePointer(file.Get(), -2, nullptr, FILE_END), 8U);
    LARGE_INTEGER distance = {};
    distance.QuadPart = -5;
    LARGE_INTEGER position = {};
    EXPECT_TRUE(SetFilePointerEx(file.Get(), distance, &position, FILE_CURRENT));
    EXPECT_EQ(position.QuadPart, 3);
    EXPECT_TRUE(SetFilePointerEx(file.Get(), distance, nullptr, FILE_END));
}

TEST_F(FileIo, SeekBeforeTheStartIsRefused)
{
    const OsHandle file = FileWith("abc");
    LARGE_INTEGER distance = {};
    distance.QuadPart = -1;
    EXPECT_EQ(ErrorOf(SetFilePointerEx(file.Get(), distance, nullptr, FILE_BEGIN)),
              ERROR_NEGATIVE_SEEK);
    EXPECT_EQ(SetFilePointer(file.Get(), -4, nullptr, FILE_END), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), ERROR_NEGATIVE_SEEK);
}

TEST_F(FileIo, UnknownOriginIsRefused)
{
    const OsHandle file = FileWith("abc");
    for (const DWORD origin : {3U, 4U, 0xFFFFFFFFU})
    {
        EXPECT_EQ(ErrorOf(SetFilePointerEx(file.Get(), {}, nullptr, origin)),
                  ERROR_INVALID_PARAMETER);
    }
}

TEST_F(FileIo, PositionsBeyond32BitsComeInTwoHalves)
{
    const OsHandle file = FileWith("");
    LONG high = static_cast<LONG>(beyond32Bits >> 32);
    EXPECT_EQ(SetFilePointer(file.Get(), static_cast<LONG>(beyond32Bits), &high, FILE_BEGIN),
              static_cast<DWORD>(beyond32Bits));
    EXPECT_EQ(high, static_cast<LONG>(beyond32Bits >> 32));
    LARGE_INTEGER position = {};
    EXPECT_TRUE(SetFilePointerEx(file.Get(), {}, &position, FILE_CURRENT));
    EXPECT_EQ(position.QuadPart, beyond32Bits);
}

TEST_F(FileIo, PositionThatDoesNotFitIsRefusedAndNotTaken)
{
    if (IsUnderWine())
        GTEST_SKIP() << "Wine gives the lower half of the position";
    const OsHandle file = FileWith("");
    LARGE_INTEGER distance = {};
    distance.QuadPart = beyond32Bits;
    ASSERT_TRUE(SetFilePointerEx(file.Get(), distance, nullptr, FILE_BEGIN));
    EXPECT_EQ(SetFilePointer(file.Get(), 1, nullptr, FILE_CURRENT), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    LARGE_INTEGER position = {};
    EXPECT_TRUE(SetFilePointerEx(file.Get(), {}, &position, FILE_CURRENT));
    EXPECT_EQ(position.QuadPart, beyond32Bits);
}

TEST_F(FileIo, SuccessfulSeekSetsErrorZero)
{
    const OsHandle file = FileWith("abc");
    SetLastError(ERROR_GEN_FAILURE);
    LONG high = 0;
    EXPECT_EQ(SetFilePointer(file.Get(), -1, &high, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(high, 0);
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
}

TEST_F(FileIo, EndOfFileIsSetAtThePosition)
{
    const OsHandle file = FileWith("abcdef");
    ASSERT_EQ(SetFilePointer(file.Get(), 2, nullptr, FILE_BEGIN), 2U);
    EXPECT_TRUE(SetEndOfFile(file.Get()));
    EXPECT_EQ(ReadBytes(path_), "ab");
    ASSERT_EQ(SetFilePointer(file.Get(), 4, nullptr, FILE_BEGIN), 4U);
    EXPECT_TRUE(SetEndOfFile(file.Get()));
    EXPECT_EQ(ReadBytes(path_), std::string("ab\0\0", 4));
}

} // namespace
} // namespace tarnwell::test
