// All that an item tells of itself.
#pragma once

#include "errors.h"
#include "json.h"

#include <tarnwell/constants.h>
#include <tarnwell/items.h>

#include <optional>
#include <utility>

namespace tarnwell::host
{

// One fact: a value, or the reason why there is none, or neither where the item has no such fact.
template <class T> struct Fact
{
    std::optional<T> value;
    std::u16string error;
    // The file system has no such fact of anything.
    bool isNotOffered = false;
};

// A value that there is for certain.
template <class T> Fact<T> Known(T value)
{
    return {std::move(value), {}, false};
}

// The outcome of `read`, with a failure caught.
template <class F> auto FactOf(F&& read) -> Fact<decltype(read())>
{
    try
    {
        return {read(), {}, false};
    }
    catch (const Failure& failure)
    {
        return {std::nullopt, failure.message, failure.status == E_NOTIMPL};
    }
}

// What only an item of a revision has.
struct RecordedFacts
{
    TreeItemKind kind;
    bool executable;
    std::u16string contentId;
    std::u16string revision;
};

struct ItemFacts
{
    Fact<std::u16string> name;
    Fact<std::u16string> path;
    Fact<std::u16string> parent;
    bool folder = false;
    Fact<std::uint32_t> attributes;
    // In bytes; folders have none.
    Fact<std::uint64_t> size;
    // 100-nanosecond intervals since 1601.
    Fact<std::uint64_t> modified;
    // Local items have none of these two.
    Fact<std::u16string> comparableName;
    Fact<std::u16string> comparableUrl;
    std::optional<RecordedFacts> recorded;
};

Fact<std::u16string> NameOf(const ComPtr<IFileSystemItem>& item);

ItemFacts FactsOf(const ComPtr<IFileSystemItem>& item);

JsonObject ToJson(const ItemFacts& facts);

// Adds facts to `object`, and the reasons for missing ones to `errors`, under the same name.
class FactWriter
{
public:
    void Text(std::u16string_view name, const Fact<std::u16string>& fact);
    void Number(std::u16string_view name, const Fact<std::uint64_t>& fact);
    // As ISO 8601; a time of 0 stands for an unknown one and is null.
    void Time(std::u16string_view name, const Fact<std::uint64_t>& fact);

    // Ends with "errors" if there are any.
    JsonObject Finish();

    JsonObject object;

private:
    void Missing(std::u16string_view name, const std::u16string& error);

    JsonObject errors_;
};

} // namespace tarnwell::host
