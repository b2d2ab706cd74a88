// Environment variables that are put back.
#pragma once

#include <optional>
#include <string>

namespace tarnwell::test
{

// Sets the variable, or with null takes it away, for as long as it lives.
class EnvironmentValue
{
public:
    EnvironmentValue(const char* name, const char* value);
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;
    ~EnvironmentValue();

    void Set(const char* value) const;

private:
    const char* name_;
    std::optional<std::string> before_;
};

} // namespace tarnwell::test
