// Content comes out as it was put in, and items say of themselves what their addresses say.
#include "backends/suites/backendtest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

class Reading : public BackendTest
{
};

TEST_P(Reading, ContentIsByteForByte)
{
    EXPECT_EQ(Content(Address(u"text.txt")), "content");
    EXPECT_EQ(Content(Address(u"binary")), binaryContent);
    EXPECT_EQ(Content(Address(u"empty")), "");
    EXPECT_EQ(Content(Address(u"large")), largeContent);
}

TEST_P(Reading, NamesOfAllKindsAreOpened)
{
    for (const std::u16string_view name : Row().names)
        EXPECT_EQ(Content(Address(name)), EncodeName(name).value());
}

TEST_P(Reading, ItemsTellTheirNames)
{
    const std::u16string path = Address(u"text.txt");
    const auto item = File(path).As<IFileSystemItem>();
    Bstr name, parent, held;
    EXPECT_EQ(item->GetName(name.Out()), S_OK);
    EXPECT_EQ(item->GetParentPath(parent.Out()), S_OK);
    EXPECT_EQ(item->GetPath(held.Out()), S_OK);
    EXPECT_EQ(name.View(), u"text.txt");
    EXPECT_EQ(held.View(), path);
    // An address with backslashes in it has no parent.
    if (IsLocal() || path.find(u'\\') == std::u16string::npos)
    {
        EXPECT_EQ(parent.View(), path.substr(0, path.size() - std::size(u"text.txt")));
    }
}

TEST_P(Reading, WhatIsMissingDoesNotOpen)
{
    EXPECT_THAT(FailedOpen(Address(u"none.txt")), NamesInterface(IID_IFile));
}

TEST_P(Reading, StreamsOfOneFileDoNotTouchEachOther)
{
    const auto file = File(Address(u"text.txt"));
    ComPtr<IFileStream> first;
    ComPtr<IFileStream> second;
    ASSERT_EQ(file->Open(readAccess, openExisting, first.Out()), S_OK);
    ASSERT_EQ(file->Open(readAccess, openExisting, second.Out()), S_OK);
    EXPECT_EQ(ReadAll(first), "content");
    EXPECT_EQ(ReadAll(second), "content");
}

TEST_P(Reading, ItemsOutliveTheirFileSystem)
{
    const auto file = File(Address(u"text.txt"));
    system.Reset();
    ComPtr<IFileStream> stream;
    ASSERT_EQ(file->Open(readAccess, openExisting, stream.Out()), S_OK);
    EXPECT_EQ(ReadAll(stream), "content");
}

class ReadingFacts : public BackendTest
{
};

TEST_P(ReadingFacts, OfAFile)
{
    const Facts facts = FileFacts(Address(u"text.txt"));
    EXPECT_EQ(facts.size, 7U);
    EXPECT_EQ(facts.attributes & folderAttribute, 0U);
    EXPECT_NE(facts.attributes, 0U);
    EXPECT_GT(facts.time, 132000000000000000U);
    EXPECT_EQ(FileFacts(Address(u"empty")).size, 0U);
    EXPECT_EQ(FileFacts(Address(u"large")).size, largeContent.size());
    if (Row().history)
    {
        EXPECT_EQ(FileFacts(Address(u"text.txt", TheSample().firstRevision)).size, 5U);
    }
}

TEST_P(ReadingFacts, OfAFolder)
{
    const Facts facts = FactsOf(Folder(Address(u"sub")));
    EXPECT_EQ(facts.name, u"sub");
    EXPECT_EQ(facts.path, Address(u"sub"));
    EXPECT_EQ(facts.attributes & folderAttribute, folderAttribute);
    if (IsLocal())
    {
        EXPECT_EQ(facts.parent, Address({}));
        EXPECT_NE(facts.time, 0U);
    }
}

TEST_P(ReadingFacts, WhatMustExistIsLookedFor)
{
    ComPtr<IFile> file;
    ComPtr<IFolder> folder;
    const auto getFile = [&](std::u16string_view name) {
        return OutcomeOf(
            [&] { return system->GetFile(Ole(Address(name)), VARIANT_TRUE, file.Out()); });
    };
    const auto getFolder = [&](std::u16string_view name) {
        return OutcomeOf(
            [&] { return system->GetFolder(Ole(Address(name)), VARIANT_TRUE, folder.Out()); });
    };
    EXPECT_THAT(getFile(u"text.txt"), Succeeded());
    EXPECT_THAT(getFolder(u"sub"), Succeeded());
    for (const Outcome& outcome : {getFile(u"none"), getFolder(u"none")})
        EXPECT_THAT(outcome, NamesInterface(IID_IFileSystem));
    for (const Outcome& outcome : {getFile(u"sub"), getFolder(u"text.txt")})
    {
        EXPECT_EQ(outcome.status, Win32Status(2));
        EXPECT_TRUE(outcome.error);
    }
    EXPECT_FALSE(file);
    EXPECT_FALSE(folder);
}

// What an address alone tells needs nobody behind it.
class ReadingAddresses : public BackendTest
{
};

TEST_P(ReadingAddresses, TheRevisionIsNotCompared)
{
    const std::u16string latest = Address(u"text.txt");
    const std::u16string first = Address(u"text.txt", TheSample().firstRevision);
    EXPECT_NE(latest, first);
    for (const std::u16string& address : {latest, first})
    {
        const auto file = File(address);
        const auto comparable = file.As<IFileSystemItemComparableUrl>();
        Bstr shown, name, url;
        EXPECT_EQ(file.As<IFileSystemItem>()->GetName(shown.Out()), S_OK);
        EXPECT_EQ(comparable->GetComparableName(name.Out()), S_OK);
        EXPECT_EQ(comparable->GetComparableUrl(url.Out()), S_OK);
        EXPECT_EQ(shown.View(), Row().revisionsInNames
                                    ? address.substr(latest.size() - std::size(u"text.txt") + 1)
                                    : u"text.txt");
        EXPECT_EQ(name.View(), u"text.txt");
        EXPECT_EQ(url.View(), latest);
    }
}

bool TellsFacts(const Backend& backend)
{
    return backend.folders;
}

bool HasMarkedAddresses(const Backend& backend)
{
    return backend.history && backend.family == Family::Addressed;
}

TARNWELL_OVER_BACKENDS(Reading, Backends());
TARNWELL_OVER_BACKENDS(ReadingFacts, BackendsThat(TellsFacts));
TARNWELL_OVER_BACKENDS(ReadingAddresses, BackendsThat(HasMarkedAddresses));

} // namespace
} // namespace tarnwell::test
