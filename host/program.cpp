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

int RunLine(const CommandLine& line)
{
    try
    {
        return RunCommand(line);
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
        return Fail({E_OUTOFMEMORY, u"Out of memory."}, line);
    }
}

} // namespace

int RunProgram(const std::vector<std::u16string>& arguments)
{
    try
    {
        const CommandLine line = ParseArguments(arguments);
        if (!line.help)
            return RunLine(line);
        Print(UsageText());
        FlushOutput();
        return exitDone;
    }
    catch (const UsageError& error)
    {
        PrintError(u"tarnwell-host: " + FromUtf8(error.what()) +
                   u"\nTry \"tarnwell-host --help\".\n");
        return exitUsage;
    }
}

} // namespace tarnwell::host
