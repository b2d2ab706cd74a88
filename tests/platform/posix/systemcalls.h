// The system's calls, each of which can be made to fail, or to find that somebody was there first.
//
// The linker puts a function of the tests' own before each (systemcalls.inc), so nothing in the
// product knows of this.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

// One at a time. What it was told holds for the calls of the thread that made it, while it lives.
class SystemCalls
{
public:
    SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;
    // Everything that was ordered must have happened: a test that waits for a call that is no
    // longer made shows nothing.
    ~SystemCalls();

    // The n-th call of this name, counted from 1, fails with this errno and isn't made.
    void Fail(std::string_view call, int n, int number);
    // That call ends as if there were nothing more: without an errno.
    void End(std::string_view call, int n);
    // `what` is done before that call is made.
    void Before(std::string_view call, int n, std::function<void()> what);
    // `times` calls from the first one on are interrupted by a signal.
    void Interrupt(std::string_view call, int times = 3);

    int Count(std::string_view call) const;
    // The path that the call was given before which something is done.
    std::string Path() const;
};

// The descriptors that a program would get which somebody starts now.
std::vector<int> InheritableDescriptors();

} // namespace tarnwell::test
