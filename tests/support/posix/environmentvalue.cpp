#include "support/posix/environmentvalue.h"

#include <cstdlib>

namespace tarnwell::test
{

EnvironmentValue::EnvironmentValue(const char* name, const char* value) : name_(name)
{
    if (const char* const before = std::getenv(name))
        before_ = before;
    Set(value);
}

EnvironmentValue::~EnvironmentValue()
{
    Set(before_ ? before_->c_str() : nullptr);
}

void EnvironmentValue::Set(const char* value) const
{
    if (value == nullptr)
        unsetenv(name_);
    else
        setenv(name_, value, 1);
}

} // namespace tarnwell::test
