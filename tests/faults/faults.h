// Platform operations that fail by order.
//
// The linker puts a function of the tests' own before each operation that can fail
// (operations.inc), so nothing in the product knows of this. It sees the calls from one object
// file into another, which is every call that the module's logic makes.
#pragma once

#include "frame/status.h"
#include "platform/win32.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

// What ordered failures fail with where it doesn't matter with what.
constexpr DWORD someError = ERROR_BUSY;
constexpr HRESULT someStatus = StatusFromError(someError);

// Counts the calls of all threads while it lives, and fails those that it was told to fail. One at
// a time. Counting begins with 1 at construction.
//
// A call that fails does so in its operation's own way and doesn't reach the operation. Closing is
// the exception: CloseHandle and FindClose release what they were given and then report the
// failure, so that nothing leaks.
class Faults
{
public:
    Faults();
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;
    ~Faults();

    // The n-th call of any operation. `error` is a code of the platform's; where the operation
    // gives a status, it becomes one, unless it is a status already.
    void FailNth(int n, DWORD error);
    // The n-th call of this operation.
    void Fail(std::string_view operation, int n, DWORD error);

    // What a thread does before each of its calls of this operation. One at a time.
    void Before(std::string_view operation, std::function<void()> act);

    // How many of the ordered failures have happened.
    int Failures() const;
    int Calls() const;
    int Calls(std::string_view operation) const;
    // The operations' names in the order of their calls.
    std::vector<std::string> Trace() const;
};

} // namespace tarnwell::test
