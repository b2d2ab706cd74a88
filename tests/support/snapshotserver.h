// A file server for tests, behind the pointer to the system's call for control codes.
#pragma once

#include "platform/ntfscontrol.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwell::test
{

// Answers while it lives. One at a time, and on the thread that asks.
class SnapshotServer
{
public:
    static constexpr NTSTATUS pending = 0x103;
    static constexpr ULONG startSize = 16;

    struct Answer
    {
        std::string bytes; // goes into the buffer as far as it fits
        NTSTATUS result = 0;
        NTSTATUS status = 0;
    };

    struct Call
    {
        HANDLE share;
        HANDLE event;
        ULONG code;
        ULONG size;       // of the buffer
        bool isCleared;   // the buffer, before the answer
        bool asksPlainly; // neither a routine nor input
    };

    // To a buffer of the size of an answer's start, and to one of any other size.
    Answer start;
    Answer whole;
    // Runs before the answer is given.
    std::function<void(const Call&)> onCall = [](const Call&) {
    };
    std::vector<Call> calls;

    SnapshotServer() : before_(std::exchange(ntFsControlFile, &Control))
    {
        current = this;
    }
    SnapshotServer(const SnapshotServer&) = delete;
    SnapshotServer& operator=(const SnapshotServer&) = delete;
    ~SnapshotServer()
    {
        ntFsControlFile = before_;
        current = nullptr;
    }

    // Answers as the system's own server does for a volume with these snapshots.
    void Hold(const std::vector<std::u16string>& tokens)
    {
        const std::string names = NamesOf(tokens);
        const auto count = static_cast<std::uint32_t>(tokens.size());
        const auto size = static_cast<std::uint32_t>(names.size());
        start = {Header(count, 0, size)};
        whole = {Header(count, count, size) + names};
    }

    // The first of an answer's parts.
    static std::string Header(std::uint32_t all, std::uint32_t named, std::uint32_t size)
    {
        return Bytes(all) + Bytes(named) + Bytes(size);
    }
    // The other part: each name with its terminator, and one more terminator.
    static std::string NamesOf(const std::vector<std::u16string>& tokens)
    {
        std::string names;
        for (const std::u16string& token : tokens)
            names += UnitsOf(token) + UnitsOf({u"", 1});
        return names + UnitsOf({u"", 1});
    }
    static std::string UnitsOf(std::u16string_view text)
    {
        std::string bytes;
        for (const char16_t unit : text)
            bytes += Bytes(unit).substr(0, 2);
        return bytes;
    }

private:
    static std::string Bytes(std::uint32_t number)
    {
        std::string bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(number >> shift & 0xFF);
        return bytes;
    }

    static NTSTATUS NTAPI Control(HANDLE share, HANDLE event, PIO_APC_ROUTINE routine,
                                  void* context, IO_STATUS_BLOCK* outcome, ULONG code, void* input,
                                  ULONG inputSize, void* output, ULONG outputSize)
    {
        char* const bytes = static_cast<char*>(output);
        const bool isCleared =
            std::all_of(bytes, bytes + outputSize, [](char byte) { return byte == 0; });
        const bool asksPlainly =
            routine == nullptr && context == nullptr && input == nullptr && inputSize == 0;
        current->calls.push_back({share, event, code, outputSize, isCleared, asksPlainly});
        current->onCall(current->calls.back());

        const Answer& answer = outputSize == startSize ? current->start : current->whole;
        std::copy_n(answer.bytes.data(), std::min<std::size_t>(outputSize, answer.bytes.size()),
                    bytes);
        outcome->Status = answer.status;
        return answer.result;
    }

    static inline SnapshotServer* current = nullptr;
    NtFsControlFileCall before_;
};

} // namespace tarnwell::test
