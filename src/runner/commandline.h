// Values on a client's command line.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell
{

// `value` between double quotes, so that it is one argument whatever is in it: a name in somebody
// else's repository, or one that a server lists, must not add an option. A value that holds no
// quote and ends in no backslash stands there as it is. Otherwise quotes are written \", and the
// backslashes before one, and those at the end, are doubled, as the C runtime reads them.
std::u16string Quoted(std::u16string_view value);

// An option and its value, with a blank behind them.
std::u16string Option(std::u16string_view name, std::u16string_view value);

} // namespace tarnwell
