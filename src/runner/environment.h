// The environment of a client that must not see all of the host's.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell
{

// `block` (texts "NAME=VALUE", each terminated, one more terminator at the end) without the
// entries whose name begins with `prefix`, which is in ASCII capitals and matches any case.
std::u16string WithoutVariables(const char16_t* block, std::u16string_view prefix);

// The same of this process's environment. Empty if there is nothing left, or if the system doesn't
// tell: then the client inherits.
std::u16string OwnEnvironmentWithout(std::u16string_view prefix);

} // namespace tarnwell
