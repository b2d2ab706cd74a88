#include "unit/fakebackup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace tarnwell::test
{

namespace
{

FakeBackup* present = nullptr;

template <class T> void Append(std::string& bytes, T number)
{
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(number >> (8 * i));
}

} // namespace

std::string FakeStream::Bytes() const
{
    std::string bytes;
    Append(bytes, id);
    Append(bytes, std::uint32_t{0xABCD});
    Append(bytes, size);
    Append(bytes,
           claimedNameSize != 0 ? claimedNameSize : static_cast<std::uint32_t>(name.size() * 2));
    for (const char16_t unit : name)
        Append(bytes, static_cast<std::uint16_t>(unit));
    return bytes + std::string(stored, 'd');
}

FakeBackup::FakeBackup(std::string bytes) : bytes_(std::move(bytes)), before_(backupCalls)
{
    static const BackupCalls calls{&Read, &Seek};
    present = this;
    backupCalls = &calls;
}

FakeBackup::FakeBackup(const std::vector<FakeStream>& streams) : FakeBackup(std::string())
{
    for (const FakeStream& stream : streams)
        bytes_ += stream.Bytes();
}

FakeBackup::~FakeBackup()
{
    EXPECT_EQ(open, 0) << "a walk was not ended";
    backupCalls = before_;
    present = nullptr;
}

BOOL FakeBackup::Read(HANDLE file, BYTE* buffer, DWORD size, DWORD* read, BOOL abort, BOOL security,
                      LPVOID* context)
{
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(security, 0);
    auto* at = static_cast<std::size_t*>(*context);
    if (abort)
    {
        EXPECT_EQ(size, 0U);
        present->open -= at == nullptr ? 0 : 1;
        ++present->walks;
        delete at;
        *context = nullptr;
        return 1;
    }
    if (at == nullptr)
    {
        *context = at = new std::size_t(0);
        ++present->open;
    }
    return present->ReadSome(buffer, size, read, *at);
}

BOOL FakeBackup::ReadSome(BYTE* buffer, DWORD size, DWORD* read, std::size_t& at)
{
    ++reads;
    sizes.push_back(size);
    if (reads == failingRead)
        return 0;
    const std::string_view rest = std::string_view(bytes_).substr(std::min(at, bytes_.size()));
    *read = static_cast<DWORD>(std::min<std::size_t>(rest.size(), size));
    if (reads == shortRead && *read > 0)
        --*read;
    std::memcpy(buffer, rest.data(), *read);
    at += *read;
    return 1;
}

BOOL FakeBackup::Seek(HANDLE, DWORD low, DWORD high, DWORD* lowSought, DWORD* highSought,
                      LPVOID* context)
{
    ++present->seeks;
    if (present->seeks == present->failingSeek)
        return 0;
    std::size_t& at = *static_cast<std::size_t*>(*context);
    const std::uint64_t distance = (std::uint64_t{high} << 32) | low;
    const std::size_t left = present->bytes_.size() - std::min(at, present->bytes_.size());
    // Data that isn't kept counts as passed.
    at += std::min<std::uint64_t>(distance, left) == distance ? static_cast<std::size_t>(distance)
                                                              : 0;
    *lowSought = low;
    *highSought = high;
    return 1;
}

} // namespace tarnwell::test
