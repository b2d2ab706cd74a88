#include "platform/posix/dialogs/dialog.h"

#include "platform/posix/dialogs/quietprogram.h"

#include <cstdlib>
#include <string_view>

namespace tarnwell::posix
{
namespace
{

bool IsSet(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != 0;
}

// The text with each of the characters `special` replaced by what stands beside it.
std::string Escaped(const std::string& text, std::string_view special,
                    std::initializer_list<const char*> replacements)
{
    std::string escaped;
    for (const char c : text)
    {
        const std::size_t which = special.find(c);
        if (which == std::string_view::npos)
            escaped += c;
        else
            escaped += replacements.begin()[which];
    }
    return escaped;
}

// Each program has its own idea of what its text may hold: escapes here, markup there.
std::vector<std::string> ZenityArguments(const std::string& question)
{
    return {"zenity", "--question", "--no-markup", "--text=" + Escaped(question, "\\", {"\\\\"})};
}

std::vector<std::string> KdialogArguments(const std::string& question)
{
    const std::string text = Escaped(question, "&<>", {"&amp;", "&lt;", "&gt;"});
    return {"kdialog", "--yesno", "<qt>" + text + "</qt>"};
}

} // namespace

std::optional<bool> AskByDialog(const std::string& question)
{
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY"))
        return std::nullopt;
    for (const auto& argumentsFor : {ZenityArguments, KdialogArguments})
    {
        const ProgramEnd end = RunQuietly(argumentsFor(question));
        // If the host collects the exit code first, nobody is known to have said yes.
        if (end.number == 0)
            return end.exitCode == 0U;
    }
    return std::nullopt;
}

} // namespace tarnwell::posix
