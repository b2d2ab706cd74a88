#include "platform/posix/systemcalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <dirent.h>
#include <fcntl.h>
#include <optional>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <thread>
#include <type_traits>
#include <unistd.h>
#include <vector>

namespace tarnwell::test
{
namespace
{

struct Order
{
    std::string call;
    int n;
    // One of the two.
    int number;
    std::function<void()> what;
    bool isDone = false;
};

struct State
{
    std::thread::id thread;
    std::vector<Order> orders;
    std::vector<std::string> made;
    std::string path;
    // What an order does makes calls of its own.
    bool isBusy = false;
};

std::optional<State> state;

int CountOf(std::string_view call)
{
    return static_cast<int>(std::count(state->made.begin(), state->made.end(), call));
}

// 0, or the errno with which the call fails.
int FaultFor(const char* call, const char* path)
{
    if (!state || state->isBusy || state->thread != std::this_thread::get_id())
        return 0;
    state->isBusy = true;
    state->made.emplace_back(call);
    state->path = path == nullptr ? "" : path;
    int number = 0;
    for (Order& order : state->orders)
    {
        if (order.isDone || order.call != call || order.n != CountOf(call))
            continue;
        order.isDone = true;
        number = order.number;
        if (order.what)
            order.what();
    }
    state->isBusy = false;
    return number;
}

const char* FirstText(const char* found, const char* argument)
{
    return found != nullptr ? found : argument;
}

template <class T> const char* FirstText(const char* found, T)
{
    return found;
}

template <class... Arguments> const char* PathAmong(Arguments... arguments)
{
    const char* found = nullptr;
    ((found = FirstText(found, arguments)), ...);
    return found;
}

constexpr int noErrno = -1;

template <class T> T FailWith(int number)
{
    errno = number == noErrno ? 0 : number;
    if constexpr (std::is_pointer_v<T>)
        return nullptr;
    else
        return -1;
}

} // namespace

SystemCalls::SystemCalls()
{
    state.emplace().thread = std::this_thread::get_id();
}

SystemCalls::~SystemCalls()
{
    for (const Order& order : state->orders)
        EXPECT_TRUE(order.isDone) << order.call << " was not called " << order.n << " times";
    state.reset();
}

void SystemCalls::Fail(std::string_view call, int n, int number)
{
    state->orders.push_back({std::string(call), n, number, nullptr});
}

void SystemCalls::End(std::string_view call, int n)
{
    Fail(call, n, noErrno);
}

void SystemCalls::Before(std::string_view call, int n, std::function<void()> what)
{
    state->orders.push_back({std::string(call), n, 0, std::move(what)});
}

void SystemCalls::Interrupt(std::string_view call, int times)
{
    for (int n = 1; n <= times; ++n)
        Fail(call, n, EINTR);
}

int SystemCalls::Count(std::string_view call) const
{
    return CountOf(call);
}

std::string SystemCalls::Path() const
{
    return state->path;
}

std::vector<int> InheritableDescriptors()
{
    constexpr int most = 1024;
    std::vector<int> inheritable;
    for (int descriptor = 0; descriptor < most; ++descriptor)
    {
        if (fcntl(descriptor, F_GETFD) == 0)
            inheritable.push_back(descriptor);
    }
    return inheritable;
}

} // namespace tarnwell::test

using namespace tarnwell::test;

#define CALL(name, result, parameters, arguments)                                                  \
    extern "C" result __real_##name parameters;                                                    \
    extern "C" result __wrap_##name parameters                                                     \
    {                                                                                              \
        if (const int number = FaultFor(#name, PathAmong arguments))                               \
            return FailWith<result>(number);                                                       \
        return __real_##name arguments;                                                            \
    }
#include "platform/posix/systemcalls.inc"
#undef CALL
