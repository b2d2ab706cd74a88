#include "support/components.h"

namespace tarnwell::test
{

Components::Components() = default;

Components::~Components() = default;

} // namespace tarnwell::test
