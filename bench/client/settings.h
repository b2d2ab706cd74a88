// The settings that the clients find.
#pragma once

#include <string>

namespace tarnwell::bench
{

// Lets this process's clients see no settings but those in the new folder `home`, in place of the
// user's.
void UseOwnSettings(const std::string& home);

} // namespace tarnwell::bench
