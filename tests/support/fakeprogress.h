// A host's progress object and its list of items, for the time of a test. They live where they are
// declared and only count their references.
#pragma once

#include "support/localobject.h"

#include <tarnwell/constants.h>
#include <tarnwell/host.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <utility>
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

// The same, which also wants to know how far the copy is.
class FakeAmounts final : public LocalObject<ICopyProgress>
{
public:
    struct Amount
    {
        std::uint64_t done;
        std::uint64_t total;

        friend bool operator==(const Amount&, const Amount&) = default;
    };

    // What was told, in order; a question is in between as both of `asked`.
    static constexpr Amount asked{AmountUnknown, AmountUnknown};
    std::vector<Amount> told;
    // The question at which the answer is no; 0 is none.
    int last = 0;
    // What `QueryInterface` does for the amounts.
    HRESULT found = S_OK;
    bool isGiven = true;
    HRESULT status = S_OK;

    // Without the questions.
    std::vector<Amount> Told() const
    {
        std::vector<Amount> amounts;
        std::copy_if(told.begin(), told.end(), std::back_inserter(amounts),
                     [](const Amount& amount) { return amount != asked; });
        return amounts;
    }
    int Questions() const
    {
        return static_cast<int>(std::count(told.begin(), told.end(), asked));
    }
    // Whether each question came behind an amount of its own, and no amount was less than another.
    bool IsInOrder() const
    {
        std::uint64_t done = 0;
        for (std::size_t i = 0; i < told.size(); ++i)
        {
            if (told[i] == asked && (i == 0 || told[i - 1] == asked))
                return false;
            if (told[i] != asked && std::exchange(done, told[i].done) > told[i].done)
                return false;
        }
        return true;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (iid != IidOf<ICopyAmounts>())
            return LocalObject<ICopyProgress>::QueryInterface(iid, out);
        *out = isGiven ? static_cast<ICopyAmounts*>(&amounts_) : nullptr;
        if (SUCCEEDED(found) && isGiven)
            AddRef();
        return found;
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        told.push_back(asked);
        *keepGoing = last == 0 || Questions() < last ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

private:
    class Part final : public ICopyAmounts
    {
    public:
        explicit Part(FakeAmounts& whole) : whole_(whole) {}

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
        {
            return whole_.QueryInterface(iid, out);
        }
        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return whole_.AddRef();
        }
        ULONG STDMETHODCALLTYPE Release() override
        {
            return whole_.Release();
        }
        HRESULT STDMETHODCALLTYPE Report(std::uint64_t done, std::uint64_t total) override
        {
            whole_.told.push_back({done, total});
            return whole_.status;
        }

    private:
        FakeAmounts& whole_;
    };

    Part amounts_{*this};
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
