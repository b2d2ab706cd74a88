// Why there is no history and no tree: each failure is one, with its status and its text.
#include "backends/suites/stricttest.h"
#include "support/environmentvalue.h"
#include "support/ordinaryuser.h"
#include "support/wine.h"

namespace tarnwell::test
{
namespace
{

class StrictFailures : public StrictTest
{
protected:
    // Asks for each of the two that the row answers to.
    template <class F>
    void ExpectFromBoth(const std::u16string& path, const F& expect,
                        const std::optional<std::u16string>& revision = {}) const
    {
        if (Row().strict.histories)
            expect(HistoryFailure(path, revision));
        if (Row().strict.trees)
            expect(TreeFailure(path, revision));
    }
    // The row's name is where failures come from.
    bool IsFromRow(const Outcome& outcome) const
    {
        return outcome.error && outcome.error->text.find(u" [" + std::u16string(Row().source) +
                                                         u"@") != std::u16string::npos;
    }
};

TEST_P(StrictFailures, AreToldOfWhatIsNotThere)
{
    const std::u16string none = Strictly().data->Address(u"none.txt");
    ExpectFromBoth(none, [&](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, HistoryNoPath);
        EXPECT_TRUE(IsFromRow(outcome));
    });
    if (!Row().strict.histories)
        return;
    EXPECT_THAT(HistoryFailure(none),
                FailedSaying(HistoryNoPath,
                             u"Can't find \"" + none + u"\" in the history of the repository."));
    for (const HistoryOptions& options :
         {Wanted(HistoryFollow), Wanted(HistoryWorkingCopy), Wanted(0, 3), Wanted(0, 0, 1)})
        EXPECT_EQ(HistoryFailure(none, {}, options).status, HistoryNoPath);
}

TEST_P(StrictFailures, AreToldOfRevisionsThatAreNone)
{
    for (const std::u16string_view revision : Row().strict.noRevisions)
    {
        const std::u16string text(revision);
        ExpectFromBoth(
            Strictly().data->Address(u"text.txt"),
            [&](const Outcome& outcome) {
                EXPECT_THAT(outcome, FailedSaying(HistoryNoRevision,
                                                  u"Can't find the revision \"" + text + u"\"."))
                    << testing::PrintToString(text);
                EXPECT_TRUE(IsFromRow(outcome));
            },
            text);
    }
}

TEST_P(StrictFailures, AreToldOfAMissingClient)
{
    if (Row().client.empty())
        GTEST_SKIP() << "there is no client";
    const std::u16string address = Strictly().data->Address(u"text.txt");
    const TempFolder nothing;
    const EnvironmentValue path("PATH", nothing.Path().string().c_str());
    ExpectFromBoth(address, [&](const Outcome& outcome) {
        EXPECT_THAT(outcome, FailedSaying(HistoryNoClient, Row().clientMissing));
    });
}

TEST_P(StrictFailures, AreToldApart)
{
    for (const MadeFailure& failure : Row().strict.failures)
    {
        const auto data = NewData();
        data->Put(u"text.txt", "content");
        ExpectFromBoth(failure.make(*data), [&](const Outcome& outcome) {
            EXPECT_THAT(outcome, FailedSaying(failure.status, failure.message)) << failure.what;
            EXPECT_TRUE(IsFromRow(outcome)) << failure.what;
        });
    }
}

TEST_P(StrictFailures, AreToldOfFoldersThatMayNotBeEntered)
{
    if (!Row().strict.workingCopies)
        GTEST_SKIP() << "nothing of it is on the disk";
    if (!OrdinaryUser().Possible())
        GTEST_SKIP() << "can't become an ordinary user";
    if (IsUnderWine())
        GTEST_SKIP() << "Wine lets everybody in";
    const auto data = NewData();
    data->Put(u"text.txt", "content");
    namespace fs = std::filesystem;
    const fs::path folder = data->OnDisk(u"");
    fs::permissions(folder, fs::perms::none);
    {
        const OrdinaryUser user;
        const auto refused = FailedSaying(E_ACCESSDENIED, u"Access to the repository of ");
        for (const std::u16string_view name : {u"", u"text.txt", u"none"})
            ExpectFromBoth(data->Address(name),
                           [&](const Outcome& outcome) { EXPECT_THAT(outcome, refused); });
    }
    fs::permissions(folder, fs::perms::owner_all);
}

TEST_P(StrictFailures, OfAddressesThatCantBe)
{
    for (const RefusedAddress& row : Row().refused)
    {
        ExpectFromBoth(std::u16string(row.address), [&](const Outcome& outcome) {
            EXPECT_THAT(outcome, FailedSaying(E_INVALIDARG, row.message));
        });
    }
    ExpectFromBoth(u"", [](const Outcome& outcome) { EXPECT_LT(outcome.status, 0); });
}

TEST_P(StrictFailures, OfOptionsThatCantBe)
{
    if (!Row().strict.histories)
        GTEST_SKIP() << "there are no histories";
    const std::u16string text = Strictly().data->Address(u"text.txt");
    HistoryOptions options = Wanted();
    options.size -= 1;
    const auto refused = FailedSaying(E_INVALIDARG, u"Internal error (invalid history options).");
    EXPECT_THAT(HistoryFailure(text, {}, options), refused);
    EXPECT_THAT(HistoryFailure(text, {}, Wanted(4)), refused);
    const auto histories = system.As<IFileSystemHistory>();
    EXPECT_THAT(
        OutcomeOf([&] { return histories->ReadHistory(Ole(text), nullptr, nullptr, nullptr); }),
        Refused(E_POINTER, u"Internal error (null pointer argument)."));
    EXPECT_THAT(HistoryFailure(text, u"nosuch"), NamesInterface(IID_IFileSystemHistory));
}

TARNWELL_OVER_BACKENDS(StrictFailures, BackendsThat([](const Backend& b) {
                           return TellsHistories(b) || ShowsTrees(b);
                       }));

class WithoutStrict : public BackendTest
{
};

// Nobody answers what can't be done in full.
TEST_P(WithoutStrict, NothingIsAnswered)
{
    const bool answers = Row().strict.elsewhere;
    EXPECT_EQ(static_cast<bool>(system.As<IFileSystemHistory>()),
              Row().strict.histories || answers);
    EXPECT_EQ(static_cast<bool>(system.As<IFileSystemTrees>()), Row().strict.trees || answers);
    const std::string_view why = Row().strict.whyNot;
    ASSERT_FALSE(why.empty());
    GTEST_SKIP() << why;
}

TARNWELL_OVER_BACKENDS(WithoutStrict, BackendsThat([](const Backend& b) {
                           return !(TellsHistories(b) && ShowsTrees(b));
                       }));

} // namespace
} // namespace tarnwell::test
