#include "support/ordinaryuser.h"

namespace tarnwell::test
{

// What is tested here is refused to everybody.
OrdinaryUser::OrdinaryUser() = default;

OrdinaryUser::~OrdinaryUser() = default;

void OrdinaryUser::TakeOver(const TempFolder&) {}

} // namespace tarnwell::test
