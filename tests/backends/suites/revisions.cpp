// Where there is history, all of it is listed and opened; where there is none, nothing is, and
// that is no failure.
#include "backends/suites/backendtest.h"

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

class RevisionLists : public BackendTest
{
protected:
    // Those of the sample's text, without the working copy's, if the row has one.
    std::vector<Revision> Committed(const std::u16string& address) const
    {
        std::vector<Revision> list = Revisions(address);
        if (Row().workingCopy != WorkingCopy::None && !list.empty())
            list.erase(list.begin());
        return list;
    }
    // What was said of a change, without its number, where the row has that in front.
    std::u16string Described(const Revision& revision) const
    {
        if (!Row().changesInDescriptions)
            return revision.description;
        const std::size_t end = revision.description.find_first_not_of(u"0123456789");
        EXPECT_NE(end, 0U);
        EXPECT_EQ(revision.description.substr(end, 2), u": ");
        return revision.description.substr(end + 2);
    }
    const std::u16string text_ = TestsRun() ? Address(u"text.txt") : std::u16string();
};

TEST_P(RevisionLists, TellEachChangeNewestFirst)
{
    const auto list = Committed(text_);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].id, TheSample().secondRevision);
    EXPECT_EQ(Described(list[0]), u"an end");
    EXPECT_EQ(list[1].id, TheSample().firstRevision);
    EXPECT_EQ(Described(list[1]), u"a beginning");
    for (const Revision& revision : list)
    {
        EXPECT_EQ(revision.author, AuthorOf(*TheSample().data));
        EXPECT_EQ(revision.uri, Address(u"text.txt", revision.id));
        EXPECT_GT(revision.time, 133000000000000000U);
        EXPECT_GT(revision.modified, 133000000000000000U);
    }
    EXPECT_GE(list[0].time, list[1].time);
    EXPECT_TRUE(HasRevisions(text_));
}

TEST_P(RevisionLists, OpenByTheirAddresses)
{
    const auto list = Committed(text_);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(Content(list[0].uri), "content");
    EXPECT_EQ(Content(list[1].uri), "first");
}

TEST_P(RevisionLists, AreTheSameFromEachRevision)
{
    EXPECT_EQ(Committed(Address(u"text.txt", TheSample().firstRevision)), Committed(text_));
}

TEST_P(RevisionLists, OfNamesOfAllKinds)
{
    for (const std::u16string_view name : Row().names)
        EXPECT_EQ(Committed(Address(name)).size(), 1U);
}

TEST_P(RevisionLists, MakeARevisionAtEachCallWhichOutlivesThem)
{
    auto revisions = RevisionsOf(text_);
    ComPtr<IRevision> first, second;
    ASSERT_EQ(revisions->GetItem(0, first.Out()), S_OK);
    ASSERT_EQ(revisions->GetItem(0, second.Out()), S_OK);
    EXPECT_NE(first.Get(), second.Get());
    revisions.Reset();
    system.Reset();
    EXPECT_EQ(FactsOf(first), FactsOf(second));
}

TEST_P(RevisionLists, RefuseAnIndexOutOfRange)
{
    const auto revisions = RevisionsOf(text_);
    std::uint32_t count = 0;
    ASSERT_EQ(revisions->GetCount(&count), S_OK);
    for (const std::int32_t index : {-1, static_cast<std::int32_t>(count), INT32_MIN, INT32_MAX})
    {
        ComPtr<IRevision> revision;
        EXPECT_THAT(OutcomeOf([&] { return revisions->GetItem(index, revision.Out()); }),
                    FailedBare(E_INVALIDARG));
    }
}

class WorkingCopyRevision : public BackendTest
{
};

TEST_P(WorkingCopyRevision, IsTheFirst)
{
    const auto list = Revisions(Address(u"text.txt"));
    ASSERT_EQ(list.size(), 3U);
    const bool isId = Row().workingCopy == WorkingCopy::Id;
    EXPECT_EQ(isId ? list[0].id : list[0].description, u"Working Copy");
    EXPECT_EQ(list[0].uri, TheSample().data->OnDisk(u"text.txt").u16string());
}

class NoRevisions : public BackendTest
{
};

TEST_P(NoRevisions, OfWhatIsMissing)
{
    EXPECT_FALSE(HasRevisions(Address(u"none.txt")));
    EXPECT_THAT(Revisions(Address(u"none.txt")), IsEmpty());
}

TEST_P(NoRevisions, OfWhatIsNoAddress)
{
    for (const RefusedAddress& row : Row().refused)
    {
        EXPECT_FALSE(HasRevisions(std::u16string(row.address)));
        EXPECT_THAT(Revisions(std::u16string(row.address)), IsEmpty());
    }
}

TEST_P(NoRevisions, OfNoPathAtAll)
{
    VARIANT_BOOL has = VARIANT_TRUE;
    ComPtr<IRevisions> list;
    const auto revisions = system.As<IFileSystemRevisions>();
    EXPECT_THAT(OutcomeOf([&] { return revisions->HasRevisions(nullptr, 0, &has); }), Succeeded());
    EXPECT_EQ(has, VARIANT_FALSE);
    EXPECT_THAT(OutcomeOf([&] { return revisions->GetRevisions(nullptr, 0, list.Out()); }),
                Succeeded());
    std::uint32_t count = 7;
    EXPECT_EQ(list->GetCount(&count), S_OK);
    EXPECT_EQ(count, 0U);
}

bool HasHistory(const Backend& backend)
{
    return backend.history;
}

bool HasWorkingCopy(const Backend& backend)
{
    return backend.workingCopy != WorkingCopy::None;
}

bool AnswersForRevisions(const Backend& backend)
{
    return backend.revisions;
}

TARNWELL_OVER_BACKENDS(RevisionLists, BackendsThat(HasHistory));
TARNWELL_OVER_BACKENDS(WorkingCopyRevision, BackendsThat(HasWorkingCopy));
TARNWELL_OVER_BACKENDS(NoRevisions, BackendsThat(AnswersForRevisions));

} // namespace
} // namespace tarnwell::test
