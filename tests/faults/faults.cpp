#include "faults/faults.h"

#include "platform/clientgroup.h"
#include "platform/clients.h"
#include "platform/extendedcopy.h"
#include "platform/icons.h"
#include "platform/newfile.h"
#include "platform/printtarget.h"
#include "platform/texts.h"
#include "platform/username.h"
#include "platform/xml.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace tarnwell::test
{
namespace
{

struct Order
{
    // Any operation if empty.
    std::string operation;
    int call;
    DWORD error;
};

struct State
{
    bool isActive = false;
    std::vector<Order> orders;
    std::string awaited;
    std::function<void()> act;
    std::vector<std::string> trace;
    int failures = 0;

    int Calls(std::string_view operation) const
    {
        return static_cast<int>(std::count(trace.begin(), trace.end(), operation));
    }
};

std::mutex guard;
State state;

bool Meets(const Order& order, std::string_view operation)
{
    if (order.operation.empty())
        return order.call == static_cast<int>(state.trace.size());
    return order.operation == operation && order.call == state.Calls(operation);
}

// Counts a call and sees to what is to be done before it. The error with which it is to fail, if
// it is.
std::optional<DWORD> FaultFor(const char* operation)
{
    std::unique_lock lock(guard);
    if (state.isActive && state.awaited == operation)
    {
        const std::function<void()> act = state.act;
        lock.unlock();
        act();
        lock.lock();
    }
    if (!state.isActive)
        return std::nullopt;
    state.trace.emplace_back(operation);
    for (const Order& order : state.orders)
    {
        if (!Meets(order, operation))
            continue;
        ++state.failures;
        return order.error;
    }
    return std::nullopt;
}

// ---- The ways in which operations fail ----

template <class T> T FailWith(DWORD error, T result)
{
    SetLastError(error);
    return result;
}

HRESULT StatusOf(DWORD error)
{
    constexpr DWORD failureBit = 0x80000000;
    constexpr DWORD fromSystem = 0x80070000;
    return static_cast<HRESULT>((error & failureBit) != 0 ? error : fromSystem | (error & 0xFFFF));
}

// With nothing in the place for the result.
template <class T> HRESULT FailWithStatus(DWORD error, T** out)
{
    *out = nullptr;
    return StatusOf(error);
}

// By this error, as where the file has a name at first: it was made, and can't be opened.
HANDLE FailOnOutputFile(DWORD error, std::u16string& unopened)
{
    if (error == ERROR_SHARING_VIOLATION)
        unopened = u"unopened";
    return FailWith(error, INVALID_HANDLE_VALUE);
}

int FailInShell(DWORD error, SHFILEOPSTRUCTW* operation)
{
    operation->fAnyOperationsAborted = 0;
    return FailWith(error, static_cast<int>(error));
}

} // namespace

Faults::Faults()
{
    const std::lock_guard lock(guard);
    state = {};
    state.isActive = true;
}

Faults::~Faults()
{
    const std::lock_guard lock(guard);
    state = {};
}

void Faults::FailNth(int n, DWORD error)
{
    Fail({}, n, error);
}

void Faults::Fail(std::string_view operation, int n, DWORD error)
{
    const std::lock_guard lock(guard);
    state.orders.push_back({std::string(operation), n, error});
}

void Faults::Before(std::string_view operation, std::function<void()> act)
{
    const std::lock_guard lock(guard);
    state.awaited = operation;
    state.act = std::move(act);
}

int Faults::Failures() const
{
    const std::lock_guard lock(guard);
    return state.failures;
}

int Faults::Calls() const
{
    const std::lock_guard lock(guard);
    return static_cast<int>(state.trace.size());
}

int Faults::Calls(std::string_view operation) const
{
    const std::lock_guard lock(guard);
    return state.Calls(operation);
}

std::vector<std::string> Faults::Trace() const
{
    const std::lock_guard lock(guard);
    return state.trace;
}

} // namespace tarnwell::test

using namespace tarnwell::test;

// `failure` is what a call gives that is to fail with `*error`.
#define FAULT(name, result, failure, parameters, arguments)                                        \
    extern "C" result __real_##name parameters;                                                    \
    extern "C" result __wrap_##name parameters                                                     \
    {                                                                                              \
        if (const std::optional<DWORD> error = FaultFor(#name))                                    \
            return failure;                                                                        \
        return __real_##name arguments;                                                            \
    }
#include "faults/operations.inc"
#undef FAULT
