#include "support/environmentvalue.h"

namespace tarnwell::test
{

EnvironmentValue::EnvironmentValue(const char* name, const char* value)
    : name_(name), before_(Of(name))
{
    Set(value);
}

EnvironmentValue::~EnvironmentValue()
{
    Set(before_ ? before_->c_str() : nullptr);
}

} // namespace tarnwell::test
