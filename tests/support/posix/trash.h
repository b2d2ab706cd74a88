// A user's trash for the time of a test, beside the system's temporary files.
#pragma once

#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <optional>
#include <string>

namespace tarnwell::test
{

class Trash
{
public:
    // What is in it under this name; the name that an item had, as a rule.
    std::filesystem::path operator/(const std::string& name) const
    {
        return Root() / "files" / name;
    }
    // Where the thing of this name came from; nothing if there is none.
    std::optional<std::filesystem::path> OriginOf(const std::string& name) const;
    std::size_t Count() const;

    // Puts it back there, as the desktop does.
    void Restore(const std::string& name) const;

private:
    std::filesystem::path Root() const
    {
        return home_.Path() / ".local" / "share" / "Trash";
    }

    TempFolder home_;
    EnvironmentValue variables_[3] = {{"HOME", home_.Path().c_str()},
                                      {"XDG_DATA_HOME", nullptr},
                                      // The user's desktop has no say.
                                      {"DBUS_SESSION_BUS_ADDRESS", nullptr}};
};

} // namespace tarnwell::test
