#include "program.h"

#include "hostobject.h"
#include "output.h"
#include "system.h"
#include "text16.h"
#include "usage.h"

namespace tarnwell::host
{

namespace
{

std::filesystem::path ModuleFile(const CommandLine& line)
{
    if (!line.module)
        return Module::DefaultFile();
    return FilePath(*line.module);
}

int RunCommand(const CommandLine& line)
{
    const Command& command = CommandOf(line);
    PrepareProcess(line.language.value_or(u""));
    const Module module(ModuleFile(line));
    const int exitCode = command.run({line, module, MakeHostObject(line)});
    FlushOutput();
    return exitCode;
}

// Failures that are the program's own have no text of the module, but the same form.
int Fail(const Failure& failure, const CommandLine& line)
{
    PrintFailure(failure, line.json);
    return exitFailed;
}

int FailUsage(const std::string& text, const CommandLine& line)
{
    if (line.json)
        PrintFailure({E_INVALIDARG, FromUtf8(text)}, true);
    else
        PrintError(u"tarnwell-host: " + FromUtf8(text) + u"\nTry \"tarnwell-host --help\".\n");
    return exitUsage;
}

int RunLine(const CommandLine& line)
{
    try
    {
        if (!line.wrong.empty())
            return FailUsage(line.wrong, line);
        if (!line.help)
            return RunCommand(line);
        Print(UsageText());
        FlushOutput();
        return exitDone;
    }
    catch (const UsageError& error)
    {
        return FailUsage(error.what(), line);
    }
    catch (const Failure& failure)
    {
        return Fail(failure, line);
    }
    catch (const LoadFailure& failure)
    {
        return Fail({E_FAIL, FromUtf8(failure.what())}, line);
    }
    catch (const std::bad_alloc&)
    {
        throw;
    }
    // Of the standard library's file system, for one.
    catch (const std::exception& failure)
    {
        return Fail({E_FAIL, FromUtf8(failure.what())}, line);
    }
}

// Needs no memory.
int FailWithoutMemory(bool json)
{
    WriteErrors(json ? "{\"status\":\"0x8007000E\",\"message\":\"Out of memory.\"}\n"
                     : "Out of memory.\n0x8007000E\n");
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
        return RunLine(line);
    }
    catch (...)
    {
        return FailWithoutMemory(json);
    }
}

} // namespace tarnwell::host
