#include "support/posix/dialogprogram.h"

#include <cstdlib>

namespace tarnwell::test
{

namespace fs = std::filesystem;

void DialogProgram::AnswerWith(int exitCode, const std::string& name) const
{
    const std::string asked = (folder_.Path() / "asked").string();
    WriteBytes((folder_.Path() / name).u16string(), "#!/bin/sh\nprintf '%s\\n' \"$@\" >" + asked +
                                                        "\nexit " + std::to_string(exitCode) +
                                                        "\n");
    fs::permissions(folder_.Path() / name, fs::perms::owner_all);
}

std::string DialogProgram::Asked() const
{
    const std::u16string asked = folder_ / u"asked";
    return fs::exists(fs::path(asked)) ? ReadBytes(asked) : std::string();
}

void DialogProgram::UseHere(bool display) const
{
    setenv("PATH", folder_.Path().c_str(), 1);
    unsetenv("WAYLAND_DISPLAY");
    if (display)
        setenv("DISPLAY", ":99", 1);
    else
        unsetenv("DISPLAY");
}

} // namespace tarnwell::test
