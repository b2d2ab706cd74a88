// A host that takes the items of a tree, for the time of a test. It lives where it is declared.
#pragma once

#include "support/fakeprogress.h"

#include <tarnwell/trees.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace tarnwell::test
{

struct TreeEntry
{
    std::u16string name, contentId;
    std::uint32_t kind = 0;
    std::uint32_t flags = 0;
    std::uint64_t size = 0;
    std::uint64_t modified = 0; // a FILETIME value

    bool operator==(const TreeEntry&) const = default;
};

class TreeSink final : public LocalObject<ITreeSink>
{
public:
    std::vector<TreeEntry> entries;
    int questions = 0;
    // What it says after an entry, and when it is asked.
    std::function<HRESULT()> answer = [] {
        return S_OK;
    };
    std::function<bool()> wantsMore = [] {
        return true;
    };

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        ++questions;
        if (!wantsMore())
            *keepGoing = VARIANT_FALSE;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Take(const TreeItem* item) override
    {
        const auto text = [](const OLECHAR* units) {
            return std::u16string(reinterpret_cast<const char16_t*>(units));
        };
        entries.push_back({text(item->name), text(item->contentId), item->kind, item->flags,
                           item->size, item->modifiedTime});
        return answer();
    }
};

} // namespace tarnwell::test
