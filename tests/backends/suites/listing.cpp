// A folder's contents: all of it, with its facts, as it was.
#include "backends/suites/backendtest.h"

#include <tarnwell/text.h>

#include <map>

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Listing : public BackendTest
{
protected:
    ComPtr<IFileSystemItem> ItemNamed(std::u16string_view folder, const std::u16string& name) const
    {
        for (const auto& item : ItemsOf(Contents(Address(folder))))
        {
            if (FactsOf(item).name == name)
                return item;
        }
        ADD_FAILURE() << "no such item";
        return {};
    }
};

class EmptyFolders : public Listing
{
};

TEST_P(EmptyFolders, HaveNoItems)
{
    const auto contents = Contents(Address(u"nothing"));
    EXPECT_THAT(NamesOf(contents), IsEmpty());
    ComPtr<IFileSystemItem> item;
    EXPECT_EQ(contents->GetItem(0, item.Out()), E_INVALIDARG);
}

TEST_P(Listing, ItemsHaveTheFactsOfALookup)
{
    const auto items = ItemsOf(Contents(Address(u"sub")));
    ASSERT_EQ(items.size(), 2U);
    std::vector<std::u16string> names;
    for (const auto& item : items)
    {
        const Facts facts = FactsOf(item);
        names.push_back(facts.name);
        EXPECT_EQ(item.As<IFile>() ? FileFacts(facts.path) : FactsOf(Folder(facts.path)), facts);
        EXPECT_EQ(facts.parent, facts.path.substr(0, facts.parent.size()));
    }
    EXPECT_THAT(names, UnorderedElementsAre(u"deep", Listed(u"inner.txt")));
}

TEST_P(Listing, ItemsAreOfTheirKindAndWork)
{
    const auto inner = ItemNamed(u"sub", Listed(u"inner.txt"));
    EXPECT_FALSE(inner.As<IFolder>());
    ComPtr<IFileStream> stream;
    ASSERT_EQ(inner.As<IFile>()->Open(readAccess, openExisting, stream.Out()), S_OK);
    EXPECT_EQ(ReadAll(stream), "inner");

    const auto deep = ItemNamed(u"sub", u"deep");
    EXPECT_FALSE(deep.As<IFile>());
    ComPtr<IFolderContents> contents;
    ASSERT_EQ(deep.As<IFolder>()->GetContents(contents.Out()), S_OK);
    EXPECT_THAT(NamesOf(contents), UnorderedElementsAre(Listed(u"bottom.txt")));
}

TEST_P(Listing, NamesOfAllKindsAreListedAndOpened)
{
    std::vector<std::u16string> expected = {u"sub",
                                            Listed(u"text.txt", TheSample().secondRevision)};
    for (const char16_t* const name : {u"beside.txt", u"binary", u"empty", u"large"})
        expected.push_back(Listed(name));
    if (Row().emptyFolders)
        expected.push_back(u"nothing");
    std::map<std::u16string, std::u16string> paths;
    const auto contents = Contents(Address({}));
    for (const auto& item : ItemsOf(contents))
        paths[FactsOf(item).name] = FactsOf(item).path;
    for (const std::u16string_view name : Row().names)
    {
        expected.push_back(Listed(name));
        EXPECT_EQ(Content(paths[Listed(name)]), EncodeName(name).value());
    }
    EXPECT_THAT(NamesOf(contents), testing::UnorderedElementsAreArray(expected));
}

TEST_P(Listing, AnItemIsMadeAtEachCall)
{
    const auto contents = Contents(Address(u"sub"));
    const auto first = ItemsOf(contents).front();
    const auto second = ItemsOf(contents).front();
    EXPECT_NE(first.Get(), second.Get());
    EXPECT_EQ(FactsOf(first), FactsOf(second));
}

TEST_P(Listing, ASnapshotStays)
{
    const auto data = NewData();
    const std::u16string first = data->Put(u"a.txt", "1");
    const auto contents = Contents(data->Address({}));
    const auto items = ItemsOf(contents);
    const std::u16string second = data->Put(u"a.txt", "changed");
    data->Put(u"b.txt", "2");
    EXPECT_THAT(NamesOf(contents), UnorderedElementsAre(Listed(u"a.txt", first)));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(FactsOf(items.front()).size, 1U);
    EXPECT_THAT(NamesOf(Contents(data->Address({}))),
                UnorderedElementsAre(Listed(u"a.txt", second), Listed(u"b.txt")));
}

TEST_P(Listing, ASnapshotAndItsItemsOutliveAllElse)
{
    auto contents = Contents(Address(u"sub"));
    system.Reset();
    const auto items = ItemsOf(contents);
    contents.Reset();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(FactsOf(items[0]).size + FactsOf(items[1]).size, 5U);
}

TEST_P(Listing, AnIndexOutOfRangeIsRefused)
{
    const auto contents = Contents(Address(u"sub"));
    for (const std::int32_t index : {-1, 2, 3, INT32_MIN, INT32_MAX})
    {
        ComPtr<IFileSystemItem> item;
        const Outcome outcome = OutcomeOf([&] { return contents->GetItem(index, item.Out()); });
        EXPECT_EQ(outcome.status, E_INVALIDARG) << index;
        ASSERT_TRUE(outcome.error);
        EXPECT_EQ(WithoutLine(outcome.error->text),
                  IsLocal() ? u"Internal error (invalid index into folder contents collection)."
                            : u" [interfaceimpl@N]");
        EXPECT_TRUE(outcome.error->interfaceId == IID_IFolderContents);
    }
}

TEST_P(Listing, WhatIsNoFolderFailsOrIsEmpty)
{
    for (const char16_t* const name : {u"none", u"sub/none"})
    {
        if (Row().missingFoldersFail)
            EXPECT_THAT(FailedList(Address(name)), NamesInterface(IID_IFolder));
        else
            EXPECT_THAT(List(Address(name)), IsEmpty());
    }
}

class ControlCharacters : public Listing
{
};

// A name that no address can hold makes no item, and all others are there. Those with a line feed
// or a terminator can't be told from two lines, or from nothing.
TEST_P(ControlCharacters, LoseNoOtherItem)
{
    const auto data = NewData();
    std::size_t count = 2;
    data->Put(u"!first", "!first");
    data->Put(u"~last", "~last");
    for (char16_t unit = 1; unit <= 0x7F; unit = unit == 0x1F ? u'\x7F' : unit + 1)
    {
        const std::u16string name = u"a" + std::u16string(1, unit) + u"b";
        if (unit == u'\n')
            continue;
        data->Put(name, EncodeName(name).value());
        ++count;
    }
    const auto contents = Contents(data->Address({}));
    std::uint32_t found = 0;
    EXPECT_EQ(contents->GetCount(&found), S_OK);
    EXPECT_EQ(found, count);
    std::size_t opened = 0;
    for (std::uint32_t i = 0; i < found; ++i)
    {
        ComPtr<IFileSystemItem> item;
        const Outcome outcome =
            OutcomeOf([&] { return contents->GetItem(static_cast<std::int32_t>(i), item.Out()); });
        if (outcome.status == S_OK)
        {
            const Facts facts = FactsOf(item);
            EXPECT_EQ(facts.name, Listed(DecodeName(Content(facts.path))));
            ++opened;
        }
        else
        {
            EXPECT_EQ(outcome.status, E_INVALIDARG);
            EXPECT_TRUE(outcome.error && outcome.error->text.find(u'\r') != std::u16string::npos);
        }
    }
    EXPECT_GE(opened, count - 1) << "with a carriage return";
}

bool HasFolders(const Backend& backend)
{
    return backend.folders;
}

bool HasEmptyFolders(const Backend& backend)
{
    return backend.folders && backend.emptyFolders;
}

TARNWELL_OVER_BACKENDS(Listing, BackendsThat(HasFolders));
TARNWELL_OVER_BACKENDS(ControlCharacters,
                       BackendsThat([](const Backend& b) { return b.controlCharacters; }));
TARNWELL_OVER_BACKENDS(EmptyFolders, BackendsThat(HasEmptyFolders));

} // namespace
} // namespace tarnwell::test
