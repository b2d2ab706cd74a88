// Revisions: the collection and its entries, and the calls that hide every failure.
#include "frame/revisions.h"
#include "addressed/filesystemobject.h"
#include "frame/exception.h"
#include "module/outcome.h"
#include "platform/wide.h"

#include <tarnwell/classes.h>

#include <atomic>
#include <limits>
#include <new>
#include <thread>

namespace tarnwell::test
{
namespace
{

const RevisionRecord record{u"id", u"description", u"author", u"x://uri", 11, 22};

ComPtr<IRevisions> Collection(std::vector<RevisionRecord> records)
{
    ComPtr<IRevisions> revisions;
    EXPECT_EQ(MakeRevisions(std::move(records), CLSID_GITFileSystem, revisions.Out()), S_OK);
    return revisions;
}

std::uint32_t Count(const ComPtr<IRevisions>& revisions)
{
    std::uint32_t count = 99;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    return count;
}

ComPtr<IRevision> Entry(const ComPtr<IRevisions>& revisions, std::int32_t index = 0)
{
    ComPtr<IRevision> revision;
    EXPECT_EQ(revisions->GetItem(index, revision.Out()), S_OK);
    return revision;
}

std::u16string Text(const ComPtr<IRevision>& revision, HRESULT (IRevision::*getter)(BSTR*))
{
    Bstr text;
    EXPECT_EQ((revision.Get()->*getter)(text.Out()), S_OK);
    EXPECT_TRUE(text) << "texts are never null on success";
    return std::u16string(text.View());
}

std::uint64_t Time(const ComPtr<IRevision>& revision, HRESULT (IRevision::*getter)(std::uint64_t*))
{
    std::uint64_t time = 99;
    EXPECT_EQ((revision.Get()->*getter)(&time), S_OK);
    return time;
}

TEST(Revisions, AnEntryTellsItsRecord)
{
    const auto revision = Entry(Collection({record}));
    EXPECT_EQ(Text(revision, &IRevision::GetRevisionId), u"id");
    EXPECT_EQ(Text(revision, &IRevision::GetDescription), u"description");
    EXPECT_EQ(Text(revision, &IRevision::GetAuthor), u"author");
    EXPECT_EQ(Text(revision, &IRevision::GetUri), u"x://uri");
    EXPECT_EQ(Time(revision, &IRevision::GetModifiedTime), 11U);
    EXPECT_EQ(Time(revision, &IRevision::GetRevisionTime), 22U);
}

TEST(Revisions, AnEmptyRecordHasEmptyTexts)
{
    const auto revision = Entry(Collection({RevisionRecord{}}));
    for (const auto getter : {&IRevision::GetRevisionId, &IRevision::GetDescription,
                              &IRevision::GetAuthor, &IRevision::GetUri})
        EXPECT_EQ(Text(revision, getter), u"");
    EXPECT_EQ(Time(revision, &IRevision::GetModifiedTime), 0U);
}

TEST(Revisions, KeepTheOrderOfTheList)
{
    std::vector<RevisionRecord> records(3);
    records[0].id = u"b";
    records[1].id = u"a";
    records[2].id = u"c";
    const auto revisions = Collection(records);
    ASSERT_EQ(Count(revisions), 3U);
    EXPECT_EQ(Text(Entry(revisions, 0), &IRevision::GetRevisionId), u"b");
    EXPECT_EQ(Text(Entry(revisions, 1), &IRevision::GetRevisionId), u"a");
    EXPECT_EQ(Text(Entry(revisions, 2), &IRevision::GetRevisionId), u"c");
}

TEST(Revisions, OfAnEmptyListHaveNoItem)
{
    const auto revisions = Collection({});
    EXPECT_EQ(Count(revisions), 0U);
    auto* revision = reinterpret_cast<IRevision*>(1);
    EXPECT_THAT(OutcomeOf([&] { return revisions->GetItem(0, &revision); }),
                FailedBare(E_INVALIDARG));
    EXPECT_EQ(revision, nullptr);
}

TEST(Revisions, AnIndexPastTheEndOrBelowZeroIsRefusedBare)
{
    const auto revisions = Collection({record, record});
    for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max()})
    {
        auto* revision = reinterpret_cast<IRevision*>(1);
        EXPECT_THAT(OutcomeOf([&] { return revisions->GetItem(index, &revision); }),
                    FailedBare(E_INVALIDARG))
            << index;
        EXPECT_EQ(revision, nullptr);
    }
}

TEST(Revisions, EachCallMakesAnEntryOfItsOwn)
{
    const auto revisions = Collection({record});
    EXPECT_NE(Entry(revisions).Get(), Entry(revisions).Get());
}

TEST(Revisions, AnEntryOutlivesItsCollection)
{
    auto revisions = Collection({record});
    const auto revision = Entry(revisions);
    revisions.Reset();
    EXPECT_EQ(Text(revision, &IRevision::GetUri), u"x://uri");
}

TEST(Revisions, ARecordIsMadeWhenItIsAskedFor)
{
    std::vector<std::size_t> asked;
    ComPtr<IRevisions> revisions;
    const auto make = [&](std::size_t index) {
        asked.push_back(index);
        return record;
    };
    EXPECT_EQ(MakeRevisions({3, make}, CLSID_GITFileSystem, revisions.Out()), S_OK);
    EXPECT_EQ(Count(revisions), 3U);
    EXPECT_TRUE(asked.empty());
    const auto last = Entry(revisions, 2);
    EXPECT_EQ(Text(last, &IRevision::GetRevisionId), u"id");
    EXPECT_EQ(Text(last, &IRevision::GetAuthor), u"author");
    EXPECT_EQ(asked, std::vector<std::size_t>{2});
    EXPECT_NE(revisions->GetItem(3, ComPtr<IRevision>().Out()), S_OK);
    EXPECT_EQ(asked.size(), 1U);
}

TEST(Revisions, AnyThreadMayRead)
{
    const auto revisions = Collection({record});
    const auto entry = Entry(revisions);
    std::atomic<int> right = 0;
    const auto read = [&] {
        for (int i = 0; i < 100; ++i)
            right += Text(entry, &IRevision::GetAuthor) == u"author" &&
                     Text(Entry(revisions), &IRevision::GetRevisionId) == u"id";
    };
    std::thread first(read);
    std::thread second(read);
    first.join();
    second.join();
    EXPECT_EQ(right, 200);
}

TEST(Revisions, NullPointersNameTheClassesOwnInterface)
{
    const auto revisions = Collection({record});
    const auto revision = Entry(revisions);
    EXPECT_TRUE(OutcomeOf([&] { return revisions->GetCount(nullptr); }).error->interfaceId ==
                IID_IRevisions);
    EXPECT_TRUE(OutcomeOf([&] { return revision->GetUri(nullptr); }).error->interfaceId ==
                IID_IRevision);
}

// What a file system finds, or how it fails.
using FailingRead = std::vector<RevisionRecord> (*)();

constexpr FailingRead failures[] = {
    [] { return std::vector<RevisionRecord>(); },
    []() -> std::vector<RevisionRecord> {
        throw ComException(E_FAIL, u"hidden", {u"fake", 1});
    },
    []() -> std::vector<RevisionRecord> { throw std::bad_alloc(); },
    []() -> std::vector<RevisionRecord> { throw 42; },
};

// A file system that has nothing but revisions.
class Historian : public RevisionsFileSystemObject
{
public:
    Historian() : RevisionsFileSystemObject(CLSID_GITFileSystem) {}

    FailingRead read = nullptr;
    int timesRead = 0;
    std::u16string pathRead;

protected:
    ~Historian() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string&, bool) override
    {
        return {};
    }
    ComPtr<IFolder> CreateFolderObject(const std::u16string&, bool) override
    {
        return {};
    }
    RevisionList ReadRevisions(const std::u16string& path) override
    {
        ++timesRead;
        pathRead = path;
        return read();
    }
};

class RevisionCalls : public testing::Test
{
protected:
    const ComPtr<ComObject<Historian>> system_ = NewObject<Historian>();
};

TEST_F(RevisionCalls, FailuresReadAsNoRevisions)
{
    for (const FailingRead read : failures)
    {
        system_->read = read;
        VARIANT_BOOL has = 77;
        EXPECT_THAT(OutcomeOf([&] { return system_->HasRevisions(nullptr, 0, &has); }),
                    Succeeded());
        EXPECT_EQ(has, VARIANT_FALSE);
        ComPtr<IRevisions> revisions;
        EXPECT_THAT(OutcomeOf([&] { return system_->GetRevisions(nullptr, 0, revisions.Out()); }),
                    Succeeded());
        ASSERT_TRUE(revisions);
        EXPECT_EQ(Count(revisions), 0U);
    }
}

TEST_F(RevisionCalls, OneRecordIsEnough)
{
    system_->read = [] {
        return std::vector<RevisionRecord>{record};
    };
    VARIANT_BOOL has = 77;
    EXPECT_EQ(system_->HasRevisions(Wide(u"the path"), 0, &has), S_OK);
    EXPECT_EQ(static_cast<std::uint16_t>(has), 65535U);
    EXPECT_EQ(system_->pathRead, u"the path");
    ComPtr<IRevisions> revisions;
    EXPECT_EQ(system_->GetRevisions(Wide(u"another"), 0, revisions.Out()), S_OK);
    EXPECT_EQ(system_->pathRead, u"another");
    EXPECT_EQ(Count(revisions), 1U);
}

TEST_F(RevisionCalls, ANullPointerIsRefusedBeforeAnythingIsRead)
{
    const auto refused = Refused(E_POINTER, u"Internal error (null pointer argument).");
    EXPECT_THAT(OutcomeOf([&] { return system_->HasRevisions(nullptr, 0, nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return system_->GetRevisions(nullptr, 0, nullptr); }), refused);
    EXPECT_EQ(system_->timesRead, 0);
}

} // namespace
} // namespace tarnwell::test
