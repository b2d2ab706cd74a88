// The environment of a client, where it isn't just the host's.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarnwell
{

// `block` (texts "NAME=VALUE", each terminated, one more terminator at the end) without the
// entries whose name begins with `prefix`, which is in ASCII capitals and matches any case; an
// empty one matches none. Then the variables `set`, in the place of those of these very names.
std::u16string ChangedEnvironment(const char16_t* block, std::u16string_view prefix,
                                  std::span<const char16_t* const> set);

// This process's environment, without the variables whose names begin with `hiddenNames` if that
// isn't null, with what every client is given, and with `own` over that. Empty if nothing is to be
// changed or nothing is left, or if the system doesn't tell: then the client inherits.
std::u16string ClientEnvironment(const char16_t* hiddenNames,
                                 std::span<const char16_t* const> own = {});

} // namespace tarnwell
