// Histories told in full, and the reason where there is none.
#include "backends/suites/backendtest.h"
#include "support/environmentvalue.h"
#include "support/historysink.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::u16string> DescriptionsOf(const std::vector<HistoryEntry>& entries)
{
    std::vector<std::u16string> found;
    for (const HistoryEntry& entry : entries)
        found.push_back(entry.description);
    return found;
}

// Failed with this status and this message, and a place in the source of the row behind it.
MATCHER_P3(Told, status, message, row, "")
{
    const std::u16string start =
        std::u16string(message) + u" [" + std::u16string(row.source) + u"@";
    return arg.status == status && arg.error && WithLineFeeds(arg.error->text).starts_with(start);
}

class Histories : public BackendTest
{
protected:
    Outcome Read(const std::u16string& path, HistorySink& sink, HistoryOptions options = Wanted(),
                 const char16_t* revision = nullptr) const
    {
        const auto histories = system.As<IFileSystemHistory>();
        return OutcomeOf([&] {
            return histories->ReadHistory(Ole(path), reinterpret_cast<const OLECHAR*>(revision),
                                          &options, &sink);
        });
    }
    std::vector<HistoryEntry> History(const std::u16string& path, HistoryOptions options = Wanted(),
                                      const char16_t* revision = nullptr) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options, revision), Succeeded());
        EXPECT_EQ(sink.references, 0U);
        return sink.entries;
    }
    Outcome Failure(const std::u16string& path, const char16_t* revision = nullptr,
                    HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        const Outcome outcome = Read(path, sink, options, revision);
        EXPECT_THAT(sink.entries, IsEmpty());
        return outcome;
    }
    const std::u16string text_ = TestsRun() ? Address(u"text.txt") : std::u16string();
};

TEST_P(Histories, TellEachChangeNewestFirst)
{
    const auto entries = History(text_);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].id, TheSample().secondRevision);
    EXPECT_EQ(entries[1].id, TheSample().firstRevision);
    EXPECT_THAT(DescriptionsOf(entries), ElementsAre(u"an end", u"a beginning"));
    for (const HistoryEntry& entry : entries)
    {
        EXPECT_EQ(entry.author, Row().author);
        EXPECT_EQ(entry.address, Address(u"text.txt", entry.id));
        EXPECT_EQ(entry.path, u"text.txt");
        EXPECT_GT(entry.time, 133000000000000000U);
        EXPECT_GT(entry.modified, 133000000000000000U);
    }
}

TEST_P(Histories, OfNamesOfAllKinds)
{
    for (const std::u16string_view name : Row().names)
    {
        const auto entries = History(Address(name));
        ASSERT_EQ(entries.size(), 1U) << testing::PrintToString(name);
        EXPECT_EQ(entries[0].path, name);
        const auto followed = History(Address(name), Wanted(HistoryFollow));
        ASSERT_EQ(followed.size(), 1U) << testing::PrintToString(name);
        EXPECT_EQ(followed[0].path, name);
    }
}

TEST_P(Histories, OpenByTheirAddresses)
{
    const auto entries = History(text_);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(Content(entries[0].address), "content");
    EXPECT_EQ(Content(entries[1].address), "first");
}

TEST_P(Histories, BeginAtARevision)
{
    const auto data = NewData();
    const std::u16string first = data->Put(u"a.txt", "1", "first");
    data->Put(u"a.txt", "2", "second");
    EXPECT_THAT(DescriptionsOf(History(data->Address(u"a.txt", first))), ElementsAre(u"first"));
    EXPECT_THAT(DescriptionsOf(History(data->Address(u"a.txt"), Wanted(), first.c_str())),
                ElementsAre(u"first"));
    EXPECT_THAT(
        DescriptionsOf(History(data->OnDisk(u"a.txt").u16string(), Wanted(), first.c_str())),
        ElementsAre(u"first"));
}

TEST_P(Histories, ComeInPages)
{
    const auto data = NewData();
    for (const char* const name : {"1", "2", "3", "4", "5"})
    {
        data->Put(u"a.txt", name, name);
        data->Put(u"b.txt", name, "of another");
    }
    const std::u16string address = data->Address(u"a.txt");
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
    {
        EXPECT_THAT(DescriptionsOf(History(address, Wanted(flags, 0, 2))), ElementsAre(u"5", u"4"));
        EXPECT_THAT(DescriptionsOf(History(address, Wanted(flags, 2, 2))), ElementsAre(u"3", u"2"));
        EXPECT_THAT(DescriptionsOf(History(address, Wanted(flags, 4, 2))), ElementsAre(u"1"));
        EXPECT_THAT(History(address, Wanted(flags, 5, 2)), IsEmpty());
        EXPECT_THAT(History(address, Wanted(flags, UINT32_MAX, UINT32_MAX)), IsEmpty());
    }
}

TEST_P(Histories, EndWhereTheHostHasEnough)
{
    HistorySink sink;
    sink.answer = [] {
        return S_FALSE;
    };
    EXPECT_THAT(Read(text_, sink), Succeeded());
    EXPECT_EQ(sink.entries.size(), 1U);
}

TEST_P(Histories, FailAsTheHostDoes)
{
    HistorySink sink;
    sink.answer = [] {
        return Status(0x80041234);
    };
    EXPECT_THAT(Read(text_, sink), FailedBare(Status(0x80041234)));
    EXPECT_EQ(sink.entries.size(), 1U);
}

TEST_P(Histories, AskTheHostOnItsThreadAndAreCancelledAtOnce)
{
    HistorySink willing;
    EXPECT_THAT(Read(text_, willing), Succeeded());
    EXPECT_GE(willing.questions, 1);
    EXPECT_THAT(willing.threads, Each(std::this_thread::get_id()));
    HistorySink sink;
    sink.wantsMore = [] {
        return false;
    };
    EXPECT_THAT(Read(text_, sink), Told(E_ABORT, u"The operation was cancelled.", Row()));
    EXPECT_EQ(sink.questions, 1);
    EXPECT_THAT(sink.entries, IsEmpty());
}

TEST_P(Histories, HoldWholeDescriptions)
{
    const auto data = NewData();
    const std::vector<std::string> descriptions = {
        "one line",
        "two\nlines",
        "a title\n\nand a body\n\nof two\n    indented, and\ttabs",
        "!",
        "#1 change 1",
        "\xC3\xA4\xE6\x97\xA5\xF0\x9F\x98\x80",
        "-----\n\n-----"};
    for (const std::string& description : descriptions)
        data->Put(u"a.txt", "content of " + description, description);
    auto found = DescriptionsOf(History(data->Address(u"a.txt")));
    ASSERT_EQ(found.size(), descriptions.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(found[found.size() - 1 - i], DecodeName(descriptions[i]));
}

TEST_P(Histories, BeginWithTheWorkingCopyIfWanted)
{
    const auto entries = History(text_, Wanted(HistoryWorkingCopy, 0, 1));
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].description, u"Working Copy");
    EXPECT_EQ(entries[0].id, u"");
    EXPECT_EQ(std::filesystem::path(entries[0].address), TheSample().data->OnDisk(u"text.txt"));
    EXPECT_EQ(entries[1].description, u"an end");
    EXPECT_THAT(DescriptionsOf(History(text_, Wanted(HistoryWorkingCopy, 1))),
                ElementsAre(u"a beginning"));
}

TEST_P(Histories, AreBoundedByTimes)
{
    HistoryOptions options = Wanted();
    const std::uint64_t last = History(text_)[0].time;
    constexpr std::uint64_t second = 10'000'000;
    for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
    {
        options = Wanted(flags);
        options.since = last + second;
        EXPECT_THAT(History(text_, options), IsEmpty());
        options.since = last;
        EXPECT_FALSE(History(text_, options).empty());
        options = Wanted(flags);
        options.until = last;
        EXPECT_EQ(History(text_, options).size(), 2U);
        options.until = last - 3600 * second;
        EXPECT_THAT(History(text_, options), IsEmpty());
    }
}

TEST_P(Histories, SayWhatIsMissing)
{
    const std::u16string none = Address(u"none.txt");
    EXPECT_THAT(Failure(none),
                Told(HistoryNoPath,
                     u"Can't find \"" + none + u"\" in the history of the repository.", Row()));
    EXPECT_THAT(Failure(none, nullptr, Wanted(HistoryFollow)).status, HistoryNoPath);
    EXPECT_THAT(Failure(none, nullptr, Wanted(HistoryWorkingCopy)).status, HistoryNoPath);
    EXPECT_THAT(Failure(none, nullptr, Wanted(0, 3)).status, HistoryNoPath);
    for (const char16_t* const revision :
         {u"nosuch", u"-x", u"--all", u"a..b", u"^main", u"\n", u"a b", u"HEAD --all"})
    {
        const Outcome outcome = Failure(text_, revision);
        EXPECT_EQ(outcome.status, HistoryNoRevision) << testing::PrintToString(revision);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(
            WithLineFeeds(outcome.error->text)
                .starts_with(u"Can't find the revision \"" + std::u16string(revision) + u"\"."));
    }
}

TEST_P(Histories, SayThatThereIsNoRepository)
{
    const TempFolder folder;
    const std::u16string path = folder / u"a.txt";
    EXPECT_THAT(
        Failure(path),
        Told(HistoryNoRepository, u"Can't find a repository that holds \"" + path + u"\".", Row()));
}

TEST_P(Histories, SayThatThereIsNoClient)
{
    const TempFolder nothing;
    const EnvironmentValue path("PATH", nothing.Path().string().c_str());
    const Outcome outcome = Failure(text_);
    EXPECT_EQ(outcome.status, HistoryNoClient);
    ASSERT_TRUE(outcome.error);
    EXPECT_TRUE(outcome.error->text.starts_with(Row().clientMissing));
}

TEST_P(Histories, RefuseWhatCantBe)
{
    HistoryOptions options = Wanted();
    options.size -= 1;
    const std::u16string message = u"Internal error (invalid history options).";
    EXPECT_THAT(Failure(text_, nullptr, options), Told(E_INVALIDARG, message, Row()));
    EXPECT_THAT(Failure(text_, nullptr, Wanted(4)), Told(E_INVALIDARG, message, Row()));
    const auto histories = system.As<IFileSystemHistory>();
    EXPECT_THAT(
        OutcomeOf([&] { return histories->ReadHistory(Ole(text_), nullptr, nullptr, nullptr); }),
        Refused(E_POINTER, u"Internal error (null pointer argument)."));
    for (const RefusedAddress& row : Row().refused)
        EXPECT_EQ(Failure(std::u16string(row.address)).status, E_INVALIDARG);
}

TEST_P(Histories, NeedNoOptions)
{
    HistorySink sink;
    const auto histories = system.As<IFileSystemHistory>();
    EXPECT_EQ(histories->ReadHistory(Ole(text_), nullptr, nullptr, &sink), S_OK);
    EXPECT_EQ(sink.entries.size(), 2U);
}

TARNWELL_OVER_BACKENDS(Histories, BackendsThat([](const Backend& b) { return b.histories; }));

class NoHistories : public BackendTest
{
};

// Nobody answers what can't be done in full.
TEST_P(NoHistories, AreNotAnswered)
{
    EXPECT_FALSE(system.As<IFileSystemHistory>());
}

TARNWELL_OVER_BACKENDS(NoHistories, BackendsThat([](const Backend& b) { return !b.histories; }));

} // namespace
} // namespace tarnwell::test
