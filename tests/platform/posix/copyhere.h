// Copies of files in a folder of the test's own.
#pragma once

#include "platform/copied.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{

inline constexpr off_t copyPiece = off_t{4} << 20;

inline struct stat LinkFacts(const std::filesystem::path& path)
{
    struct stat facts = {};
    EXPECT_EQ(lstat(path.c_str(), &facts), 0) << path;
    return facts;
}

class CopyHere : public testing::Test
{
protected:
    static std::filesystem::path At(const std::filesystem::path& path)
    {
        return path;
    }
    DWORD Copy(DWORD flags = 0, Progress* progress = nullptr) const
    {
        return ErrorOfCopy(source_, target_, flags, progress);
    }
    void PutSparse(off_t size, std::initializer_list<off_t> written) const
    {
        const int file = open(At(source_).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        ASSERT_EQ(ftruncate(file, size), 0);
        for (const off_t at : written)
            ASSERT_EQ(pwrite(file, "data", 4, at), 4);
        close(file);
    }
    static std::string BytesAt(const std::filesystem::path& path, off_t at, std::size_t size)
    {
        std::string bytes(size, '?');
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t count = pread(file, bytes.data(), size, at);
        close(file);
        bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
        return bytes;
    }

    TempFolder folder_;
    std::u16string source_ = folder_ / u"source";
    std::u16string target_ = folder_ / u"target";
};

} // namespace tarnwell::test
