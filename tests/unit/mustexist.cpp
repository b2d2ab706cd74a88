// Items that must exist: what is looked up at once, and what is said when it isn't there.
#include "unit/fakebackendtest.h"

#include "platform/wide.h"

namespace tarnwell::test
{
namespace
{

constexpr HRESULT notFound = Win32Status(2);

class MustExist : public FakeBackendTest
{
protected:
    Outcome GetFile(const std::u16string& address, VARIANT_BOOL mustExist = VARIANT_TRUE)
    {
        auto* file = reinterpret_cast<IFile*>(1);
        Outcome outcome =
            OutcomeOf([&] { return system->GetFile(Wide(address), mustExist, &file); });
        EXPECT_EQ(outcome.status == S_OK, file != nullptr);
        ComPtr<IFile>::Adopt(file);
        return outcome;
    }
    Outcome GetFolder(const std::u16string& address)
    {
        auto* folder = reinterpret_cast<IFolder*>(1);
        Outcome outcome =
            OutcomeOf([&] { return system->GetFolder(Wide(address), VARIANT_TRUE, &folder); });
        EXPECT_EQ(outcome.status == S_OK, folder != nullptr);
        ComPtr<IFolder>::Adopt(folder);
        return outcome;
    }
};

TEST_F(MustExist, AFileIsNoFolder)
{
    Server().facts.isDirectory = false;
    EXPECT_THAT(GetFolder(u"ftp://u:p@host:21/a/b#3"),
                Published(notFound, IID_IFileSystem,
                          u"Couldn't find the URI \"a/b#3\".\n"
                          u"[uri: \"ftp://u:p@host:21/a/b#3\"\n"
                          u"FolderObject::Initialize\n"
                          u"existed: 1\n"
                          u"isDirectory: 0] [interfaceimpl@N]"));
    EXPECT_EQ(Server().lookups, 1);
}

TEST_F(MustExist, AFolderIsNoFile)
{
    Server().facts.isDirectory = true;
    EXPECT_THAT(GetFile(u"ftp://u:p@host:21/a/b#3"),
                Published(notFound, IID_IFileSystem,
                          u"Couldn't find the URI \"a/b#3\".\n"
                          u"[uri: \"ftp://u:p@host:21/a/b#3\"\n"
                          u"FileObject::Initialize\n"
                          u"existed: 1\n"
                          u"isDirectory: 1] [interfaceimpl@N]"));
    EXPECT_EQ(Server().lookups, 1);
}

TEST_F(MustExist, ARootIsAFolderAndNoFile)
{
    EXPECT_THAT(GetFolder(u"ftp://host"), Succeeded());
    EXPECT_THAT(GetFile(u"ftp://host/"), Published(notFound, IID_IFileSystem,
                                                   u"Couldn't find the URI \"\".\n"
                                                   u"[uri: \"ftp://host/\"\n"
                                                   u"FileObject::Initialize\n"
                                                   u"existed: 1\n"
                                                   u"isDirectory: 1] [interfaceimpl@N]"));
    EXPECT_EQ(Server().lookups, 0);
}

TEST_F(MustExist, WhatIsFoundIsNotLookedUpAgain)
{
    EXPECT_THAT(GetFile(u"ftp://host/a"), Succeeded());
    EXPECT_EQ(Server().lookups, 1);
    Server().facts.isDirectory = true;
    ComPtr<IFolder> folder;
    ASSERT_EQ(system->GetFolder(Wide(u"ftp://host/a"), VARIANT_TRUE, folder.Out()), S_OK);
    EXPECT_EQ(Server().lookups, 2);
    EXPECT_EQ(Got<std::uint32_t>(folder, &IFileSystemItem::GetAttributes), 16U);
    EXPECT_EQ(Server().lookups, 2);
}

TEST_F(MustExist, AFailedLookupSpeaksForItself)
{
    Server().failure.emplace(E_ACCESSDENIED, u"no entry", SourcePosition{u"fake", 3});
    EXPECT_THAT(GetFile(u"ftp://host/a"),
                Published(E_ACCESSDENIED, IID_IFileSystem, u"no entry [fake@N]"));
    EXPECT_THAT(GetFolder(u"ftp://host/a"),
                Published(E_ACCESSDENIED, IID_IFileSystem, u"no entry [fake@N]"));
}

TEST_F(MustExist, AnyValueButZeroMeansIt)
{
    EXPECT_THAT(GetFile(u"ftp://host/a", 1), Succeeded());
    EXPECT_EQ(Server().lookups, 1);
    EXPECT_THAT(GetFile(u"ftp://host/a", 0), Succeeded());
    EXPECT_EQ(Server().lookups, 1);
}

TEST_F(MustExist, AnAddressThatIsNoneIsRefusedAsSuch)
{
    EXPECT_THAT(GetFile(u"nothing"), Published(E_INVALIDARG, IID_IFileSystem,
                                               u"Can't parse the URI \"nothing\". [uri@N]"));
    EXPECT_THAT(GetFile({}),
                Published(E_INVALIDARG, IID_IFileSystem, u"Can't parse the URI \"\". [uri@N]"));
}

} // namespace
} // namespace tarnwell::test
