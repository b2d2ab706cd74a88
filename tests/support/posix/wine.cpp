#include "support/wine.h"

namespace tarnwell::test
{

bool IsUnderWine()
{
    return false;
}

} // namespace tarnwell::test
