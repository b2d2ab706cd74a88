#include "module/workingcopytest.h"

namespace tarnwell::test
{

namespace
{

template <class Get> std::u16string TextOf(Get get)
{
    Bstr text;
    EXPECT_EQ(get(text.Out()), S_OK);
    return std::u16string(text.View());
}

Revision ReadRevision(const ComPtr<IRevision>& revision)
{
    Revision found;
    found.id = TextOf([&](BSTR* out) { return revision->GetRevisionId(out); });
    found.description = TextOf([&](BSTR* out) { return revision->GetDescription(out); });
    found.author = TextOf([&](BSTR* out) { return revision->GetAuthor(out); });
    found.uri = TextOf([&](BSTR* out) { return revision->GetUri(out); });
    EXPECT_EQ(revision->GetModifiedTime(&found.modified), S_OK);
    EXPECT_EQ(revision->GetRevisionTime(&found.time), S_OK);
    return found;
}

} // namespace

WorkingCopyTest::WorkingCopyTest(const GUID& classId)
    : system_(TheModule().CreateFileSystem(classId))
{
}

std::vector<Revision> WorkingCopyTest::Revisions(const std::u16string& address) const
{
    ComPtr<IRevisions> revisions;
    EXPECT_EQ(system_.As<IFileSystemRevisions>()->GetRevisions(Ole(address), 0, revisions.Out()),
              S_OK);
    std::uint32_t count = 0;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    std::vector<Revision> list;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        ComPtr<IRevision> revision;
        EXPECT_EQ(revisions->GetItem(static_cast<std::int32_t>(i), revision.Out()), S_OK);
        list.push_back(ReadRevision(revision));
    }
    return list;
}

bool WorkingCopyTest::HasRevisions(const std::u16string& address) const
{
    VARIANT_BOOL has = 77;
    EXPECT_EQ(system_.As<IFileSystemRevisions>()->HasRevisions(Ole(address), 0, &has), S_OK);
    EXPECT_TRUE(has == VARIANT_TRUE || has == VARIANT_FALSE);
    return has == VARIANT_TRUE;
}

ComPtr<IFile> WorkingCopyTest::File(const std::u16string& address) const
{
    ComPtr<IFile> file;
    EXPECT_THAT(
        OutcomeOf([&] { return system_->GetFile(Ole(address), VARIANT_FALSE, file.Out()); }),
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
