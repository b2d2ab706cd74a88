// A strict reader of what the host prints with --json.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

struct JsonMember
{
    std::string name;
    // Texts without their quotes and escapes, in UTF-8; lone surrogates stay as \u escapes.
    // Numbers, true, false, null and nested objects as they stand.
    std::string value;
    bool isText;

    friend bool operator==(const JsonMember&, const JsonMember&) = default;
};

class JsonLine
{
public:
    // Throws if `line` isn't exactly one JSON object in valid UTF-8.
    explicit JsonLine(std::string_view line);

    std::vector<std::string> Names() const;
    bool Has(std::string_view name) const;
    // The value, as text or not; both throw if there is no such member, or of the other kind.
    std::string Text(std::string_view name) const;
    std::string Raw(std::string_view name) const;

private:
    const JsonMember& Find(std::string_view name) const;

    std::vector<JsonMember> members_;
};

// One for each line.
std::vector<JsonLine> JsonLinesOf(std::string_view output);

} // namespace tarnwell::test
