#include "module/svntest.h"

namespace tarnwell::test
{

SvnTest::SvnTest() : WorkingCopyTest(CLSID_SVNFileSystem)
{
    system.As<IFileSystemInit>()->SetHost(host_->Unknown());
}

SvnTest::~SvnTest()
{
    system.As<IFileSystemInit>()->SetHost(nullptr);
    EXPECT_EQ(host_->References(), 1U);
}

ComPtr<IFolder> SvnTest::Folder(const std::u16string& address) const
{
    ComPtr<IFolder> folder;
    EXPECT_THAT(
        OutcomeOf([&] { return system->GetFolder(Ole(address), VARIANT_FALSE, folder.Out()); }),
        Succeeded());
    return folder;
}

std::vector<Facts> SvnTest::List(const std::u16string& address) const
{
    const auto folder = Folder(address);
    ComPtr<IFolderContents> contents;
    EXPECT_THAT(OutcomeOf([&] { return folder->GetContents(contents.Out()); }), Succeeded());
    std::vector<Facts> all;
    if (contents)
    {
        for (const auto& item : ItemsOf(contents))
            all.push_back(FactsOf(item));
    }
    return all;
}

Outcome SvnTest::FailedList(const std::u16string& address) const
{
    const auto folder = Folder(address);
    ComPtr<IFolderContents> contents;
    Outcome outcome = OutcomeOf([&] { return folder->GetContents(contents.Out()); });
    EXPECT_LT(outcome.status, 0);
    EXPECT_FALSE(contents);
    return outcome;
}

Facts SvnTest::FileFacts(const std::u16string& address) const
{
    return FactsOf(File(address));
}

std::u16string AccessFailed(const std::u16string& address, const std::u16string& words)
{
    return u"An error occurred while accessing \"" + address + u"\"\n\n" + words;
}

} // namespace tarnwell::test
