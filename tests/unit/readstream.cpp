// The stream over what a client printed.
#include "runner/readstream.h"
#include "runner/outputfile.h"
#include "support/clientcall.h"
#include "support/errorinfo.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

constexpr HRESULT invalidHandle = static_cast<HRESULT>(0x80070000 | ERROR_INVALID_HANDLE);

class ReadStream : public testing::Test
{
protected:
    ReadStream()
    {
        std::shared_ptr<OsHandle> file = NewOutputFile();
        DWORD written = 0;
        EXPECT_TRUE(WriteFile(file->Get(), "content", 7, &written, nullptr));
        EXPECT_TRUE(Rewind(*file));
        file_ = file;
        stream_ = MakeReadStream(std::move(file), u"source");
        bytes_ = stream_.As<::ISequentialStream>();
        ClearError();
    }

    std::weak_ptr<OsHandle> file_;
    ComPtr<IFileStream> stream_;
    ComPtr<::ISequentialStream> bytes_;
    char buffer_[16] = {};
    ULONG count_ = 77;
};

TEST_F(ReadStream, GivesAllAndThenNothing)
{
    EXPECT_EQ(bytes_->Read(buffer_, 4, &count_), S_OK);
    EXPECT_EQ(std::string_view(buffer_, count_), "cont");
    EXPECT_EQ(bytes_->Read(buffer_, sizeof buffer_, &count_), S_OK);
    EXPECT_EQ(std::string_view(buffer_, count_), "ent");
    for (int i = 0; i < 2; ++i)
    {
        count_ = 77;
        EXPECT_EQ(bytes_->Read(buffer_, sizeof buffer_, &count_), S_OK);
        EXPECT_EQ(count_, 0U);
    }
}

TEST_F(ReadStream, NeedNotCount)
{
    EXPECT_EQ(bytes_->Read(buffer_, 4, nullptr), S_OK);
    EXPECT_EQ(std::string_view(buffer_, 4), "cont");
    EXPECT_EQ(bytes_->Read(buffer_, sizeof buffer_, &count_), S_OK);
    EXPECT_EQ(count_, 3U);
}

TEST_F(ReadStream, IsClosedForGood)
{
    EXPECT_EQ(stream_->Close(), S_OK);
    EXPECT_TRUE(file_.expired());
    EXPECT_EQ(stream_->Close(), S_OK);
    EXPECT_EQ(bytes_->Read(buffer_, 1, &count_), invalidHandle);
    EXPECT_EQ(count_, 0U);
    EXPECT_EQ(bytes_->Read(buffer_, 1, nullptr), invalidHandle);
    EXPECT_FALSE(TakeError());
}

TEST_F(ReadStream, ClosingLeavesTheFileToOthersWhoHoldIt)
{
    const std::shared_ptr<OsHandle> other = file_.lock();
    EXPECT_EQ(stream_->Close(), S_OK);
    EXPECT_TRUE(*other);
}

TEST_F(ReadStream, ItsLastReferenceTakesTheFileAlong)
{
    stream_.Reset();
    EXPECT_FALSE(file_.expired());
    EXPECT_EQ(bytes_->Read(buffer_, 7, &count_), S_OK);
    EXPECT_EQ(count_, 7U);
    bytes_.Reset();
    EXPECT_TRUE(file_.expired());
}

TEST_F(ReadStream, CannotBeWritten)
{
    EXPECT_EQ(bytes_->Write("x", 1, nullptr), E_POINTER);
    EXPECT_EQ(bytes_->Write("x", 1, &count_), E_NOTIMPL);
    EXPECT_EQ(count_, 0U);
    EXPECT_FALSE(TakeError());
}

TEST_F(ReadStream, ClaimsErrorsOfBothItsInterfaces)
{
    const auto claims = stream_.As<::ISupportErrorInfo>();
    ASSERT_TRUE(claims);
    EXPECT_EQ(claims->InterfaceSupportsErrorInfo(IID_IFileStream), S_OK);
    EXPECT_EQ(claims->InterfaceSupportsErrorInfo(IidOf<::ISequentialStream>()), S_OK);
    EXPECT_EQ(claims->InterfaceSupportsErrorInfo(IID_IFileSystem), S_FALSE);
}

} // namespace
} // namespace tarnwell::test
