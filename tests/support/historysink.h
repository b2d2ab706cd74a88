// A host that takes a history, for the time of a test. It lives where it is declared.
#pragma once

#include "support/fakeprogress.h"

#include <tarnwell/history.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace tarnwell::test
{

struct HistoryEntry
{
    std::u16string id, author, description, address, path;
    std::uint64_t modified = 0; // FILETIME values
    std::uint64_t time = 0;

    friend bool operator==(const HistoryEntry&, const HistoryEntry&) = default;
};

class HistorySink final : public LocalObject<IHistorySink>
{
public:
    std::vector<HistoryEntry> entries;
    int questions = 0;
    // What it says after an entry, and when it is asked.
    std::function<HRESULT()> answer = [] {
        return S_OK;
    };
    std::function<bool()> wantsMore = [] {
        return true;
    };
    // Where it was called.
    std::vector<std::thread::id> threads;

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        ++questions;
        threads.push_back(std::this_thread::get_id());
        if (!wantsMore())
            *keepGoing = VARIANT_FALSE;
        return E_FAIL; // isn't looked at
    }

    HRESULT STDMETHODCALLTYPE Take(const HistoryRevision* revision) override
    {
        threads.push_back(std::this_thread::get_id());
        const auto text = [](const OLECHAR* units) {
            return std::u16string(reinterpret_cast<const char16_t*>(units));
        };
        entries.push_back({text(revision->id), text(revision->author), text(revision->description),
                           text(revision->address), text(revision->path), revision->modifiedTime,
                           revision->revisionTime});
        return answer();
    }
};

inline HistoryOptions Wanted(std::uint32_t flags = 0, std::uint32_t skip = 0,
                             std::uint32_t count = 0)
{
    return {sizeof(HistoryOptions), flags, skip, count, 0, 0};
}

} // namespace tarnwell::test
