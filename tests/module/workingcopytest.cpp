#include "module/workingcopytest.h"

namespace tarnwell::test
{

namespace
{

Revision FactsOf(const ComPtr<IRevision>& revision)
{
    Bstr id;
    Bstr description;
    Bstr author;
    Bstr uri;
    Revision found;
    EXPECT_EQ(revision->GetRevisionId(id.Out()), S_OK);
    EXPECT_EQ(revision->GetDescription(description.Out()), S_OK);
    EXPECT_EQ(revision->GetAuthor(author.Out()), S_OK);
    EXPECT_EQ(revision->GetUri(uri.Out()), S_OK);
    EXPECT_EQ(revision->GetModifiedTime(&found.modified), S_OK);
    EXPECT_EQ(revision->GetRevisionTime(&found.time), S_OK);
    found.id = id.View();
    found.description = description.View();
    found.author = author.View();
    found.uri = uri.View();
    return found;
}

} // namespace

std::u16string Widened(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

WorkingCopyTest::WorkingCopyTest(const GUID& systemClass)
    : system(TheModule().CreateFileSystem(systemClass))
{
}

std::vector<Revision> WorkingCopyTest::Revisions(const std::u16string& address) const
{
    ComPtr<IRevisions> revisions;
    EXPECT_EQ(system.As<IFileSystemRevisions>()->GetRevisions(Ole(address), 0, revisions.Out()),
              S_OK);
    std::uint32_t count = 0;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    std::vector<Revision> list;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        ComPtr<IRevision> revision;
        EXPECT_EQ(revisions->GetItem(static_cast<std::int32_t>(i), revision.Out()), S_OK);
        list.push_back(FactsOf(revision));
    }
    return list;
}

bool WorkingCopyTest::HasRevisions(const std::u16string& address) const
{
    VARIANT_BOOL has = 77;
    EXPECT_EQ(system.As<IFileSystemRevisions>()->HasRevisions(Ole(address), 0, &has), S_OK);
    EXPECT_TRUE(has == VARIANT_TRUE || has == VARIANT_FALSE);
    return has != VARIANT_FALSE;
}

ComPtr<IFile> WorkingCopyTest::File(const std::u16string& address) const
{
    ComPtr<IFile> file;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_FALSE, file.Out()); }),
                Succeeded());
    return file;
}

Outcome WorkingCopyTest::Open(const std::u16string& address, ComPtr<IFileStream>& stream) const
{
    const auto file = File(address);
    return OutcomeOf([&] { return file->Open(readAccess, openExisting, stream.Out()); });
}

Outcome WorkingCopyTest::FailedOpen(const std::u16string& address) const
{
    ComPtr<IFileStream> stream;
    Outcome outcome = Open(address, stream);
    EXPECT_LT(outcome.status, 0);
    EXPECT_FALSE(stream);
    return outcome;
}

std::string WorkingCopyTest::Content(const std::u16string& address) const
{
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(address, stream), Succeeded());
    return stream ? ReadAll(stream) : "failed";
}

} // namespace tarnwell::test
