// Items of addresses: facts that are asked for when first wanted, and texts that cost nothing.
#include "unit/fakebackendtest.h"

#include "platform/win32.h"

namespace tarnwell::test
{
namespace
{

constexpr HRESULT busy = Win32Status(170);

std::uint32_t Attributes(const auto& item)
{
    return Got<std::uint32_t>(item, &IFileSystemItem::GetAttributes);
}

std::uint64_t Time(const auto& item)
{
    return Got<std::uint64_t>(item, &IFileSystemItem::GetModifiedTime);
}

std::uint64_t Size(const auto& item)
{
    return std::uint64_t{Got<std::uint32_t>(item, &IFile::GetSizeHigh)} << 32 |
           Got<std::uint32_t>(item, &IFile::GetSizeLow);
}

std::uint64_t Now()
{
    FILETIME now{};
    CoFileTimeNow(&now);
    return std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
}

class UriItems : public FakeBackendTest
{
};

TEST_F(UriItems, FactsAreAskedForOnceAndOnlyWhenWanted)
{
    Server().facts = {u"unused", 123, 0x1234567890, false, false, 0};
    const auto file = File(u"ftp://host/dir/a.txt");
    TextOf(file, &IFileSystemItem::GetName);
    TextOf(file, &IFileSystemItem::GetPath);
    TextOf(file, &IFileSystemItem::GetParentPath);
    TextOf(file, &IFileSystemItemComparableUrl::GetComparableName);
    TextOf(file, &IFileSystemItemComparableUrl::GetComparableUrl);
    EXPECT_EQ(Server().lookups, 0);
    EXPECT_EQ(Size(file), 0x1234567890U);
    EXPECT_EQ(Attributes(file), 128U);
    EXPECT_EQ(Time(file), 123U);
    EXPECT_EQ(Server().lookups, 1);
    EXPECT_EQ(Server().asked, u"ftp://host/dir/a.txt");
    EXPECT_EQ(TextOf(file, &IFileSystemItem::GetPath), u"ftp://host/dir/a.txt")
        << "what the lookup calls the item doesn't matter";
}

TEST_F(UriItems, WhatWasSeenFirstStays)
{
    Server().facts.size = 1;
    const auto file = File(u"ftp://host/a.txt");
    EXPECT_EQ(Size(file), 1U);
    Server().facts.size = 2;
    EXPECT_EQ(Size(file), 1U);
    EXPECT_EQ(Size(File(u"ftp://host/a.txt")), 2U);
}

TEST_F(UriItems, AttributesAreOneOfThree)
{
    const auto attributesOf = [&](bool isDirectory, bool isReadOnly) {
        Server().facts.isDirectory = isDirectory;
        Server().facts.isReadOnly = isReadOnly;
        return Attributes(File(u"ftp://host/a"));
    };
    EXPECT_EQ(attributesOf(false, false), 128U);
    EXPECT_EQ(attributesOf(false, true), 129U);
    EXPECT_EQ(attributesOf(true, false), 16U);
    EXPECT_EQ(attributesOf(true, true), 16U);
}

TEST_F(UriItems, AFailedLookupPassesOnAndIsTriedAgain)
{
    Server().failure.emplace(busy, u"the server's text", SourcePosition{u"fake", 7});
    const auto file = File(u"ftp://host/a.txt");
    const auto item = file.As<IFileSystemItem>();
    std::uint32_t number = 99;
    std::uint64_t time = 99;
    const std::u16string text = u"the server's text [fake@N]";
    EXPECT_THAT(OutcomeOf([&] { return item->GetAttributes(&number); }),
                Published(busy, IID_IFileSystemItem, text));
    EXPECT_EQ(number, 0U);
    EXPECT_THAT(OutcomeOf([&] { return item->GetModifiedTime(&time); }),
                Published(busy, IID_IFileSystemItem, text));
    EXPECT_EQ(time, 0U);
    EXPECT_THAT(OutcomeOf([&] { return file->GetSizeLow(&number); }),
                Published(busy, IID_IFile, text));
    EXPECT_THAT(OutcomeOf([&] { return file->GetSizeHigh(&number); }),
                Published(busy, IID_IFile, text));
    EXPECT_EQ(Server().lookups, 4);
    Server().failure.reset();
    EXPECT_EQ(Attributes(file), 128U);
    EXPECT_EQ(Attributes(file), 128U);
    EXPECT_EQ(Server().lookups, 5);
}

TEST_F(UriItems, ARootIsAFolderOfNowThatNobodyIsAskedAbout)
{
    Server().failure.emplace(busy, u"not to be asked", SourcePosition{nullptr, 0});
    for (const char16_t* const address :
         {u"ftp://host", u"ftp://host/", u"ftp://host/dir/", u"x://"})
    {
        const auto root = Folder(address);
        const std::uint64_t before = Now();
        EXPECT_EQ(Attributes(root), 16U);
        const std::uint64_t after = Now();
        EXPECT_LE(before, Time(root));
        EXPECT_LE(Time(root), after) << "the time is that of the first question";
        EXPECT_EQ(Size(File(address)), 0U);
        EXPECT_EQ(TextOf(root, &IFileSystemItem::GetName), u"");
    }
    EXPECT_EQ(Server().lookups, 0);
}

TEST_F(UriItems, WhatAListingToldIsNotAskedFor)
{
    const auto contents = Contents({{u"ftp://host/a", 11, 0x500000006, false, true, 3},
                                    {u"ftp://host/b", 12, 7, false, false, 0},
                                    {u"ftp://host/c", 13, 8, true, true, 0}});
    Server().failure.emplace(busy, u"not to be asked", SourcePosition{nullptr, 0});
    ComPtr<IFileSystemItem> item;
    ASSERT_EQ(contents->GetItem(0, item.Out()), S_OK);
    EXPECT_EQ(TextOf(item, &IFileSystemItem::GetPath), u"ftp://host/a");
    EXPECT_EQ(Attributes(item), 129U);
    EXPECT_EQ(Time(item), 11U);
    EXPECT_EQ(Size(item), 0x500000006U);
    ASSERT_EQ(contents->GetItem(1, item.Out()), S_OK);
    EXPECT_EQ(Attributes(item), 128U);
    ASSERT_EQ(contents->GetItem(2, item.Out()), S_OK);
    EXPECT_EQ(Attributes(item), 16U);
    EXPECT_EQ(Time(item), 13U);
    EXPECT_EQ(Server().lookups, 0);
}

TEST_F(UriItems, AnAddressThatIsNoneTellsItsTextAndNothingElse)
{
    const auto item = File(u"nothing").As<IFileSystemItem>();
    EXPECT_EQ(TextOf(item, &IFileSystemItem::GetPath), u"nothing");
    EXPECT_EQ(TextOf(item, &IFileSystemItemComparableUrl::GetComparableUrl), u"nothing");
    const std::u16string refusal = u"Can't parse the URI \"nothing\". [uri@N]";
    Bstr text;
    EXPECT_THAT(OutcomeOf([&] { return item->GetName(text.Out()); }),
                Published(E_INVALIDARG, IID_IFileSystemItem, refusal));
    EXPECT_THAT(OutcomeOf([&] { return item->GetParentPath(text.Out()); }),
                Published(E_INVALIDARG, IID_IFileSystemItem, refusal));
    EXPECT_FALSE(text);
    std::uint32_t attributes = 99;
    EXPECT_THAT(OutcomeOf([&] { return item->GetAttributes(&attributes); }),
                Published(E_INVALIDARG, IID_IFileSystemItem, refusal));
    const auto comparable = item.As<IFileSystemItemComparableUrl>();
    EXPECT_THAT(OutcomeOf([&] { return comparable->GetComparableName(text.Out()); }),
                Published(E_INVALIDARG, IID_IFileSystemItemComparableUrl, refusal));
}

TEST_F(UriItems, HoldTheHostThatTheirFileSystemHad)
{
    const auto file = File(u"ftp://host/a");
    EXPECT_EQ(host->References(), 3U);
    EXPECT_EQ(system.As<IFileSystemInit>()->SetHost(nullptr), S_OK);
    EXPECT_EQ(host->References(), 2U);
}

} // namespace
} // namespace tarnwell::test
