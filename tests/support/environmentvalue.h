// Environment variables that are put back.
#pragma once

#include <optional>
#include <string>

namespace tarnwell::test
{

// Sets the variable, or with null takes it away, for as long as it lives. Texts are UTF-8.
class EnvironmentValue
{
public:
    EnvironmentValue(const char* name, const char* value);
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;
    ~EnvironmentValue();

    void Set(const char* value) const;

    // Nothing if there is no such variable.
    static std::optional<std::string> Of(const char* name);

private:
    const char* name_;
    std::optional<std::string> before_;
};

// The variable that names the folder for temporary files.
extern const char* const temporaryFolderVariable;

} // namespace tarnwell::test
