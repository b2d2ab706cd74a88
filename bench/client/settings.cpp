#include "client/settings.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace tarnwell::bench
{

void UseOwnSettings(const std::string& home)
{
    std::vector<std::string> hidden{"XDG_CONFIG_HOME"};
    for (char** entry = environ; *entry != nullptr; ++entry)
    {
        const std::string_view text = *entry;
        if (text.starts_with("GIT_") || text.starts_with("HG"))
            hidden.emplace_back(text.substr(0, text.find('=')));
    }
    for (const std::string& name : hidden)
        unsetenv(name.c_str());
    std::filesystem::create_directory(home);
    setenv("HOME", home.c_str(), 1);
    // What the module sets for its clients.
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("LANGUAGE", "en", 1);
    setenv("HGPLAIN", "1", 1);
    setenv("HGPLAINEXCEPT", "", 1);
    setenv("HGENCODING", "utf-8", 1);
}

} // namespace tarnwell::bench
