// A host's progress object and its list of items, for the time of a test. They live where they are
// declared and only count their references.
#pragma once

#include "support/localobject.h"

#include <tarnwell/host.h>

#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tarnwell::test
{

class FakeProgress final : public LocalObject<ICopyProgress>
{
public:
    // What is written at question `n`, counted from 1; nothing leaves the value as it was.
    std::function<std::optional<VARIANT_BOOL>(int n)> answer = [](int) {
        return VARIANT_TRUE;
    };
    HRESULT status = S_OK;

    // What the value was before each question.
    std::vector<VARIANT_BOOL> presets;
    std::vector<std::thread::id> threads;

    int Questions() const
    {
        return static_cast<int>(presets.size());
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        presets.push_back(*keepGoing);
        threads.push_back(std::this_thread::get_id());
        if (const std::optional<VARIANT_BOOL> given = answer(Questions()))
            *keepGoing = *given;
        return status;
    }
};

class FakeItemList final : public LocalObject<IItemList>
{
public:
    // An entry that is nothing fails, and so does the count if there is none.
    std::vector<std::optional<std::u16string>> entries;
    std::optional<std::int32_t> count;

    explicit FakeItemList(std::vector<std::optional<std::u16string>> list)
        : entries(std::move(list)), count(static_cast<std::int32_t>(entries.size()))
    {
    }

    HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* out) override
    {
        // What a failed call leaves counts for nothing.
        *out = count.value_or(static_cast<std::int32_t>(entries.size()));
        return count ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) override
    {
        const auto& entry = entries.at(static_cast<std::size_t>(index));
        if (!entry)
            return E_FAIL;
        *path = Bstr(*entry).Detach();
        return S_OK;
    }
};

} // namespace tarnwell::test
