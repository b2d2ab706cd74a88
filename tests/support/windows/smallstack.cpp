#include "support/smallstack.h"

#include <stdexcept>
#include <windows.h>

namespace tarnwell::test
{
namespace
{

DWORD WINAPI Run(void* call)
{
    (*static_cast<const std::function<void()>*>(call))();
    return 0;
}

} // namespace

void RunOnSmallStack(const std::function<void()>& call)
{
    auto* const argument = const_cast<std::function<void()>*>(&call);
    const HANDLE thread = CreateThread(nullptr, 256 * 1024, Run, argument,
                                       STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr)
        throw std::runtime_error("no thread");
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

} // namespace tarnwell::test
