// Histories told in full. Why there is none is in strictfailures.cpp.
#include "backends/suites/stricttest.h"

#include <tarnwell/text.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

class Histories : public StrictTest
{
protected:
    const std::u16string text_ =
        TestsRun() ? Strictly().data->Address(u"text.txt") : std::u16string();
};

TEST_P(Histories, TellEachChangeNewestFirst)
{
    const auto entries = History(text_);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].id, Strictly().lastId);
    EXPECT_EQ(entries[1].id, Strictly().firstId);
    EXPECT_THAT(DescriptionsOf(entries), ElementsAre(u"an end", DecodeName(wholeDescription)));
    for (const HistoryEntry& entry : entries)
    {
        EXPECT_EQ(entry.author, AuthorOf(*Strictly().data));
        EXPECT_EQ(entry.path, Strictly().data->NameInHistory(u"text.txt"));
        EXPECT_GT(entry.time, 133000000000000000U);
        EXPECT_GT(entry.modified, 133000000000000000U);
    }
}

TEST_P(Histories, OfNamesOfAllKinds)
{
    for (const auto& names : {Row().names, Row().strict.names})
    {
        for (const std::u16string_view name : names)
        {
            const std::u16string address = Strictly().data->Address(name);
            for (const std::uint32_t flags : {0U, std::uint32_t{HistoryFollow}})
            {
                const auto entries = History(address, Wanted(flags), Strictly().lastId);
                ASSERT_EQ(entries.size(), 1U) << testing::PrintToString(name);
                EXPECT_EQ(entries[0].path, Strictly().data->NameInHistory(name));
            }
        }
    }
}

TEST_P(Histories, AddressesOpenTheRevisionAndBeginAtIt)
{
    const auto entries = History(text_);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(Content(entries[0].address), "content");
    EXPECT_EQ(Content(entries[1].address), "first");
    EXPECT_EQ(History(entries[0].address), entries);
    EXPECT_EQ(History(entries[1].address), std::vector<HistoryEntry>{entries[1]});
}

TEST_P(Histories, BeginAtARevision)
{
    const std::u16string first = DecodeName(wholeDescription);
    EXPECT_THAT(DescriptionsOf(History(AddressAt(u"text.txt", Strictly().firstId))),
                ElementsAre(first));
    EXPECT_THAT(DescriptionsOf(History(text_, Wanted(), Strictly().firstId)), ElementsAre(first));
    for (const std::u16string& name : Strictly().namesOfFirst)
    {
        EXPECT_THAT(DescriptionsOf(History(text_, Wanted(), name)), ElementsAre(first))
            << testing::PrintToString(name);
    }
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
    // Of the whole, where each revision counts.
    EXPECT_THAT(DescriptionsOf(History(data->Address(u""), Wanted(0, 1, 2))),
                ElementsAre(u"5", u"of another"));
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
    EXPECT_THAT(Read(text_, sink), FailedSaying(E_ABORT, u"The operation was cancelled."));
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

TEST_P(Histories, FollowAFileThroughItsNamesIfWanted)
{
    const std::u16string address = Strictly().data->Address(u"sub/new name.txt");
    EXPECT_THAT(DescriptionsOf(History(address)), ElementsAre(u"lengthened", u"renamed"));
    const auto entries = History(address, Wanted(HistoryFollow));
    ASSERT_THAT(DescriptionsOf(entries), ElementsAre(u"lengthened", u"renamed", u"made"));
    const std::u16string newName = Strictly().data->NameInHistory(u"sub/new name.txt");
    EXPECT_EQ(entries[0].path, newName);
    EXPECT_EQ(entries[1].path, newName);
    EXPECT_EQ(entries[2].path, Strictly().data->NameInHistory(u"old.txt"));
    if (Row().strict.oldNamesOpen)
    {
        EXPECT_TRUE(Content(entries[2].address).starts_with("one of several lines"));
    }
    if (Row().strict.trees)
    {
        EXPECT_TRUE(ContentOf(Tree(entries[2].address)).starts_with("one of several lines"));
    }
    // Skipping over a renaming doesn't lose the names before it.
    EXPECT_THAT(DescriptionsOf(History(address, Wanted(HistoryFollow, 2))), ElementsAre(u"made"));
    EXPECT_THAT(DescriptionsOf(History(address, Wanted(HistoryFollow, 1, 1))),
                ElementsAre(u"renamed"));
}

TEST_P(Histories, TellMerges)
{
    const std::optional<bool>& whereFollowed = Row().strict.mergesWhereFollowed;
    if (!whereFollowed)
        GTEST_SKIP() << "the system has no merges";
    const auto data = NewData();
    data->Put(u"a.txt", "1", "made");
    data->PutMerge(u"a.txt");
    const std::vector<std::u16string> all = {u"merged", u"here", u"aside", u"made"};
    const std::u16string address = data->Address(u"a.txt");
    EXPECT_THAT(DescriptionsOf(History(address)), UnorderedElementsAreArray(all));
    EXPECT_EQ(History(address)[0].description, all[0]);
    EXPECT_THAT(DescriptionsOf(History(address, Wanted(HistoryFollow))),
                UnorderedElementsAreArray(all.begin() + (*whereFollowed ? 0 : 1), all.end()));
}

TEST_P(Histories, OfFoldersAndOfTheWhole)
{
    const auto ofFolder = DescriptionsOf(History(Strictly().data->Address(u"sub")));
    ASSERT_GE(ofFolder.size(), 3U);
    EXPECT_EQ(ofFolder[0], u"lengthened");
    EXPECT_EQ(ofFolder[1], u"renamed");
    EXPECT_EQ(std::count(ofFolder.begin(), ofFolder.end(), u"made"), 0);
    const auto ofAll = DescriptionsOf(History(Strictly().data->Address(u"")));
    ASSERT_GE(ofAll.size(), 10U);
    EXPECT_EQ(ofAll[0], u"an end");
    for (const char16_t* const description : {u"gone", u"made to go", u"made again", u"removed",
                                              u"made first", u"lengthened", u"renamed", u"made"})
        EXPECT_EQ(std::count(ofAll.begin(), ofAll.end(), description), 1);
}

TEST_P(Histories, OfWhatIsGoneAndWhatWasMadeAgain)
{
    const auto again = DescriptionsOf(History(Strictly().data->Address(u"again.txt")));
    if (Row().strict.beyondDeletions)
    {
        EXPECT_THAT(again, ElementsAre(u"made again", u"removed", u"made first"));
        EXPECT_THAT(DescriptionsOf(History(Strictly().data->Address(u"gone.txt"))),
                    ElementsAre(u"gone", u"made to go"));
    }
    else
        EXPECT_THAT(again, ElementsAre(u"made again"));
    EXPECT_THAT(DescriptionsOf(History(AddressAt(u"gone.txt", Strictly().beforeGoneId))),
                ElementsAre(u"made to go"));
}

TEST_P(Histories, BeginWithTheWorkingCopyIfWanted)
{
    if (!Row().strict.workingCopies)
        GTEST_SKIP() << "nothing of it is on the disk";
    const std::u16string path = Strictly().data->OnDisk(u"text.txt").u16string();
    for (const std::u16string& asked : {text_, path})
    {
        const auto entries = History(asked, Wanted(HistoryWorkingCopy, 0, 1));
        ASSERT_EQ(entries.size(), 2U);
        EXPECT_EQ(entries[0].description, u"Working Copy");
        EXPECT_EQ(entries[0].id, u"");
        EXPECT_EQ(std::filesystem::path(entries[0].address), std::filesystem::path(path));
        EXPECT_EQ(entries[1].description, u"an end");
        EXPECT_THAT(DescriptionsOf(History(asked, Wanted(HistoryWorkingCopy, 1))),
                    ElementsAre(DecodeName(wholeDescription)));
    }
    EXPECT_THAT(DescriptionsOf(History(Strictly().data->Address(u"gone.txt"),
                                       Wanted(HistoryWorkingCopy, 0, 1), Strictly().beforeGoneId)),
                ElementsAre(u"made to go"));
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
        for (const std::uint64_t part : {std::uint64_t{1}, second - 1 - last % second})
        {
            // Whole seconds count.
            options.since = last + part;
            EXPECT_THAT(History(text_, options), Not(IsEmpty())) << part;
        }
        options.since = last;
        EXPECT_FALSE(History(text_, options).empty());
        options = Wanted(flags);
        options.until = last;
        EXPECT_EQ(History(text_, options).size(), 2U);
        options.until = last - last % second;
        EXPECT_EQ(History(text_, options).size(), 2U);
        for (const std::uint64_t early : {last - 3600 * second, std::uint64_t{1}})
        {
            options.until = early;
            EXPECT_THAT(History(text_, options), IsEmpty()) << early;
        }
    }
}

TEST_P(Histories, NeedNoOptions)
{
    HistorySink sink;
    const auto histories = system.As<IFileSystemHistory>();
    EXPECT_EQ(histories->ReadHistory(Ole(text_), nullptr, nullptr, &sink), S_OK);
    EXPECT_EQ(sink.entries.size(), 2U);
}

TARNWELL_OVER_BACKENDS(Histories, BackendsThat(TellsHistories));

} // namespace
} // namespace tarnwell::test
