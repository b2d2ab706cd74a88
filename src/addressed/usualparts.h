// Taking an address apart without a pattern, where it has the shape that nearly all have. Each of
// these tells what its class's pattern tells, or nothing.
#pragma once

#include <optional>
#include <string_view>

namespace tarnwell
{

// What an address is made of, in the address itself.
struct UriViews
{
    std::u16string_view scheme;
    std::u16string_view user = {};
    std::u16string_view password = {};
    std::u16string_view host = {};
    std::u16string_view port = {}; // its digits
    std::u16string_view path = {};
};

// SCHEME://PATH, where the path is all that follows. Nothing for a text that may be no address: one
// without a scheme, or with a terminator or a line end in it.
std::optional<UriViews> SchemeAndPath(std::u16string_view text);

// SCHEME://[[USER[:PASSWORD]@]HOST[:PORT]/]PATH, where the authority has at most one "@".
std::optional<UriViews> UsualParts(std::u16string_view text);

} // namespace tarnwell
