// A folder's contents: a snapshot, in the platform's order.
#include "module/localtest.h"
#include "support/wine.h"

#include <algorithm>

namespace tarnwell::test
{

namespace
{

using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

class LocalListing : public LocalTest
{
protected:
    ComPtr<IFileSystemItem> ItemNamed(const std::u16string& name)
    {
        for (const auto& item : ItemsOf(List(folder.Text())))
        {
            if (FactsOf(item).name == name)
                return item;
        }
        return {};
    }
    static Outcome GetContents(const ComPtr<IFolder>& of)
    {
        ComPtr<IFolderContents> contents;
        Outcome outcome = OutcomeOf([&] { return of->GetContents(contents.Out()); });
        EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(contents));
        return outcome;
    }
    static std::u16string FailedToRead(const std::u16string& path)
    {
        return u"Failed to read the contents of the folder \"" + path + u"\".";
    }
};

TEST_F(LocalListing, OnlyTheFolderItselfAndItsParentAreLeftOut)
{
    Put(u"a.txt");
    Put(u"..foo");
    Put(u".hidden");
    MakeDirectory(u"sub");
    MakeDirectory(u".folder");
    EXPECT_THAT(NamesOf(List(folder.Text())),
                UnorderedElementsAre(u"a.txt", u"..foo", u".hidden", u"sub", u".folder"));
}

TEST_F(LocalListing, WhatIsMissingFailsWithItsOwnPath)
{
    const std::u16string path = folder / u"missing";
    EXPECT_THAT(GetContents(NewFolder(path)), Failed(Win32Status(3), FailedToRead(path)));
}

TEST_F(LocalListing, AFileInPlaceOfTheFolderFails)
{
    const std::u16string path = folder / u"later";
    const auto made = NewFolder(path);
    Put(u"later");
    const Outcome outcome = GetContents(made);
    if (IsUnderWine()) // which finds fault with the name
        EXPECT_THAT(outcome, FailedSomehow(FailedToRead(path)));
    else
        EXPECT_THAT(outcome, Failed(Win32Status(267), FailedToRead(path)));
}

TEST_F(LocalListing, TheRootIsListedBelowItself)
{
    const auto root = std::filesystem::path(folder.Text()).root_path().u16string();
    const auto items = ItemsOf(List(root));
    ASSERT_THAT(items, Not(IsEmpty()));
    const Facts facts = FactsOf(items.front());
    EXPECT_EQ(facts.parent, root);
    EXPECT_EQ(facts.path, root + facts.name);
}

TEST_F(LocalListing, TheEmptyPathListsTheCurrentFolder)
{
    Put(u"a.txt");
    const CurrentFolder current(folder.Path());
    ComPtr<IFolderContents> contents;
    EXPECT_EQ(NewFolder(u"")->GetContents(contents.Out()), S_OK);
    EXPECT_THAT(NamesOf(contents), UnorderedElementsAre(u"a.txt"));
}

TEST_F(LocalListing, ManyItemsAreAllThere)
{
    std::vector<std::u16string> expected;
    for (int i = 0; i < 2000; ++i)
    {
        const std::string number = std::to_string(i);
        expected.emplace_back(number.begin(), number.end());
        Put(expected.back(), "");
    }
    auto names = NamesOf(List(folder.Text()));
    std::sort(names.begin(), names.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(names, expected);
}

TEST_F(LocalListing, TheHostIsAskedForTheStreamsOnceForEachListing)
{
    Put(u"a.txt");
    Put(u"b.txt");
    host->setting = VARIANT_TRUE;
    List(folder.Text());
    EXPECT_THAT(host->Calls(), testing::ElementsAre(u"GetBooleanSetting|IterateStreams"));
    List(folder.Text());
    EXPECT_EQ(host->Calls().size(), 2U) << "the answer isn't kept";
}

TEST_F(LocalListing, FilesWithoutNamedStreamsShowOnceWhateverTheSetting)
{
    Put(u"a.txt");
    MakeDirectory(u"sub");
    for (const VARIANT_BOOL value : {VARIANT_FALSE, VARIANT_TRUE})
    {
        host->setting = value;
        EXPECT_THAT(NamesOf(List(folder.Text())), UnorderedElementsAre(u"a.txt", u"sub"));
    }
}

TEST_F(LocalListing, AHostWithoutSettingsIsNotAsked)
{
    Put(u"a.txt");
    host->hasSettings = false;
    EXPECT_THAT(NamesOf(List(folder.Text())), UnorderedElementsAre(u"a.txt"));
    EXPECT_THAT(host->Calls(), IsEmpty());
}

// Local objects know the host by its window only.
TEST_F(LocalListing, AHostWithSettingsAndNoWindowIsNotAsked)
{
    Put(u"a.txt");
    host->hasWindow = false;
    host->setting = VARIANT_TRUE;
    ASSERT_EQ(system.As<IFileSystemInit>()->SetHost(host->Unknown()), S_OK);
    EXPECT_THAT(NamesOf(List(folder.Text())), UnorderedElementsAre(u"a.txt"));
    EXPECT_THAT(host->Calls(), IsEmpty());
}

TEST_F(LocalListing, AFailingSettingFailsNoListing)
{
    Put(u"a.txt");
    host->settingStatus = E_FAIL;
    EXPECT_THAT(NamesOf(List(folder.Text())), UnorderedElementsAre(u"a.txt"));
}

} // namespace

} // namespace tarnwell::test
