// Every platform call of what all file systems do fails in turn, for each row of the backends. What
// comes out is whole or there is a failure, which has its text.
#include "faults/failinturn.h"

#include "faults/sharedactions.h"

#include <set>

namespace tarnwell::test
{
namespace
{

using Operations = std::set<std::string>;

// Operations without which everything works, or is in another place, or is told as unknown.
Operations HiddenIn(const Backend& backend, std::string_view action)
{
    if (backend.family == Family::Local)
    {
        return action == "Facts"
                   ? Operations{"CreateFileW", "SetFilePointer", "GetFileTime", "CloseHandle"}
                   : Operations{"FindClose"};
    }
    // A time that the platform can't convert is unknown.
    if (action == "History" || action == "Tree")
        return {"CloseHandle", "EndClientGroup", "FindClient", "SystemTimeToFileTime"};
    // Without settings there are the usual ones, an unknown time is old, and a listing is read
    // whole before its first entry comes.
    if (HoldsConnections(backend))
    {
        return {"CoFileTimeNow", "InternetCloseHandle", "InternetFindNextFileW",
                "LocalFileTimeToFileTime", "RegOpenKeyExW"};
    }
    return {"CloseHandle",         "GetExitCodeProcess",   "_beginthreadex",
            "WaitForSingleObject", "SystemTimeToFileTime", "GetEnvironmentStringsW",
            "FindClient"};
}

// Mercurial's histories come from the client that its trees have, too.
bool IsAnsweredByOneThatStays(const Backend& backend, std::string_view action)
{
    return backend.strict.clientStays &&
           (action == "Tree" || (action == "History" && backend.client == "hg"));
}

// Those that are hidden at some of their calls: what a client complains of ends where its pipe
// can't be read, and a listing ends at the entry that isn't given, as designed. Where nothing
// printed means that there is nothing, what a client prints ends likewise.
// Where a history is told in full, waiting for a thread can do without the system, not each place
// that is looked at has a repository, and what a client complains of beside its answer isn't told.
// A client that stays isn't read to its end.
Operations AmbiguousIn(const Backend& backend, std::string_view action)
{
    if (action == "History" && !IsAnsweredByOneThatStays(backend, action))
        return {"WaitForSingleObject", "GetFileAttributesW", "MultiByteToWideChar"};
    if (action == "History" || action == "Tree")
        return {"WaitForSingleObject", "GetFileAttributesW", "MultiByteToWideChar", "ReadPipe"};
    if (HoldsConnections(backend))
        return {"InternetFindNextFileW"};
    if (backend.client.empty())
        return {};
    return backend.missingFoldersFail ? Operations{"ReadFile"}
                                      : Operations{"ReadFile", "_beginthreadex"};
}

struct Case
{
    const Backend* backend;
    const SharedAction* action;
};

void PrintTo(const Case& each, std::ostream* out)
{
    *out << each.backend->name << each.action->name;
}

class EveryCall : public testing::TestWithParam<Case>, protected FailingAction
{
protected:
    std::function<HRESULT()> Prepare() override
    {
        seen_ = {};
        return Act().prepare(row_, seen_);
    }
    bool HasSteadyCalls() const override
    {
        return !IsAnsweredByOneThatStays(*GetParam().backend, Act().name);
    }
    void ExpectWhole(const Result& result) override
    {
        EXPECT_EQ(result.status, S_OK);
        whole_ = seen_.text;
    }
    void Expect(const std::string& operation, const Result& result) override
    {
        if (SUCCEEDED(result.status))
        {
            EXPECT_EQ(result.text, u"(none)");
            EXPECT_TRUE(seen_.text == whole_ || (Act().hidesAll && seen_.text == "0") ||
                        IsLess(operation))
                << seen_.text;
        }
        else
        {
            EXPECT_EQ(result.text != u"(none)", Act().leavesText && !seen_.failsBare);
        }
        (SUCCEEDED(result.status) ? succeeded_ : failed_).insert(operation);
    }

    const SharedAction& Act() const
    {
        return *GetParam().action;
    }
    // Of a list of which one part is printed by another run: that part is missing.
    bool IsLess(const std::string& operation) const
    {
        const Backend& backend = row_.Row();
        return Act().hidesAll && !backend.missingFoldersFail && seen_.text < whole_ &&
               AmbiguousIn(backend, Act().name).contains(operation);
    }

    const BackendHere row_{*GetParam().backend};
    Seen seen_;
    std::string whole_;
    Operations succeeded_;
    Operations failed_;
};

TEST_P(EveryCall, FailsInTurn)
{
    FailInTurn(*this);
    const Operations hidden = HiddenIn(*GetParam().backend, Act().name);
    for (const std::string& operation : AmbiguousIn(*GetParam().backend, Act().name))
    {
        succeeded_.erase(operation);
        failed_.erase(operation);
    }
    for (const std::string& operation : succeeded_)
        EXPECT_TRUE(Act().hidesAll || hidden.contains(operation)) << operation << " was not needed";
    for (const std::string& operation : failed_)
        EXPECT_FALSE(hidden.contains(operation)) << operation << " was needed";
}

std::vector<Case> Cases()
{
    std::vector<Case> cases;
    for (const Backend* const backend : Backends())
    {
        for (const SharedAction& action : SharedActions())
        {
            if (action.applies(*backend))
                cases.push_back({backend, &action});
        }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Backends, EveryCall, testing::ValuesIn(Cases()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace tarnwell::test
