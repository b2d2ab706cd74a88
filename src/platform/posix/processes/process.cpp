// CreateProcessW and what its handles are for.
#include "platform/crash.h"
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/handleobject.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/messages/systemtext.h"
#include "platform/posix/processes/childprocess.h"
#include "platform/posix/processes/commandline.h"
#include "platform/posix/processes/environment.h"
#include "platform/posix/processes/spawnsetup.h"
#include "platform/posix/processes/start.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <new>
#include <unistd.h>

namespace tarnwell::posix
{
namespace
{

// The process, and likewise its first thread, which ends with it.
class ProcessHandle : public HandleObject
{
public:
    explicit ProcessHandle(std::shared_ptr<ChildProcess> child) : child_(std::move(child)) {}

    int Wait() override
    {
        return child_->Wait();
    }
    int WaitFor(int milliseconds) override
    {
        return child_->WaitFor(milliseconds);
    }
    ChildProcess& Child()
    {
        return *child_;
    }

private:
    std::shared_ptr<ChildProcess> child_;
};

StandardDescriptors StandardOf(const STARTUPINFOW& startup)
{
    return {DescriptorOf(startup.hStdInput), DescriptorOf(startup.hStdOutput),
            DescriptorOf(startup.hStdError)};
}

// Nothing, with the last error set, if one of them stands for no bytes.
std::optional<std::vector<std::string>> ArgumentsOf(LPCWSTR commandLine)
{
    std::vector<std::string> arguments;
    for (const std::u16string& part : SplitCommandLine(commandLine))
    {
        std::optional<std::string> bytes = EncodeName(part);
        if (!bytes)
        {
            Fail(ERROR_INVALID_NAME);
            return std::nullopt;
        }
        arguments.push_back(std::move(*bytes));
    }
    return arguments;
}

// Opened ahead of the start, so that a missing folder is never taken for a missing program.
// Nothing, with the last error set, if it can't be.
FileDescriptor OpenFolder(LPCWSTR path)
{
    const std::optional<std::string> native = NativePath(path);
    FileDescriptor folder;
    if (native)
        folder = Open(native->c_str(), O_PATH | O_DIRECTORY);
    if (native && !folder)
        FailWithErrno();
    const DWORD error = GetLastError();
    if (!folder && (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND))
        Fail(ERROR_DIRECTORY);
    return folder;
}

BOOL Start(const StartRequest& request, ChildProcess& child)
{
    SpawnSetup setup(StandardOf(*request.startup));
    if (request.group == StartRequest::ownGroup)
        setup.LeadGroup();
    else if (request.group != 0)
        setup.JoinGroup(request.group);
    if (request.folder != nullptr)
    {
        FileDescriptor folder = OpenFolder(request.folder);
        if (!folder)
            return 0;
        setup.EnterFolder(std::move(folder));
    }
    std::optional<std::vector<std::string>> arguments = ArgumentsOf(request.commandLine);
    if (!arguments)
        return 0;
    std::vector<char*> environment;
    std::optional<std::vector<std::string>> entries;
    if (request.environment != nullptr)
    {
        entries = EncodeEnvironment(request.environment);
        if (!entries)
            return Fail(ERROR_INVALID_NAME);
        environment = Pointers(*entries);
    }

    pid_t id = -1;
    const int number = setup.Spawn(&id, *arguments, entries ? environment.data() : environ);
    if (number != 0)
        return Fail(ErrorFromErrno(number));
    child.Started(id);
    return 1;
}

BOOL StartWithHandles(const StartRequest& request, PROCESS_INFORMATION* information)
{
    // Made first: nothing may fail behind the start.
    const auto child = request.child ? request.child : std::make_shared<ChildProcess>();
    auto process = std::make_unique<ProcessHandle>(child);
    auto thread = std::make_unique<ProcessHandle>(child);
    if (!Start(request, *child))
        return 0;
    const DWORD id = child->Id();
    *information = {process.release(), thread.release(), id, id};
    return 1;
}

} // namespace

BOOL StartProcess(const StartRequest& request, PROCESS_INFORMATION* information)
{
    try
    {
        return StartWithHandles(request, information);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}

} // namespace tarnwell::posix

using namespace tarnwell::posix;

namespace tarnwell
{

std::optional<std::u16string> CrashOf(HANDLE process)
{
    auto* const handle = dynamic_cast<ProcessHandle*>(ObjectOf(process));
    const int signal = handle == nullptr ? 0 : handle->Child().EndingSignal();
    if (signal == 0)
        return std::nullopt;
    return posix::SignalText(signal);
}

} // namespace tarnwell

extern "C" BOOL CreateProcessW(LPCWSTR application, LPWSTR commandLine,
                               SECURITY_ATTRIBUTES* process, SECURITY_ATTRIBUTES* thread,
                               BOOL inherit, DWORD flags, LPVOID environment, LPCWSTR folder,
                               STARTUPINFOW* startup, PROCESS_INFORMATION* information)
{
    constexpr DWORD supportedStartup = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    if (commandLine == nullptr || startup == nullptr || information == nullptr)
        return Fail(ERROR_INVALID_PARAMETER);
    const bool hasHandles = inherit != 0 && (startup->dwFlags & STARTF_USESTDHANDLES) != 0;
    const bool hasBytes = environment != nullptr && flags == 0;
    if (application != nullptr || process != nullptr || thread != nullptr || !hasHandles ||
        hasBytes || (flags & ~CREATE_UNICODE_ENVIRONMENT) != 0 ||
        (startup->dwFlags & ~supportedStartup) != 0)
        return Fail(ERROR_NOT_SUPPORTED);
    return StartProcess(
        {commandLine, static_cast<LPCWSTR>(environment), folder, startup, 0, nullptr}, information);
}

extern "C" DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds)
{
    const auto fail = [](DWORD error) {
        Fail(error);
        return WAIT_FAILED;
    };
    HandleObject* const object = ObjectOf(handle);
    if (object == nullptr)
        return fail(ERROR_INVALID_HANDLE);
    const int number =
        milliseconds == INFINITE ? object->Wait() : object->WaitFor(static_cast<int>(milliseconds));
    if (number == ETIMEDOUT)
        return WAIT_TIMEOUT;
    return number == 0 ? WAIT_OBJECT_0 : fail(ErrorFromErrno(number));
}

extern "C" BOOL GetExitCodeProcess(HANDLE process, DWORD* code)
{
    auto* const handle = dynamic_cast<ProcessHandle*>(ObjectOf(process));
    if (handle == nullptr)
        return Fail(ERROR_INVALID_HANDLE);
    const std::optional<DWORD> known = handle->Child().ExitCode();
    if (!known)
        return Fail(ERROR_WAIT_NO_CHILDREN);
    *code = *known;
    return 1;
}
