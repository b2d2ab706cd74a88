#include "support/process.h"

#include "support/environmentvalue.h"

#include <windows.h>

#include <forward_list>
#include <stdexcept>

namespace tarnwell::test
{

namespace
{

class OwnHandle
{
public:
    explicit OwnHandle(HANDLE handle) : handle_(handle)
    {
        if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
            throw std::runtime_error("error " + std::to_string(GetLastError()));
    }
    OwnHandle(const OwnHandle&) = delete;
    OwnHandle& operator=(const OwnHandle&) = delete;
    ~OwnHandle()
    {
        CloseHandle(handle_);
    }
    HANDLE Get() const
    {
        return handle_;
    }

private:
    HANDLE handle_;
};

// Inheritable, as the program's standard streams have to be.
HANDLE OpenFor(const std::filesystem::path& file, DWORD access, DWORD disposition)
{
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                       disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// As the C runtime takes a command line apart: backslashes count only before a quote.
std::wstring Quoted(const std::wstring& argument)
{
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument)
    {
        if (unit == L'"')
            result.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        result += unit;
    }
    return result.append(backslashes, L'\\') + L"\"";
}

std::wstring CommandLineOf(const std::filesystem::path& program, const ProcessCall& call)
{
    std::wstring line = Quoted(program.wstring());
    for (const std::u16string& argument : call.arguments)
        line += L" " + Quoted(std::wstring(argument.begin(), argument.end()));
    return line;
}

// Wine's loader now and then ends on a busy machine before the program has begun, which is told as
// an internal error. Nothing has been run then.
PROCESS_INFORMATION Start(std::wstring& line, const wchar_t* folder, STARTUPINFOW& startup)
{
    PROCESS_INFORMATION process{};
    for (int tries = 3; tries > 0; --tries)
    {
        if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder,
                           &startup, &process))
            return process;
        if (GetLastError() != ERROR_INTERNAL_ERROR)
            break;
    }
    throw std::runtime_error("CreateProcessW: error " + std::to_string(GetLastError()));
}

} // namespace

int RunProcess(const std::filesystem::path& program, const ProcessCall& call,
               const ProcessFiles& files)
{
    const OwnHandle input(OpenFor(files.input, GENERIC_READ, OPEN_EXISTING));
    const OwnHandle output(OpenFor(files.output, GENERIC_WRITE, CREATE_NEW));
    const OwnHandle errors(OpenFor(files.errors, GENERIC_WRITE, CREATE_NEW));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.Get();
    startup.hStdOutput = output.Get();
    startup.hStdError = errors.Get();
    std::wstring line = CommandLineOf(program, call);
    // The child takes its variables from this process: no test here runs beside another one.
    // The last one set is put back first.
    std::forward_list<EnvironmentValue> variables;
    for (const auto& [name, value] : call.environment)
        variables.emplace_front(name.c_str(), value.empty() ? nullptr : value.c_str());
    const wchar_t* const folder = call.folder.empty() ? nullptr : call.folder.c_str();
    const PROCESS_INFORMATION process = Start(line, folder, startup);
    const OwnHandle thread(process.hThread);
    const OwnHandle child(process.hProcess);
    WaitForSingleObject(child.Get(), INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(child.Get(), &exitCode);
    return static_cast<int>(exitCode);
}

std::filesystem::path ThisProgram()
{
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return file;
}

std::string ProgramName(const std::string& name)
{
    return name + ".exe";
}

std::string ModuleName()
{
    return "tarnwell.dll";
}

} // namespace tarnwell::test
