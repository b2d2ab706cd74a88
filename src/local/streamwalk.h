// One walk over the streams of an open file, named or not. (On Linux only in tests, see
// datastreams.h.)
#pragma once

#include "platform/backup.h"

#include <string_view>

namespace tarnwell
{

// As the platform writes it, name excluded.
struct StreamHeader
{
    DWORD id;
    DWORD attributes;
    DWORD sizeLow;
    DWORD sizeHigh;
    DWORD nameSize; // in bytes
};

static_assert(sizeof(StreamHeader) == 20);

class StreamWalk
{
public:
    // `file` stays the caller's.
    StreamWalk(const BackupCalls& calls, HANDLE file) : calls_(calls), file_(file) {}
    StreamWalk(const StreamWalk&) = delete;
    StreamWalk& operator=(const StreamWalk&) = delete;
    ~StreamWalk();

    // Goes to the next stream. False at the end, and where the walk can't go on.
    bool Next();

    // Of the stream that Next went to. The name has the form ":name:$DATA".
    const StreamHeader& Header() const
    {
        return header_;
    }
    std::u16string_view Name() const;

private:
    // Whether all of `size` bytes came.
    bool Read(void* buffer, DWORD size);
    bool ReadName();
    bool SkipData();

    const BackupCalls& calls_;
    HANDLE file_;
    LPVOID context_ = nullptr;
    bool isBegun_ = false;
    StreamHeader header_{};
    char16_t name_[261] = {};
};

} // namespace tarnwell
