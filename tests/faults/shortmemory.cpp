// Runs of clients while memory is short: nothing waits for ever and nothing stays behind.
#include "faults/local.h"

#include "support/clientcall.h"
#include "support/environmentvalue.h"
#include "workingcopy/workingcopycommands.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace
{

// Which of this thread's next allocations fails, counted from 1; 0: none.
thread_local int refused = 0;
// The largest that any thread may make, in bytes.
std::atomic<std::size_t> largest = std::numeric_limits<std::size_t>::max();

bool IsRefused(std::size_t size)
{
    const bool isOrdered = refused == 1;
    refused -= refused > 0 ? 1 : 0;
    return isOrdered || size > largest;
}

} // namespace

void* operator new(std::size_t size)
{
    void* const memory = IsRefused(size) ? nullptr : std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace tarnwell::test
{

namespace
{

TEST(ShortMemory, AReaderThatCannotKeepTheTextHoldsUpNobody)
{
    const auto output = NewOutputFile();
    const ClientCall call = CallOfChild(u"error 5000000", *output);
    const Held before = Held::Now();
    largest = 100'000;
    EXPECT_THROW(RunClient(childClient, call), std::bad_alloc);
    largest = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(Held::Now(), before);
}

TEST(ShortMemory, ARunLeavesNothingWhereverMemoryRunsOut)
{
    const TempFolder temporary;
    const EnvironmentValue variable("TMPDIR", temporary.Path().c_str());
    const ClientCall call{ChildProgram().u16string(), u"input"};
    ClientRow row = childClient;
    row.hiddenNames = u"GIT_";
    bool isDone = false;
    int n = 0;
    while (!isDone)
    {
        const Held before = Held::Now();
        try
        {
            refused = ++n;
            CaptureOutput(row, call, u"test://address");
            isDone = refused > 0;
        }
        catch (...)
        {
            // Memory or, where an operation of the platform ran out of it, that one's failure.
        }
        refused = 0;
        EXPECT_EQ(Held::Now(), before) << n;
        EXPECT_TRUE(std::filesystem::is_empty(temporary.Path())) << n;
    }
    EXPECT_GT(n, 10);
}

} // namespace

} // namespace tarnwell::test
