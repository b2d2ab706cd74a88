// What holds for any Perforce server: of the stand-in for the client, and of a real one where there
// is one (./test perforce-live).
#include "module/perforcetest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::u16string Digits(int number)
{
    return Widened(std::to_string(number));
}

class Perforce : public PerforceServerTest
{
protected:
    std::vector<std::u16string> Names(const std::u16string& address) const
    {
        std::vector<std::u16string> names;
        for (const Facts& facts : List(address))
            names.push_back(facts.name);
        return names;
    }
    std::u16string Comparable(const std::u16string& address) const
    {
        Bstr url;
        File(address).As<IFileSystemItemComparableUrl>()->GetComparableUrl(url.Out());
        return std::u16string(url.View());
    }
};

TEST_F(Perforce, AListingHasFilesAndThenFoldersWithAllFacts)
{
    server_->Submit("dir/sub/b.txt", "x");
    server_->Submit("dir/a.txt", "one");
    server_->Submit("dir/a.txt", "three");
    const std::u16string dir = server_->Address("dir");
    const auto items = List(dir);
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].path, dir + u"/a.txt#2") << "pinned to what was read";
    EXPECT_EQ(items[0].name, u"a.txt#2");
    EXPECT_EQ(items[0].parent, dir);
    EXPECT_EQ(items[0].attributes, 129U);
    EXPECT_EQ(items[0].size, 5U);
    EXPECT_GT(items[0].time, 128883312000000000U);
    EXPECT_EQ(items[1].path, dir + u"/sub");
    EXPECT_EQ(items[1].name, u"sub");
    EXPECT_EQ(items[1].attributes, 16U);
    EXPECT_EQ(items[1].time, 116444736000000000U) << "nobody knows";
}

TEST_F(Perforce, NamedItemsHaveTheFactsOfListedOnes)
{
    server_->Submit("dir/a.txt", "hello");
    const auto items = List(server_->Address("dir"));
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(FileFacts(items[0].path), items[0]);
    EXPECT_EQ(FileFacts(server_->Address("dir/a.txt")).size, 5U);
    const auto folders = List(server_->Address());
    ASSERT_THAT(folders, SizeIs(1));
    EXPECT_EQ(FactsOf(Folder(folders[0].path)), folders[0]);
}

TEST_F(Perforce, SlashesAtTheEndAndMissingOnesAtTheStartDoNotMatter)
{
    server_->Submit("dir/a.txt", "hello");
    const std::u16string dir = server_->Address("dir");
    EXPECT_EQ(List(dir + u"///").size(), 1U);
    const std::u16string shorter = u"p4://" + dir.substr(7);
    EXPECT_EQ(List(shorter).at(0).path, dir + u"/a.txt#1");
    EXPECT_EQ(Content(shorter + u"/a.txt"), "hello");
    EXPECT_EQ(FactsOf(Folder(dir + u"/a.txt/")).attributes, 16U) << "an empty name is a root";
}

TEST_F(Perforce, AFolderComesBeforeAFileOfItsName)
{
    server_->Submit("both", "file");
    server_->Submit("both/x", "below");
    const std::u16string both = server_->Address("both");
    EXPECT_EQ(FactsOf(Folder(both)).attributes, folderAttribute);
    EXPECT_EQ(FileFacts(both).attributes, folderAttribute) << "whatever it is made as";
    const auto items = List(server_->Address());
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].path, both + u"#1");
    EXPECT_EQ(items[1].path, both);
}

TEST_F(Perforce, AFoldersChangeIsHandedToFoldersAndNotToFiles)
{
    server_->Submit("dir/sub/a.txt", "old");
    const int change = server_->Submit("dir/b.txt", "b");
    server_->Submit("dir/sub/a.txt", "newer");
    server_->Submit("dir/late/c.txt", "c");
    const std::u16string dir = server_->Address("dir");
    const std::u16string at = u"@" + Digits(change);
    const auto items = List(dir + at);
    ASSERT_THAT(items, SizeIs(2));
    EXPECT_EQ(items[0].path, dir + u"/b.txt#1");
    EXPECT_EQ(items[1].path, dir + u"/sub" + at);
    EXPECT_EQ(items[1].name, u"sub" + at);
    const auto below = List(items[1].path);
    ASSERT_THAT(below, SizeIs(1));
    EXPECT_EQ(Content(below[0].path), "old");
}

TEST_F(Perforce, ContentIsByteForByteInAnyRevision)
{
    const std::string binary("\0\r\n\xFF\x1A\0end", 9);
    const int first = server_->Submit("bin", binary);
    server_->Submit("bin", "");
    const std::u16string address = server_->Address("bin");
    EXPECT_EQ(Content(address + u"#1"), binary);
    EXPECT_EQ(Content(address + u"@" + Digits(first)), binary);
    EXPECT_EQ(Content(address + u"#2"), "");
    EXPECT_EQ(Content(address), "");
    EXPECT_EQ(FileFacts(address + u"#1").size, binary.size());
}

TEST_F(Perforce, EachRevisionHasTheSameHistory)
{
    const int first = server_->Submit("a.txt", "one", "first");
    const int second = server_->Submit("a.txt", "two", "second\n\tline");
    const std::u16string address = server_->Address("a.txt");
    for (const std::u16string& asked : {address, address + u"#1", address + u"@" + Digits(first)})
    {
        const auto list = Revisions(asked);
        ASSERT_THAT(list, SizeIs(2));
        EXPECT_EQ(list[0].id, u"2");
        EXPECT_EQ(list[0].description, Digits(second) + u": second line");
        EXPECT_EQ(list[0].author, Widened(server_->Author()));
        EXPECT_EQ(list[0].uri, address + u"#2");
        EXPECT_EQ(list[0].time, list[0].modified);
        EXPECT_GE(list[0].time, list[1].time);
        EXPECT_EQ(list[1].description, Digits(first) + u": first");
        EXPECT_EQ(Content(list[1].uri), "one");
        EXPECT_TRUE(HasRevisions(asked));
    }
}

TEST_F(Perforce, TheWorkspacesFileComesFirst)
{
    server_->Submit("a.txt", "one", "first");
    const auto local = server_->Sync("a.txt");
    const auto list = Revisions(server_->Address("a.txt"));
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0].id, u"Working Copy");
    EXPECT_EQ(list[0].description, u"");
    EXPECT_EQ(list[0].author, u"");
    EXPECT_EQ(std::filesystem::path(list[0].uri).lexically_normal(), local.lexically_normal());
    EXPECT_EQ(list[0].time, 0U);
    EXPECT_EQ(list[0].modified, 0U);
    EXPECT_EQ(list[1].id, u"1");
}

TEST_F(Perforce, DeletedFilesAreGoneAndTheirOldRevisionsOpen)
{
    server_->Submit("dir/a.txt", "one", "first");
    server_->Submit("dir/b.txt", "b");
    server_->Remove("dir/a.txt");
    const std::u16string address = server_->Address("dir/a.txt");
    EXPECT_THAT(Names(server_->Address("dir")), ElementsAre(u"b.txt#1"));
    EXPECT_EQ(Content(address + u"#1"), "one");
    EXPECT_EQ(FileFacts(address + u"#1").size, 3U);
    const auto list = Revisions(address);
    ASSERT_THAT(list, SizeIs(1)) << "the deletion is no revision";
    EXPECT_EQ(list[0].id, u"1");
}

TEST_F(Perforce, ADeletedRevisionAndOneThatIsNotThereYetHaveNoContent)
{
    const int before = server_->Submit("other", "x");
    server_->Submit("a.txt", "one");
    server_->Remove("a.txt");
    const std::u16string address = server_->Address("a.txt");
    EXPECT_EQ(Content(address + u"#2"), "");
    EXPECT_EQ(Content(address), "");
    EXPECT_EQ(Content(address + u"@" + Digits(before)), "");
}

TEST_F(Perforce, NamesWithTheCharactersOfRevisionsStayEncoded)
{
    server_->Submit("a%40b%23c%25%2Ad.txt", "odd");
    const auto items = List(server_->Address());
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].name, u"a%40b%23c%25%2Ad.txt#1");
    EXPECT_EQ(Content(items[0].path), "odd");
    EXPECT_THAT(Revisions(items[0].path), SizeIs(1));
}

TEST_F(Perforce, NamesWithBlanksAndQuotesAreOneArgument)
{
    for (const std::string name : {"a b.txt", "c' d.txt", "e;f&g.txt", "-h"})
    {
        server_->Submit("dir/" + name, name);
        const std::u16string address = server_->Address("dir/" + name);
        EXPECT_EQ(Content(address), name);
        EXPECT_EQ(FileFacts(address).size, name.size());
        EXPECT_THAT(Revisions(address), SizeIs(1));
    }
    for (const Facts& facts : List(server_->Address("dir")))
        EXPECT_EQ(Content(facts.path) + "#1", EncodeName(facts.name).value());
}

TEST_F(Perforce, WhatMustExistIsLookedFor)
{
    server_->Submit("dir/a.txt", "1");
    const std::u16string dir = server_->Address("dir");
    ComPtr<IFile> file;
    ComPtr<IFolder> folder;
    const auto getFile = [&](const std::u16string& address) {
        return OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_TRUE, file.Out()); });
    };
    const auto getFolder = [&](const std::u16string& address) {
        return OutcomeOf(
            [&] { return system->GetFolder(Ole(address), VARIANT_TRUE, folder.Out()); });
    };
    EXPECT_THAT(getFile(dir + u"/a.txt"), Succeeded());
    EXPECT_THAT(getFolder(dir), Succeeded());

    const Outcome missing = getFile(dir + u"/none");
    EXPECT_EQ(missing.status, Win32Status(2));
    EXPECT_EQ(WithoutLine(missing.error->text),
              u"Couldn't find the URI \"" + dir + u"/none\". [interfaceimpl@N]");
    EXPECT_FALSE(file);

    const Outcome noFile = getFile(dir);
    EXPECT_EQ(noFile.status, Win32Status(2));
    EXPECT_TRUE(noFile.error->text.starts_with(u"Couldn't find the URI \"" + dir.substr(5) +
                                               u"\".\n[uri: \"" + dir +
                                               u"\"\nFileObject::Initialize\nexisted: "
                                               u"1\nisDirectory: 1] [interfaceimpl@"));
    EXPECT_EQ(getFolder(dir + u"/a.txt").status, Win32Status(2));
}

TEST_F(Perforce, AFailedQuestionIsAskedAgain)
{
    const auto item = File(server_->Address("a.txt")).As<IFileSystemItem>();
    std::uint32_t attributes = 7;
    EXPECT_EQ(item->GetAttributes(&attributes), Win32Status(2));
    EXPECT_EQ(attributes, 0U);
    server_->Submit("a.txt", "1");
    EXPECT_EQ(item->GetAttributes(&attributes), S_OK);
    EXPECT_EQ(attributes, 129U);
}

TEST_F(Perforce, AnEmptyFolderIsWhatNobodyFindsAnythingIn)
{
    EXPECT_THAT(List(server_->Address("nowhere")), IsEmpty());
    EXPECT_FALSE(HasRevisions(server_->Address("nowhere")));
    const std::u16string address = server_->Address("nowhere");
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, Win32Status(2));
    EXPECT_TRUE(WithLineFeeds(outcome.error->text).starts_with(P4Failed(address, u"//")));
}

TEST_F(Perforce, NamesAndParentsComeFromTheAddressAlone)
{
    const auto file = File(u"p4://u:p@host:81///depot/sub/a.txt#12");
    const auto item = file.As<IFileSystemItem>();
    Bstr name, parent, path, comparable;
    item->GetName(name.Out());
    item->GetParentPath(parent.Out());
    item->GetPath(path.Out());
    file.As<IFileSystemItemComparableUrl>()->GetComparableName(comparable.Out());
    EXPECT_EQ(name.View(), u"a.txt#12") << "with the revision";
    EXPECT_EQ(parent.View(), u"p4://u:p@host:81///depot/sub");
    EXPECT_EQ(path.View(), u"p4://u:p@host:81///depot/sub/a.txt#12");
    EXPECT_EQ(comparable.View(), u"a.txt");
}

TEST_F(Perforce, ComparableAddressesAreCutAtTheLastMarkOfTheWhole)
{
    EXPECT_EQ(Comparable(u"p4:////depot/a.txt#3"), u"p4:////depot/a.txt");
    EXPECT_EQ(Comparable(u"p4:////depot/a.txt#4"), u"p4:////depot/a.txt");
    EXPECT_EQ(Comparable(u"p4:////depot/a.txt@12#3"), u"p4:////depot/a.txt@12");
    EXPECT_EQ(Comparable(u"p4://u@server///depot/a.txt#3"), u"p4://u@server///depot/a.txt");
    EXPECT_EQ(Comparable(u"p4://u@server///depot/a.txt"), u"p4://u") << "at the user's \"@\"";
}

TEST_F(Perforce, OtherAddressesAreRefused)
{
    for (const std::u16string address : {u"ftp://host/r", u"P4:////x", u"p4:////a\nb"})
    {
        ComPtr<IFile> file;
        const Outcome outcome =
            OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_FALSE, file.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        EXPECT_TRUE(outcome.error->text.starts_with(u"Invalid Perforce URI \"" + address +
                                                    u"\". [p4objects@"));
        ComPtr<IFolder> folder;
        EXPECT_EQ(system->GetFolder(Ole(address), VARIANT_FALSE, folder.Out()), E_INVALIDARG);
        EXPECT_FALSE(HasRevisions(address));
        EXPECT_THAT(Revisions(address), IsEmpty());
    }
    ComPtr<IFile> file;
    EXPECT_EQ(OutcomeOf([&] {
                  return system->GetFile(Ole(u"no address"), VARIANT_FALSE, file.Out());
              }).error->text,
              u"Can't parse the URI \"no address\". [uri@159]");
}

} // namespace
} // namespace tarnwell::test
