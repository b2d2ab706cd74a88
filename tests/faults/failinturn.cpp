#include "faults/failinturn.h"

#include "ftp/ftppool.h"
#include "support/environmentvalue.h"

#include <fstream>
#include <iterator>
#include <set>
#include <sys/wait.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// A temporary folder and a current one of their own.
class OwnPlaces
{
public:
    OwnPlaces()
    {
        fs::current_path(current_.Path());
    }
    OwnPlaces(const OwnPlaces&) = delete;
    OwnPlaces& operator=(const OwnPlaces&) = delete;
    ~OwnPlaces()
    {
        fs::current_path(before_);
    }

    // How much there is in both, which what is tested with may be.
    std::ptrdiff_t Entries() const
    {
        return std::distance(fs::directory_iterator(temporary_.Path()), {}) +
               std::distance(fs::directory_iterator(current_.Path()), {});
    }

private:
    const fs::path before_ = fs::current_path();
    const TempFolder current_;
    const TempFolder temporary_;
    const EnvironmentValue variable_{"TMPDIR", temporary_.Path().c_str()};
};

// The processes that this one has started, and not waited for.
std::set<pid_t> Children()
{
    std::set<pid_t> children;
    for (const fs::directory_entry& thread : fs::directory_iterator("/proc/self/task"))
    {
        std::ifstream list(thread.path() / "children");
        children.insert(std::istream_iterator<pid_t>(list), {});
    }
    return children;
}

// How many are left beside those that were there before, which are the test's servers. They are
// waited for, so that the next run has none of them.
int WaitForChildrenBeside(const std::set<pid_t>& before)
{
    int left = 0;
    for (const pid_t child : Children())
    {
        if (!before.contains(child) && waitpid(child, nullptr, 0) == child)
            ++left;
    }
    return left;
}

int CallsWithoutFault(FailingAction& action)
{
    action.Renew();
    const std::function<HRESULT()> act = action.Prepare();
    ClearError();
    HRESULT status = S_OK;
    int calls = 0;
    {
        const Faults faults;
        status = act();
        calls = faults.Calls();
    }
    action.ExpectWhole({status, TakeErrorText()});
    CloseIdleConnections();
    return calls;
}

void FailOne(FailingAction& action, const OwnPlaces& places, int n, DWORD error)
{
    action.Renew();
    const Held before = Held::Now();
    const std::set<pid_t> children = Children();
    const std::ptrdiff_t entries = places.Entries();
    std::function<HRESULT()> act = action.Prepare();
    ClearError();
    std::string operation;
    HRESULT status = S_OK;
    {
        Faults faults;
        faults.FailNth(n, error);
        status = act();
        if (faults.Failures() == 0 && !action.HasSteadyCalls())
            return;
        ASSERT_EQ(faults.Failures(), 1);
        operation = faults.Trace()[static_cast<std::size_t>(n - 1)];
    }
    SCOPED_TRACE(operation);
    const Result result{status, TakeErrorText()};
    act = nullptr;
    // What the module keeps for its next use, and would begin the next run with.
    CloseIdleConnections();
    EXPECT_EQ(Held::Now(), before);
    EXPECT_EQ(places.Entries(), entries);
    // Of a client that wasn't waited for the system may keep the end.
    EXPECT_TRUE(WaitForChildrenBeside(children) == 0 || operation == "WaitForSingleObject");
    action.Expect(operation, result);
}

} // namespace

void FailInTurn(FailingAction& action)
{
    const OwnPlaces places;
    CallsWithoutFault(action); // what a process makes once is there from now on
    const int calls = CallsWithoutFault(action);
    EXPECT_GT(calls, 0);
    for (int n = 1; n <= calls; ++n)
    {
        for (const DWORD error : {ERROR_BUSY, ERROR_DISK_FULL, ERROR_NOT_ENOUGH_MEMORY})
        {
            SCOPED_TRACE(testing::Message() << "call " << n << ", error " << error);
            FailOne(action, places, n, error);
        }
    }
}

} // namespace tarnwell::test
