#include "e2e/hostrun.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::test
{

namespace
{

bool NamesLocale(const std::pair<std::string, std::string>& variable)
{
    return variable.first == "LANG" || variable.first.starts_with("LC_");
}

} // namespace

HostRun RunHost(const HostCall& call)
{
    // Whoever runs the tests may read another language.
    HostCall english = call;
    english.environment = {{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "C.UTF-8"}};
    // With a folder of locales the C library loses some memory (leaks.supp). To find out that it
    // was there takes longer than most runs, so that only those have the folder that need a locale.
    if (std::ranges::none_of(call.environment, NamesLocale))
        english.environment.emplace_back("LOCPATH", "");
    english.environment.insert(english.environment.end(), call.environment.begin(),
                               call.environment.end());
    return RunProcess(HostProgram(), english);
}

HostRun RunHost(const std::vector<std::u16string>& arguments)
{
    return RunHost(HostCall{arguments, {}, {}, {}});
}

HostRun RunPrescribed(HostCall call)
{
    call.arguments.insert(call.arguments.begin(), u"--prescribed");
    return RunHost(call);
}

HostRun RunPrescribed(const std::vector<std::u16string>& arguments)
{
    return RunPrescribed(HostCall{arguments, {}, {}, {}});
}

std::filesystem::path HostProgram()
{
    return ThisProgram().parent_path() / ProgramName("tarnwell-host");
}

std::filesystem::path ModuleFile()
{
    return ThisProgram().parent_path() / ModuleName();
}

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty())
    {
        const std::size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::string Utf8(std::u16string_view text)
{
    return EncodeName(text).value();
}

} // namespace tarnwell::test
