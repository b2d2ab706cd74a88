// A client that only prints, as some of what is measured no real client prints within hours.
#pragma once

#include <string>

namespace tarnwell::bench
{

// Puts a client `name` in front of all others on the PATH that prints the file at `output`,
// whatever it is asked. It stands in `folder`, which is made.
void UseClientThatPrints(const std::string& name, const std::string& output,
                         const std::string& folder);

} // namespace tarnwell::bench
