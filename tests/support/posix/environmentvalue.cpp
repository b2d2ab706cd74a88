#include "support/environmentvalue.h"

#include <cstdlib>

namespace tarnwell::test
{

void EnvironmentValue::Set(const char* value) const
{
    if (value == nullptr)
        unsetenv(name_);
    else
        setenv(name_, value, 1);
}

std::optional<std::string> EnvironmentValue::Of(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

const char* const temporaryFolderVariable = "TMPDIR";

} // namespace tarnwell::test
