#include "module/systemtest.h"

namespace tarnwell::test
{

std::u16string Widened(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

SystemTest::SystemTest(const GUID& systemClass, std::string whyNot)
    : whyNot_(std::move(whyNot)),
      system(TheModule().CreateFileSystem(systemClass, host_->Unknown()))
{
    ClearError();
}

SystemTest::~SystemTest()
{
    system.Reset();
    EXPECT_EQ(host_->References(), 1U) << "somebody still holds the host object";
}

void SystemTest::SetUp()
{
    if (!whyNot_.empty())
        GTEST_SKIP() << whyNot_;
}

ComPtr<IFile> SystemTest::File(const std::u16string& address) const
{
    ComPtr<IFile> file;
    EXPECT_THAT(OutcomeOf([&] { return system->GetFile(Ole(address), VARIANT_FALSE, file.Out()); }),
                Succeeded());
    return file;
}

ComPtr<IFolder> SystemTest::Folder(const std::u16string& address) const
{
    ComPtr<IFolder> folder;
    EXPECT_THAT(
        OutcomeOf([&] { return system->GetFolder(Ole(address), VARIANT_FALSE, folder.Out()); }),
        Succeeded());
    return folder;
}

ComPtr<IFolderContents> SystemTest::Contents(const std::u16string& address) const
{
    const auto folder = Folder(address);
    ComPtr<IFolderContents> contents;
    EXPECT_THAT(OutcomeOf([&] { return folder->GetContents(contents.Out()); }), Succeeded());
    return contents;
}

std::vector<Facts> SystemTest::List(const std::u16string& address) const
{
    std::vector<Facts> all;
    for (const auto& item : ItemsOf(Contents(address)))
        all.push_back(FactsOf(item));
    return all;
}

Outcome SystemTest::FailedList(const std::u16string& address) const
{
    const auto folder = Folder(address);
    ComPtr<IFolderContents> contents;
    Outcome outcome = OutcomeOf([&] { return folder->GetContents(contents.Out()); });
    EXPECT_LT(outcome.status, 0);
    EXPECT_FALSE(contents);
    return outcome;
}

Facts SystemTest::FileFacts(const std::u16string& address) const
{
    return FactsOf(File(address));
}

Outcome SystemTest::Open(const std::u16string& address, ComPtr<IFileStream>& stream) const
{
    const auto file = File(address);
    return OutcomeOf([&] { return file->Open(readAccess, openExisting, stream.Out()); });
}

Outcome SystemTest::FailedOpen(const std::u16string& address) const
{
    ComPtr<IFileStream> stream;
    Outcome outcome = Open(address, stream);
    EXPECT_LT(outcome.status, 0);
    EXPECT_FALSE(stream);
    return outcome;
}

std::string SystemTest::Content(const std::u16string& address) const
{
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(address, stream), Succeeded());
    return stream ? ReadAll(stream) : "failed";
}

ComPtr<IRevisions> SystemTest::RevisionsOf(const std::u16string& address) const
{
    ComPtr<IRevisions> revisions;
    EXPECT_THAT(OutcomeOf([&] {
                    return system.As<IFileSystemRevisions>()->GetRevisions(Ole(address), 0,
                                                                           revisions.Out());
                }),
                Succeeded());
    return revisions;
}

std::vector<Revision> SystemTest::Revisions(const std::u16string& address) const
{
    return FactsOf(RevisionsOf(address));
}

bool SystemTest::HasRevisions(const std::u16string& address) const
{
    VARIANT_BOOL has = 77;
    EXPECT_EQ(system.As<IFileSystemRevisions>()->HasRevisions(Ole(address), 0, &has), S_OK);
    EXPECT_TRUE(has == VARIANT_TRUE || has == VARIANT_FALSE);
    return has != VARIANT_FALSE;
}

} // namespace tarnwell::test
