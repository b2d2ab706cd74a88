#include "program.h"

#include "completion.h"
#include "hostobject.h"
#include "manual.h"
#include "output.h"
#include "system.h"
#include "text16.h"
#include "usage.h"

#include <algorithm>
#include <optional>

namespace tarnwell::host
{

namespace
{

std::filesystem::path ModuleFile(const CommandLine& line)
{
    if (!line.module)
        return client::Library::FindFile();
    const std::filesystem::path file = FilePath(*line.module);
    std::error_code error;
    // A bare name would be looked for in the system's folders.
    if (!std::filesystem::exists(file, error))
        throw Failure{E_FAIL, Say(Word::ModuleMissing, {*line.module})};
    return std::filesystem::absolute(file);
}

// For help: no wider than can be read with ease, and no narrower than the words need.
std::size_t WidthForReading()
{
    const std::size_t width = OutputWidth();
    return width == 0 ? 80 : std::clamp<std::size_t>(width, 60, 100);
}

// What the line asks about the program, if anything.
std::optional<std::u16string> TextAskedFor(const CommandLine& line)
{
    if (line.version)
        return VersionText();
    if (line.man)
        return ManualPage();
    if (line.completion)
        return BashCompletion();
    if (line.help)
        return HelpText(line, WidthForReading());
    return std::nullopt;
}

int RunCommand(const CommandLine& line)
{
    const Command& command = CommandOf(line);
    if (command.run == nullptr)
    {
        Print(HelpText(line, WidthForReading()));
        return exitDone;
    }
    const std::filesystem::path file = ModuleFile(line);
    return command.run({line, file, client::Module(file), MakeHostObject(line)});
}

// Failures that are the program's own have no text of the module, but the same form.
int Fail(const Failure& failure, const CommandLine& line)
{
    PrintFailure(failure, line.json);
    return exitFailed;
}

int FailUsage(const Saying& saying, const CommandLine& line)
{
    const std::u16string text = Say(saying);
    if (line.json)
        PrintFailure({E_INVALIDARG, text}, true);
    else
        PrintError(u"tarnwell-host: " + text + u"\n" + Say(Word::TryHelp) + u"\n");
    return exitUsage;
}

int RunLine(const CommandLine& line)
{
    try
    {
        if (line.wrong)
            return FailUsage(*line.wrong, line);
        int exitCode = exitDone;
        if (const auto text = TextAskedFor(line))
            Print(*text);
        else
            exitCode = RunCommand(line);
        FlushOutput();
        return exitCode;
    }
    catch (const UsageError& error)
    {
        return FailUsage(error.text, line);
    }
    catch (const Failure& failure)
    {
        return Fail(failure, line);
    }
    catch (const client::LoadFailure& failure)
    {
        return Fail({E_FAIL, Say(Word::ModuleNotLoaded, {FromUtf8(failure.what())})}, line);
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    // Of the standard library's file system, for one.
    catch (const std::exception& failure)
    {
        return Fail({E_FAIL, Say(Word::SystemFailed, {FromUtf8(failure.what())})}, line);
    }
}

// Needs no memory.
int FailWithoutMemory(bool json)
{
    for (const std::string_view part :
         {std::string_view(json ? "{\"status\":\"0x8007000E\",\"message\":\"" : ""),
          Utf8Of(Word::OutOfMemory), std::string_view(json ? "\"}\n" : "\n0x8007000E\n")})
        WriteErrors(part);
    return exitFailed;
}

} // namespace

int RunProgram(const std::function<std::vector<std::u16string>()>& arguments) noexcept
{
    bool json = false;
    try
    {
        const CommandLine line = ParseArguments(arguments());
        json = line.json;
        PrepareProcess(line.language.value_or(u""));
        ChooseLanguage(LanguageOfTexts());
        return RunLine(line);
    }
    catch (...)
    {
        return FailWithoutMemory(json);
    }
}

} // namespace tarnwell::host
