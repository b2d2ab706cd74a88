// Stand-ins for the platform's walk over a file's streams: each file has the streams that a test
// gives it, as bytes.
#pragma once

#include "platform/backup.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

// A stream as the platform writes it: header, name, and as many bytes of data as `stored` says.
struct FakeStream
{
    std::uint32_t id = 4;
    std::u16string name;
    std::uint64_t size = 0;
    // The size of the name that the header claims; the true one if 0.
    std::uint32_t claimedNameSize = 0;
    std::size_t stored = 0;

    std::string Bytes() const;
};

// In place of the platform's calls while it lives; one at a time.
class FakeBackup
{
public:
    explicit FakeBackup(std::string bytes);
    explicit FakeBackup(const std::vector<FakeStream>& streams);
    FakeBackup(const FakeBackup&) = delete;
    FakeBackup& operator=(const FakeBackup&) = delete;
    ~FakeBackup();

    // The n-th read, counted from 1, fails, or gives a byte less than it could. 0: none.
    int failingRead = 0;
    int shortRead = 0;
    int failingSeek = 0;

    int reads = 0; // those that end a walk not counted
    int seeks = 0;
    int walks = 0; // that were ended
    std::vector<std::uint32_t> sizes;
    // Whether a walk was begun that wasn't ended.
    int open = 0;

private:
    static BOOL CALLBACK Read(HANDLE file, BYTE* buffer, DWORD size, DWORD* read, BOOL abort,
                              BOOL security, LPVOID* context);
    static BOOL CALLBACK Seek(HANDLE file, DWORD low, DWORD high, DWORD* lowSought,
                              DWORD* highSought, LPVOID* context);
    BOOL ReadSome(BYTE* buffer, DWORD size, DWORD* read, std::size_t& at);

    std::string bytes_;
    const BackupCalls* before_;
};

} // namespace tarnwell::test
