// The settings that the clients find.
#pragma once

#include <string>

namespace tarnwell::bench
{

// Lets this process's clients see no settings but those in the new folder `home`, in place of the
// user's, and the variables that the module sets: so both ways the client is the same.
void UseOwnSettings(const std::string& home);

} // namespace tarnwell::bench
