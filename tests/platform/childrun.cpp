#include "platform/childrun.h"

#include "platform/wide.h"

#include <stdexcept>
#include <thread>

namespace tarnwell::test
{
namespace
{

Pipe NewPipe()
{
    HANDLE read = INVALID_HANDLE_VALUE;
    HANDLE write = INVALID_HANDLE_VALUE;
    if (!CreatePipe(&read, &write, nullptr, 10240))
        throw std::runtime_error("no pipe");
    return {OsHandle(read), OsHandle(write)};
}

// The other end never is.
void Pass(const OsHandle& handle)
{
    if (!SetHandleInformation(handle.Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT))
        throw std::runtime_error("no inheritable handle");
}

WCHAR* Writable(std::u16string& text)
{
    return Wide(text.data());
}

} // namespace

std::u16string Quoted(const std::u16string& argument)
{
    std::u16string quoted = u"\"";
    std::size_t backslashes = 0;
    for (const char16_t unit : argument)
    {
        // Those before a quote count double, and the quote needs one of its own.
        if (unit == u'"')
            quoted.append(backslashes + 1, u'\\');
        backslashes = unit == u'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    return quoted.append(backslashes, u'\\') + u'"';
}

std::u16string ChildCommand(const std::vector<std::u16string>& arguments)
{
    std::u16string line = u'"' + ChildProgram().u16string() + u'"';
    for (const std::u16string& argument : arguments)
        line += u' ' + Quoted(argument);
    return line;
}

std::vector<std::string> Texts(const std::string& printed)
{
    std::vector<std::string> texts;
    for (std::size_t start = 0; start < printed.size(); start += texts.back().size() + 1)
        texts.emplace_back(printed.c_str() + start);
    return texts;
}

Pipe PipeToChild()
{
    Pipe pipe = NewPipe();
    Pass(pipe.read);
    return pipe;
}

Pipe PipeFromChild()
{
    Pipe pipe = NewPipe();
    Pass(pipe.write);
    return pipe;
}

std::string ReadPipe(const OsHandle& pipe)
{
    std::string bytes;
    for (;;)
    {
        char block[4096];
        DWORD count = 0;
        ReadFile(pipe.Get(), block, sizeof block, &count, nullptr);
        if (count == 0)
            return bytes;
        bytes.append(block, count);
    }
}

Child::Child(std::u16string commandLine, const StartOptions& options)
{
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    startup.hStdInput = inputPipe_.read.Get();
    startup.hStdOutput = outputPipe_.write.Get();
    startup.hStdError = errorPipe_.write.Get();
    std::u16string environment = options.environment.value_or(u"");
    PROCESS_INFORMATION information = {};
    const bool isStarted =
        CreateProcessW(nullptr, Writable(commandLine), nullptr, nullptr, 1,
                       options.environment ? CREATE_UNICODE_ENVIRONMENT : 0,
                       options.environment ? environment.data() : nullptr,
                       options.folder ? Wide(*options.folder) : nullptr, &startup, &information);
    startError_ = isStarted ? ERROR_SUCCESS : GetLastError();
    if (isStarted)
    {
        process_ = OsHandle(information.hProcess);
        thread_ = OsHandle(information.hThread);
    }
    inputPipe_.read.Close();
    outputPipe_.write.Close();
    errorPipe_.write.Close();
}

void Child::CloseInput()
{
    inputPipe_.write.Close();
}

void Child::Collect()
{
    std::thread errorReader([&] { errorText_ = ReadPipe(errorPipe_.read); });
    output_ = ReadPipe(outputPipe_.read);
    errorReader.join();
}

std::optional<DWORD> Child::WaitForExitCode() const
{
    DWORD code = 0;
    const bool hasEnded = WaitForSingleObject(process_.Get(), INFINITE) == WAIT_OBJECT_0;
    const bool isKnown = hasEnded && GetExitCodeProcess(process_.Get(), &code);
    return isKnown ? std::optional(code) : std::nullopt;
}

Ended RunLine(const std::u16string& commandLine, const StartOptions& options)
{
    Child child(commandLine, options);
    if (child.StartError() != ERROR_SUCCESS)
        return {child.StartError(), std::nullopt, {}, {}};
    child.CloseInput();
    child.Collect();
    return {ERROR_SUCCESS, child.WaitForExitCode(), child.Output(), child.ErrorText()};
}

Ended RunChild(const std::vector<std::u16string>& arguments, const StartOptions& options)
{
    return RunLine(ChildCommand(arguments), options);
}

} // namespace tarnwell::test
