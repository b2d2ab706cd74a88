// Text between the logic and the boundary.
#pragma once

#include "platform/wide.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwell
{

// A copy of the host's text up to its terminator; empty for null.
std::u16string FromHost(const OLECHAR* text);

// A new text for the host, cut at the first terminator, and never null on success.
// E_OUTOFMEMORY if it can't be allocated.
HRESULT ToHost(std::u16string_view text, BSTR* out);

// The same for a text that has no terminator, as for a name that the system gave. It isn't looked
// for.
HRESULT ToHostWhole(std::u16string_view text, BSTR* out);

std::u16string Decimal(std::uint64_t number);

// The whole number at the start of `text`: white space in front and a sign are allowed, reading
// stops at the first other unit, and it saturates at 32 bits. 0 without a digit.
std::int32_t LeadingNumber(std::u16string_view text);

constexpr bool IsTrue(VARIANT_BOOL value)
{
    return value != VARIANT_FALSE;
}

// Whether these are the digits of ids alone: 0 to 9 and a to f. By a look each, as a listing has
// tens of thousands of ids.
bool IsHexadecimal(std::string_view text);

} // namespace tarnwell
