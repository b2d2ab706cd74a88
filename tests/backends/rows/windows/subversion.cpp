#include "backends/rows/subversion.h"

namespace tarnwell::test
{

// No server of Subversion's runs here, and the client's settings are those of another system.
std::vector<MadeFailure> SubversionFailuresHere()
{
    return {};
}

} // namespace tarnwell::test
