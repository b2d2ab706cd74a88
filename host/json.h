// JSON, one object a line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwell::host
{

// The quoted form of `text`. All control characters are escaped, even those that JSON allows, as a
// terminal may obey them. Lone surrogates, which stand in names that aren't valid text, become \u
// escapes, so that the output is always valid UTF-8.
std::u16string JsonText(std::u16string_view text);

// Members appear in the order in which they were added.
class JsonObject
{
public:
    JsonObject& Text(std::u16string_view name, std::u16string_view value);
    JsonObject& Number(std::u16string_view name, std::uint64_t value);
    JsonObject& Boolean(std::u16string_view name, bool value);
    JsonObject& Null(std::u16string_view name);
    JsonObject& Object(std::u16string_view name, const JsonObject& value);

    bool Empty() const;
    std::u16string Str() const;
    // With a line feed.
    std::u16string Line() const;

private:
    JsonObject& Member(std::u16string_view name, std::u16string_view value);

    std::u16string members_;
};

} // namespace tarnwell::host
