// Trees of revisions. Why there is none is in strictfailures.cpp.
#include "backends/suites/stricttest.h"

#include <tarnwell/text.h>

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

class Trees : public StrictTest
{
protected:
    // The names of all files, as the tree of the whole has them.
    std::vector<std::u16string> Expected(const std::map<std::u16string, std::string>& files) const
    {
        std::vector<std::u16string> names;
        for (const auto& [name, bytes] : files)
            names.push_back(Strictly().data->NameInTree(name));
        return names;
    }
    std::u16string InTree(std::u16string_view name) const
    {
        return Strictly().data->NameInTree(name);
    }
};

std::vector<std::u16string> NamesOfContents(const std::vector<TreeEntry>& entries)
{
    std::vector<std::u16string> names;
    for (const TreeEntry& entry : entries)
    {
        if (entry.kind != TreeFolder)
            names.push_back(entry.name);
    }
    return names;
}

std::u16string FolderOf(const std::u16string& name)
{
    const std::size_t slash = name.rfind(u'/');
    return slash == std::u16string::npos ? std::u16string() : name.substr(0, slash);
}

TEST_P(Trees, ShowWhatThereWas)
{
    const auto first = Tree(AddressAt(u"", Strictly().firstId));
    const auto last = LastTree();
    EXPECT_THAT(NamesOfContents(ListOf(first, {}, true)),
                UnorderedElementsAreArray(Expected(Strictly().firstFiles)));
    EXPECT_THAT(NamesOfContents(ListOf(last, {}, true)),
                UnorderedElementsAreArray(Expected(Strictly().lastFiles)));
    EXPECT_EQ(IdOf(first), Strictly().firstId);
    EXPECT_EQ(IdOf(last), Strictly().lastId);
    EXPECT_EQ(ContentOf(first, u"text.txt"), "first");
    EXPECT_EQ(ContentOf(last, u"text.txt"), "content");
}

TEST_P(Trees, AreOfTheRevisionThatHistoriesTellOf)
{
    for (const HistoryEntry& entry : History(Strictly().data->Address(u"text.txt")))
    {
        const auto tree = Tree(entry.address);
        EXPECT_EQ(IdOf(tree), entry.id);
        EXPECT_EQ(TimeOf(tree), entry.time);
    }
}

TEST_P(Trees, AreNamedByAllThatTheSystemUnderstands)
{
    const std::u16string whole = Strictly().data->Address(u"");
    EXPECT_EQ(IdOf(Tree(whole)), Strictly().lastId);
    EXPECT_EQ(IdOf(Tree(whole, Strictly().firstId)), Strictly().firstId);
    for (const std::u16string& name : Strictly().namesOfFirst)
        EXPECT_EQ(IdOf(Tree(whole, name)), Strictly().firstId) << testing::PrintToString(name);
}

TEST_P(Trees, ListAFolderOrAllThatIsBelowIt)
{
    const auto tree = LastTree();
    const auto all = ListOf(tree, {}, true);
    std::vector<std::u16string> ofTop, ofSub, belowSub;
    for (const TreeEntry& entry : all)
    {
        const std::u16string folder = FolderOf(entry.name);
        if (folder.empty())
            ofTop.push_back(entry.name);
        if (folder == u"sub")
            ofSub.push_back(entry.name);
        if (entry.name.starts_with(u"sub/"))
            belowSub.push_back(entry.name);
        // A folder comes before what is in it.
        const auto earlier = std::find_if(all.begin(), all.end(), [&](const TreeEntry& each) {
            return each.name == folder && each.kind == TreeFolder;
        });
        EXPECT_TRUE(folder.empty() || (earlier != all.end() && &*earlier < &entry))
            << testing::PrintToString(entry.name);
    }
    EXPECT_THAT(NamesOf(ListOf(tree)), UnorderedElementsAreArray(ofTop));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub")), UnorderedElementsAreArray(ofSub));
    EXPECT_THAT(NamesOf(ListOf(tree, u"sub", true)), UnorderedElementsAreArray(belowSub));
    EXPECT_THAT(ofSub, testing::UnorderedElementsAre(u"sub/deep", u"sub/inner.txt",
                                                     InTree(u"sub/new name.txt")));
}

TEST_P(Trees, TellTheSameFactsHoweverTheyAreAsked)
{
    const auto tree = LastTree();
    for (const bool recursive : {false, true})
    {
        for (const TreeEntry& entry : ListOf(tree, {}, recursive))
        {
            const TreeEntry found = FindIn(tree, entry.name);
            EXPECT_EQ(found.name, entry.name);
            EXPECT_EQ(found.kind, entry.kind);
            EXPECT_EQ(found.flags, entry.flags);
            EXPECT_EQ(found.size, entry.size);
            EXPECT_EQ(found.contentId, entry.contentId);
            EXPECT_EQ(found.modified, entry.modified);
        }
    }
}

TEST_P(Trees, TellFacts)
{
    const auto tree = LastTree();
    const auto expect = [&](std::u16string_view name, TreeItemKind kind, std::uint32_t flags,
                            std::uint64_t size) {
        const TreeEntry entry = FindIn(tree, InTree(name));
        EXPECT_EQ(entry.kind, std::uint32_t{kind}) << testing::PrintToString(name);
        EXPECT_EQ(entry.flags & TreeItemExecutable, flags) << testing::PrintToString(name);
        EXPECT_EQ(entry.size, size) << testing::PrintToString(name);
        EXPECT_EQ(entry.modified, TimeOf(tree));
    };
    expect(u"", TreeFolder, 0, 0);
    expect(u"sub", TreeFolder, 0, 0);
    expect(u"text.txt", TreeFile, 0, 7);
    expect(u"empty", TreeFile, 0, 0);
    expect(u"large", TreeFile, 0, largeContent.size());
    if (Row().strict.links)
        expect(u"link", TreeLink, 0, 8);
    if (Row().strict.programs)
        expect(u"program", TreeFile, TreeItemExecutable, 10);
}

TEST_P(Trees, ContentsThatAreEqualHaveEqualIds)
{
    const auto tree = LastTree();
    const std::u16string same = FindIn(tree, u"same.txt").contentId;
    if (!Row().strict.contentIds)
    {
        EXPECT_EQ(same, u"");
        return;
    }
    EXPECT_NE(same, u"");
    EXPECT_EQ(FindIn(tree, u"sub/inner.txt").contentId, same);
    EXPECT_NE(FindIn(tree, u"text.txt").contentId, same);
    const auto first = Tree(AddressAt(u"", Strictly().firstId));
    EXPECT_EQ(FindIn(first, u"same.txt").contentId, same);
    EXPECT_NE(FindIn(first, u"text.txt").contentId, FindIn(tree, u"text.txt").contentId);
}

TEST_P(Trees, ContentsAreByteForByte)
{
    const auto tree = LastTree();
    // More than once, in another order each time, as one client may answer all of them.
    for (int round = 0; round < 2; ++round)
    {
        EXPECT_EQ(ContentOf(tree, u"binary"), binaryContent);
        EXPECT_EQ(ContentOf(tree, u"empty"), "");
        EXPECT_TRUE(ContentOf(tree, u"large") == largeContent);
        EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
        EXPECT_EQ(ContentOf(tree, u"sub/deep/bottom.txt"), "bottom");
        EXPECT_EQ(ContentOf(tree, u"again.txt"), "2");
        if (Row().strict.links)
        {
            EXPECT_EQ(ContentOf(tree, u"link"), "text.txt");
        }
    }
}

TEST_P(Trees, OfNamesOfAllKinds)
{
    const auto tree = LastTree();
    for (const auto& names : {Row().names, Row().strict.names})
    {
        for (const std::u16string_view name : names)
        {
            const std::string bytes = EncodeName(name).value();
            EXPECT_EQ(ContentOf(tree, InTree(name)), bytes);
            const auto alone = Tree(Strictly().data->Address(name), Strictly().lastId);
            EXPECT_EQ(ContentOf(alone), bytes);
            EXPECT_EQ(FindIn(alone, u"").size, bytes.size());
        }
    }
}

TEST_P(Trees, MayBeginAtAFolder)
{
    const auto tree = Tree(AddressAt(u"sub", Strictly().lastId));
    EXPECT_THAT(NamesOf(ListOf(tree, {}, true)),
                testing::UnorderedElementsAre(u"deep", u"deep/bottom.txt", u"inner.txt",
                                              InTree(u"new name.txt")));
    EXPECT_THAT(NamesOf(ListOf(tree, u"deep")), ElementsAre(u"deep/bottom.txt"));
    EXPECT_EQ(ContentOf(tree, u"deep/bottom.txt"), "bottom");
    EXPECT_EQ(FindIn(tree, u"").name, u"");
    EXPECT_EQ(FindIn(tree, u"").kind, std::uint32_t{TreeFolder});
    EXPECT_EQ(FindFailure(tree, u"text.txt").status, HistoryNoPath);
    EXPECT_EQ(FindFailure(tree, u"../text.txt").status, HistoryNoPath);
}

TEST_P(Trees, MayBeginAtAFile)
{
    const auto tree = Tree(AddressAt(u"sub/inner.txt", Strictly().lastId));
    EXPECT_EQ(ContentOf(tree), "inner");
    const TreeEntry entry = FindIn(tree, u"");
    EXPECT_EQ(entry.name, u"");
    EXPECT_EQ(entry.kind, std::uint32_t{TreeFile});
    EXPECT_EQ(entry.size, 5U);
    for (const bool recursive : {false, true})
    {
        EXPECT_THAT(
            ListFailure(tree, u"", recursive),
            FailedSaying(HistoryWrongKind, u"\"" + AddressAt(u"sub/inner.txt", Strictly().lastId) +
                                               u"\" isn't a folder."));
    }
    EXPECT_EQ(FindFailure(tree, u"x").status, HistoryNoPath);
}

TEST_P(Trees, OfWhatIsGoneAreInTheRevisionsBefore)
{
    EXPECT_EQ(ContentOf(Tree(AddressAt(u"gone.txt", Strictly().beforeGoneId))), "of no use");
    EXPECT_EQ(TreeFailure(AddressAt(u"gone.txt", Strictly().lastId)).status, HistoryNoPath);
    EXPECT_EQ(FindFailure(LastTree(), u"gone.txt").status, HistoryNoPath);
    EXPECT_EQ(FindFailure(LastTree(), u"old.txt").status, HistoryNoPath);
}

TEST_P(Trees, NamesAreExact)
{
    const auto tree = LastTree();
    for (const char16_t* const name :
         {u"none", u"text.txt/x", u"TEXT.TXT", u"*", u"text.tx?", u"text.txt ", u"../text.txt",
          u"./text.txt", u"sub/../text.txt", u"/text.txt", u"sub//inner.txt", u"text.txt\n",
          u"text.txt/", u"sub/", u"-", u"--help", u"\xD800"})
    {
        EXPECT_THAT(FindFailure(tree, name),
                    FailedSaying(HistoryNoPath, u"Can't find \"" + std::u16string(name) + u"\" in"))
            << testing::PrintToString(name);
        EXPECT_EQ(OpenFailure(tree, name).status, HistoryNoPath) << testing::PrintToString(name);
        for (const bool recursive : {false, true})
        {
            EXPECT_EQ(ListFailure(tree, name, recursive).status, HistoryNoPath)
                << testing::PrintToString(name);
        }
    }
    EXPECT_EQ(ContentOf(tree, u"text.txt"), "content");
}

TEST_P(Trees, TellTheKindThatIsNeeded)
{
    const auto tree = LastTree();
    for (const bool recursive : {false, true})
    {
        EXPECT_THAT(ListFailure(tree, u"text.txt", recursive),
                    FailedSaying(HistoryWrongKind, u"\"text.txt\" isn't a folder."));
    }
    EXPECT_THAT(OpenFailure(tree, u"sub"),
                FailedSaying(HistoryWrongKind, u"\"sub\" isn't a file."));
    EXPECT_EQ(OpenFailure(tree, u"").status, HistoryWrongKind);
}

TEST_P(Trees, StreamsOutliveTreesAndTreesTheirFileSystem)
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

TEST_P(Trees, TellHowMuchOfAContentHasCome)
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

TEST_P(Trees, StandSideBySide)
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
TEST_P(Trees, MayBeAskedInBetween)
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
TEST_P(Trees, MayBeAskedWhileTheHostIs)
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

TEST_P(Trees, AreCancelledAndGoOn)
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
    EXPECT_THAT(sink.entries, IsEmpty());
}

TEST_P(Trees, EndWhereTheHostHasEnoughAndFailAsItDoes)
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

TEST_P(Trees, AreObjectsOfTheirOwn)
{
    const auto tree = LastTree();
    const auto identity = tree.As<::IUnknown>();
    EXPECT_TRUE(identity);
    EXPECT_EQ(tree.As<ITree>().As<::IUnknown>().Get(), identity.Get());
    const auto supports = tree.As<::ISupportErrorInfo>();
    ASSERT_TRUE(supports);
    EXPECT_EQ(supports.As<::IUnknown>().Get(), identity.Get());
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_ITree), S_OK);
    EXPECT_EQ(supports->InterfaceSupportsErrorInfo(IID_IFileSystemTrees), S_FALSE);
    EXPECT_FALSE(tree.As<IFileSystem>());
    EXPECT_FALSE(tree.As<IFileSystemTrees>());
    EXPECT_NE(LastTree().As<::IUnknown>().Get(), identity.Get());
}

TEST_P(Trees, RefuseNullPointers)
{
    const auto tree = LastTree();
    const auto trees = system.As<IFileSystemTrees>();
    const auto refused = Refused(E_POINTER, u"Internal error (null pointer argument).");
    EXPECT_THAT(OutcomeOf([&] { return tree->GetRevisionId(nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->GetRevisionTime(nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(u""), nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->List(Ole(u""), VARIANT_TRUE, nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return tree->Open(Ole(u""), nullptr, nullptr); }), refused);
    EXPECT_THAT(OutcomeOf([&] { return trees->OpenTree(Ole(u""), nullptr, nullptr, nullptr); }),
                refused);
    // A null text is an empty one.
    TreeSink sink;
    EXPECT_EQ(tree->Find(nullptr, &sink), S_OK);
    EXPECT_EQ(sink.entries.size(), 1U);
}

TEST_P(Trees, NameTheirInterfacesInFailures)
{
    const auto tree = LastTree();
    EXPECT_THAT(FindFailure(tree, u"none"), NamesInterface(IID_ITree));
    EXPECT_THAT(OpenFailure(tree, u"none"), NamesInterface(IID_ITree));
    EXPECT_THAT(TreeFailure(Strictly().data->Address(u"none")),
                NamesInterface(IID_IFileSystemTrees));
}

TARNWELL_OVER_BACKENDS(Trees, BackendsThat(ShowsTrees));

} // namespace
} // namespace tarnwell::test
