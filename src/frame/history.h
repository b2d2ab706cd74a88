// A history on its way to the host, common to all file systems that tell one in full.
#pragma once

#include "frame/boundary.h"
#include "frame/patience.h"

#include <tarnwell/history.h>
#include <tarnwell/pointers.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarnwell
{

struct HistoryRecord
{
    std::u16string id;
    std::u16string author;
    std::u16string description;
    std::u16string address;
    std::u16string path;
    std::uint64_t modifiedTime = 0; // FILETIME values
    std::uint64_t revisionTime = 0;
};

// The second that a FILETIME value is in. Some systems know parts of one, and others don't.
constexpr std::uint64_t InWholeSeconds(std::uint64_t time)
{
    constexpr std::uint64_t ticksOfSecond = 10'000'000;
    return time - time % ticksOfSecond;
}

// What the host asks for.
struct HistoryQuestion
{
    std::u16string path; // as the host gave it
    std::optional<std::u16string> revision;
    HistoryOptions options; // its times are whole seconds

    bool Has(HistoryFlag flag) const
    {
        return (options.flags & flag) != 0;
    }
};

// The page of a history, for what the client doesn't leave out itself.
class HistoryPage
{
public:
    // Bounds of 0 are none.
    struct Bounds
    {
        std::uint32_t skip = 0;
        std::uint32_t count = 0;
        std::uint64_t since = 0;
        std::uint64_t until = 0;
    };
    explicit HistoryPage(const Bounds& bounds)
        : skip_(bounds.skip), left_(bounds.count == 0 ? UINT32_MAX : bounds.count),
          since_(bounds.since), until_(bounds.until == 0 ? UINT64_MAX : bounds.until)
    {
    }

    // Whether the next revision, recorded at `time`, is on the page.
    bool Admits(std::uint64_t time)
    {
        if (time < since_ || time > until_)
            return false;
        if (skip_ == 0)
            return true;
        --skip_;
        return false;
    }
    // One was given: whether there may be another.
    bool CountDown()
    {
        return left_ == UINT32_MAX || --left_ > 0;
    }

private:
    std::uint32_t skip_;
    std::uint32_t left_;
    std::uint64_t since_;
    std::uint64_t until_;
};

// Hands records over to the host.
class HistoryTaker
{
public:
    HistoryTaker(IHistorySink* sink, Patience& patience) : sink_(sink), patience_(patience) {}

    // Whether more are wanted.
    bool Take(const HistoryRecord& record);

    // What the host said of the last one, if that was a failure.
    HRESULT Status() const
    {
        return status_;
    }
    Patience& HostsPatience() const
    {
        return patience_;
    }

private:
    IHistorySink* sink_; // the host's, for the time of its call
    Patience& patience_;
    HRESULT status_ = S_OK;
};

using HistoryReader = std::function<void(const HistoryQuestion& question, HistoryTaker& taker)>;

// A call of IFileSystemHistory::ReadHistory: what is given to it, and `read`, which throws when it
// fails and ends when no more is wanted. `source` names the file system in failures.
HRESULT ReadHistoryForHost(const Reporter& reporter, const char16_t* source, const OLECHAR* path,
                           const OLECHAR* revision, const HistoryOptions* options,
                           IHistorySink* sink, const HistoryReader& read);

} // namespace tarnwell
