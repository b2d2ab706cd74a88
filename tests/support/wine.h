// Wine stands in for Windows where there is none. It has gaps of its own; a case that meets one
// is skipped by name.
#pragma once

namespace tarnwell::test
{

bool IsUnderWine();

} // namespace tarnwell::test
