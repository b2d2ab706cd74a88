// How trees of revisions are asked, and what becomes of them.
#include "backends/suites/stricttest.h"

#include <algorithm>

namespace tarnwell::test
{
namespace
{

class TreeCalls : public StrictTest
{
};

TEST_P(TreeCalls, StreamsOutliveTreesAndTreesTheirFileSystem)
{
    auto tree = LastTree();
    ComPtr<IFileStream> text, large;
    ASSERT_EQ(tree->Open(Ole(u"text.txt"), nullptr, text.Out()), S_OK);
    ASSERT_EQ(tree->Open(Ole(u"large"), nullptr, large.Out()), S_OK);
    system.Reset();
    EXPECT_EQ(ContentOf(tree, u"again.txt"), "2");
    tree.Reset();
    EXPECT_EQ(ReadAll(text), "content");
    EXPECT_TRUE(ReadAll(large) == largeContent);
}

TEST_P(TreeCalls, TellHowMuchOfAContentHasCome)
{
    const auto tree = LastTree();
    const std::uint64_t size = largeContent.size();
    FakeAmounts host;
    ComPtr<IFileStream> stream;
    ASSERT_EQ(tree->Open(Ole(u"large"), &host, stream.Out()), S_OK);
    const std::vector<FakeAmounts::Amount> told = host.Told();
    ASSERT_GE(told.size(), 3U); // the beginning, a piece, the end
    EXPECT_EQ(told.front().done, 0U);
    EXPECT_EQ(told.back().done, size);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end(), [](const auto& left, const auto& right) {
        return left.done < right.done;
    }));
    for (const FakeAmounts::Amount& amount : told)
        EXPECT_TRUE(amount.total == size || amount.total == AmountUnknown) << amount.total;
    EXPECT_EQ(host.references, 0U);
    EXPECT_TRUE(ReadAll(stream) == largeContent);
}

TEST_P(TreeCalls, StandSideBySide)
{
    const auto last = LastTree();
    const auto first = Tree(AddressAt(u"", Strictly().firstId));
    for (int round = 0; round < 3; ++round)
    {
        EXPECT_EQ(ContentOf(last, u"text.txt"), "content");
        EXPECT_EQ(ContentOf(first, u"text.txt"), "first");
    }
}

// A host may ask for what it is told of, of this tree or of another one.
TEST_P(TreeCalls, MayBeAskedInBetween)
{
    const auto tree = LastTree();
    for (const bool recursive : {false, true})
    {
        const auto expected = ListOf(tree, {}, recursive);
        constexpr std::size_t enough = 3; // of slow clients
        std::vector<TreeEntry> found;
        TreeSink sink;
        sink.answer = [&] {
            const TreeEntry entry = sink.entries.back();
            if (sink.entries.size() > enough)
                return S_OK;
            found.push_back(FindIn(tree, entry.name));
            EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
            EXPECT_TRUE(entry.kind != TreeFile || ContentOf(tree, entry.name).size() == entry.size);
            if (sink.entries.size() == 1)
            {
                EXPECT_EQ(ContentOf(LastTree(), u"text.txt"), "content");
            }
            return S_OK;
        };
        EXPECT_EQ(tree->List(Ole(u""), recursive ? VARIANT_TRUE : VARIANT_FALSE, &sink), S_OK);
        EXPECT_EQ(sink.entries, expected);
        ASSERT_GT(expected.size(), enough);
        EXPECT_EQ(found, std::vector(expected.begin(), expected.begin() + enough));
    }
    EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
}

// Also where it is only asked whether to go on, since a program may do anything meanwhile.
TEST_P(TreeCalls, MayBeAskedWhileTheHostIs)
{
    const auto tree = LastTree();
    TreeSink sink;
    bool isAsking = false;
    sink.wantsMore = [&] {
        if (!isAsking)
        {
            isAsking = true;
            EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
            isAsking = false;
        }
        return true;
    };
    EXPECT_EQ(tree->Find(Ole(u"text.txt"), &sink), S_OK);
    EXPECT_EQ(tree->List(Ole(u"sub"), VARIANT_TRUE, &sink), S_OK);
    ComPtr<IFileStream> stream;
    ASSERT_EQ(tree->Open(Ole(u"large"), &sink, stream.Out()), S_OK);
    EXPECT_TRUE(ReadAll(stream) == largeContent);
    EXPECT_GE(sink.questions, 3);
}

TEST_P(TreeCalls, AreCancelledAndGoOn)
{
    const auto tree = LastTree();
    const auto cancelled = FailedSaying(E_ABORT, u"The operation was cancelled.");
    TreeSink sink;
    sink.wantsMore = [] {
        return false;
    };
    for (int round = 0; round < 2; ++round)
    {
        for (const VARIANT_BOOL recursive : {VARIANT_FALSE, VARIANT_TRUE})
        {
            EXPECT_THAT(OutcomeOf([&] { return tree->List(Ole(u"sub"), recursive, &sink); }),
                        cancelled);
        }
        EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(u"sub/inner.txt"), &sink); }), cancelled);
        ComPtr<IFileStream> stream;
        EXPECT_THAT(
            OutcomeOf([&] { return tree->Open(Ole(u"sub/inner.txt"), &sink, stream.Out()); }),
            cancelled);
        ComPtr<ITree> none;
        EXPECT_THAT(OpenTree(Strictly().data->Address(u""), none, {}, &sink), cancelled);
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
    }
    EXPECT_EQ(sink.questions, 10); // each call asks before anything else
    EXPECT_EQ(sink.references, 0U);
    EXPECT_THAT(sink.entries, testing::IsEmpty());
}

TEST_P(TreeCalls, EndWhereTheHostHasEnoughAndFailAsItDoes)
{
    const auto tree = LastTree();
    for (const VARIANT_BOOL recursive : {VARIANT_FALSE, VARIANT_TRUE})
    {
        TreeSink enough;
        enough.answer = [] {
            return S_FALSE;
        };
        EXPECT_THAT(OutcomeOf([&] { return tree->List(Ole(u""), recursive, &enough); }),
                    Succeeded());
        EXPECT_EQ(enough.entries.size(), 1U);
        TreeSink failing;
        failing.answer = [] {
            return Status(0x80041234);
        };
        EXPECT_THAT(OutcomeOf([&] { return tree->List(Ole(u""), recursive, &failing); }),
                    FailedBare(Status(0x80041234)));
        EXPECT_EQ(failing.entries.size(), 1U);
    }
    TreeSink sink;
    sink.answer = [] {
        return S_FALSE;
    };
    EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(u"text.txt"), &sink); }), Succeeded());
    sink.answer = [] {
        return Status(0x80041234);
    };
    EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(u"text.txt"), &sink); }),
                FailedBare(Status(0x80041234)));
    EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
}

TEST_P(TreeCalls, AreObjectsOfTheirOwn)
{
    const auto tree = LastTree();
    const auto identity = tree.As<::IUnknown>();
    EXPECT_TRUE(identity);
    EXPECT_EQ(tree.As<ITree>().As<::IUnknown>().Get(), identity.Get());
    const auto supports = tree.As<::ISupportErrorInfo>();
    ASSERT_TRUE(supports);
    EXPECT_EQ(supports.As<::IUnknown>().Get(), identity.Get());
    const auto files = tree.As<ITreeWorkFiles>();
    ASSERT_TRUE(files);
    EXPECT_EQ(files.As<::IUnknown>().Get(), identity.Get());
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_ITree), S_OK);
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_ITreeWorkFiles), S_OK);
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_IFileSystemTrees), S_FALSE);
    EXPECT_FALSE(tree.As<IFileSystem>());
    EXPECT_FALSE(tree.As<IFileSystemTrees>());
    EXPECT_NE(LastTree().As<::IUnknown>().Get(), identity.Get());
}

TEST_P(TreeCalls, RefuseNullPointers)
{
    const auto tree = LastTree();
    const auto trees = system.As<IFileSystemTrees>();
    const auto refused = Refused(E_POINTER, u"Internal error (null pointer argument).");
    EXPECT_THAT(OutcomeOf([&] { return tree->GetRevisionId(nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->GetRevisionTime(nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(u""), nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->List(Ole(u""), VARIANT_TRUE, nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->Open(Ole(u""), nullptr, nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] {
                    return tree.As<ITreeWorkFiles>()->GetRecordedId(Ole(u""), nullptr, nullptr);
                }),
                refused);
    EXPECT_THAT(OutcomeOf([&] { return trees->OpenTree(Ole(u""), nullptr, nullptr, nullptr); }),
                refused);
    // A null text is an empty one.
    TreeSink sink;
    EXPECT_EQ(tree->Find(nullptr, &sink), S_OK);
    EXPECT_EQ(sink.entries.size(), 1U);
}

// Nothing but its bytes says what a file is that is in no work tree.
TEST_P(TreeCalls, SayNothingOfFilesElsewhere)
{
    const TempFolder elsewhere;
    WriteBytes(elsewhere / u"text.txt", "content");
    const auto files = LastTree().As<ITreeWorkFiles>();
    for (const std::u16string& path : {elsewhere / u"text.txt", std::u16string()})
    {
        Bstr id;
        EXPECT_THAT(OutcomeOf([&] { return files->GetRecordedId(Ole(path), nullptr, id.Out()); }),
                    Succeeded());
        ASSERT_TRUE(id);
        EXPECT_EQ(std::u16string(id.View()), u"");
    }
}

TEST_P(TreeCalls, NameTheirInterfacesInFailures)
{
    const auto tree = LastTree();
    EXPECT_THAT(FindFailure(tree, u"none"), NamesInterface(IID_ITree));
    EXPECT_THAT(OpenFailure(tree, u"none"), NamesInterface(IID_ITree));
    EXPECT_THAT(TreeFailure(Strictly().data->Address(u"none")),
                NamesInterface(IID_IFileSystemTrees));
}

TARNWELL_OVER_BACKENDS(TreeCalls, BackendsThat(ShowsTrees));

} // namespace
} // namespace tarnwell::test
