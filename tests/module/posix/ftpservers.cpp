// The FTP file system of the finished module on real servers.
#include "module/ftptest.h"
#include "support/ftp/posix/realserver.h"

#include <tarnwell/text.h>

#include <fstream>
#include <iterator>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

class FtpServers : public FtpModuleTest, public testing::WithParamInterface<FtpServerKind>
{
protected:
    FtpServers()
    {
        // Not the root: to one of them that is the machine's own, and not the login folder.
        fs::create_directory(server.Folder() / "w");
        fs::permissions(server.Folder() / "w", fs::perms::all); // the server is somebody else
        Use(server.Host(), u"w/");
    }

    fs::path Stored(const std::u16string& path) const
    {
        return server.Folder() / "w" / *EncodeName(path);
    }
    std::string Bytes(const std::u16string& path) const
    {
        std::ifstream file(Stored(path), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const RealFtpServer server{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Real, FtpServers, testing::ValuesIn(allFtpServers),
                         testing::PrintToStringParamName());

TEST_P(FtpServers, WhatIsWrittenIsListedReadAndDeleted)
{
    EXPECT_THAT(Put(u"a.txt", "content"), Succeeded());
    EXPECT_EQ(Bytes(u"a.txt"), "content");
    const auto items = List(Address());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].name, u"a.txt");
    EXPECT_EQ(items[0].path, Address(u"a.txt"));
    EXPECT_EQ(items[0].attributes, 128U);
    EXPECT_EQ(items[0].size, 7U);
    EXPECT_GT(items[0].time, 133000000000000000U);
    EXPECT_EQ(Content(items[0].path), "content");
    EXPECT_EQ(Content(Address(u"a.txt")), "content");
    const Facts named = FileFacts(Address(u"a.txt"));
    EXPECT_EQ(named.size, items[0].size);
    EXPECT_EQ(named.time, items[0].time);
    EXPECT_THAT(Delete(u"a.txt"), Succeeded());
    EXPECT_FALSE(fs::exists(Stored(u"a.txt")));
    EXPECT_EQ(server.Logins(), 1);
}

TEST_P(FtpServers, LargeContentIsByteForByte)
{
    std::string bytes(5 * 1000 * 1000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 + i / 509);
    EXPECT_THAT(Put(u"large", bytes), Succeeded());
    EXPECT_TRUE(Bytes(u"large") == bytes);
    EXPECT_TRUE(Content(Address(u"large")) == bytes);
    EXPECT_THAT(Put(u"large", "short"), Succeeded());
    EXPECT_EQ(Bytes(u"large"), "short");
    EXPECT_THAT(Put(u"empty", ""), Succeeded());
    EXPECT_EQ(Content(Address(u"empty")), "");
}

TEST_P(FtpServers, NamesOfAllKindsAreExact)
{
    std::vector<std::u16string> names{
        u"a b",    u" lead", u"trail ",        u"a*b", u"-l",    u"#x",          u"50%41",
        u"a;b",    u"a\"b",  u"a'b",           u"[x]", u"what?", u"back\\slash", u"\u00e4",
        u"\u65e5", u".dot",  u"\U0001F600.txt"};
    for (const char* const other : {"latin\xE4", "\xFF", "\xFF\xFF", "y\xFF\xFBy", "\x80"})
        names.push_back(DecodeName(other));
    EXPECT_THAT(Create(u"d"), Succeeded());
    for (const std::u16string& name : names)
        EXPECT_THAT(Put(u"d/" + name, *EncodeName(name)), Succeeded());
    EXPECT_THAT(Names(u"d"), testing::UnorderedElementsAreArray(names));
    for (const std::u16string& name : names)
    {
        EXPECT_EQ(Bytes(u"d/" + name), *EncodeName(name));
        EXPECT_EQ(Content(Address(u"d/" + name)), *EncodeName(name));
        EXPECT_THAT(Delete(u"d/" + name), Succeeded());
        EXPECT_FALSE(fs::exists(Stored(u"d/" + name)));
    }
    EXPECT_THAT(Names(u"d"), testing::IsEmpty());
}

TEST_P(FtpServers, FoldersAreCreatedOnceWithTheirParents)
{
    EXPECT_LT(Create(u"a/b").status, 0) << "its parent is missing";
    EXPECT_THAT(Create(u"a/b/c", true), Succeeded());
    EXPECT_TRUE(fs::is_directory(Stored(u"a/b/c")));
    EXPECT_THAT(Create(u"a/b/d", true), Succeeded());
    EXPECT_EQ(Create(u"a/b/c", true).status, Win32Status(183));
    EXPECT_EQ(Create(u"a/b/c").status, Win32Status(183));
    EXPECT_THAT(Names(u"a/b"), UnorderedElementsAre(u"c", u"d"));
    EXPECT_EQ(List(Address(u"a/b"))[0].attributes, folderAttribute);
}

TEST_P(FtpServers, AFolderWithContentNeedsToBeSaidSo)
{
    EXPECT_THAT(Create(u"t/sub", true), Succeeded());
    EXPECT_THAT(Put(u"t/sub/f", "x"), Succeeded());
    EXPECT_LT(Delete(u"t").status, 0);
    EXPECT_TRUE(fs::exists(Stored(u"t/sub/f")));
    EXPECT_THAT(Delete(u"t", true), Succeeded());
    EXPECT_FALSE(fs::exists(Stored(u"t")));
    EXPECT_THAT(Create(u"empty"), Succeeded());
    EXPECT_THAT(Delete(u"empty"), Succeeded());
    EXPECT_FALSE(fs::exists(Stored(u"empty")));
}

TEST_P(FtpServers, ADeletedTreeIsNeverLeft)
{
    EXPECT_THAT(Create(u"kept/deep", true), Succeeded());
    EXPECT_THAT(Put(u"kept/f", "x"), Succeeded());
    EXPECT_THAT(Create(u"t/sub", true), Succeeded());
    EXPECT_THAT(Put(u"t/.hidden", "x"), Succeeded());
    fs::create_symlink("../kept", Stored(u"t/link"));
    fs::create_symlink("../../kept/f", Stored(u"t/sub/file"));
    EXPECT_THAT(Delete(u"t", true), Succeeded());
    EXPECT_FALSE(fs::exists(fs::symlink_status(Stored(u"t"))));
    EXPECT_TRUE(fs::exists(Stored(u"kept/f")));
    EXPECT_TRUE(fs::exists(Stored(u"kept/deep")));
}

// Some servers don't list such links, and so keep their folder.
TEST_P(FtpServers, LinksUpwardsAndToNowhereLeadNowhere)
{
    EXPECT_THAT(Create(u"kept/deep", true), Succeeded());
    EXPECT_THAT(Put(u"kept/f", "x"), Succeeded());
    EXPECT_THAT(Create(u"t"), Succeeded());
    fs::create_symlink("..", Stored(u"t/up"));
    fs::create_symlink(".", Stored(u"t/same"));
    fs::create_symlink("nowhere", Stored(u"t/dangling"));
    Delete(u"t", true);
    EXPECT_TRUE(fs::exists(Stored(u"kept/f")));
    EXPECT_TRUE(fs::exists(Stored(u"kept/deep")));
}

TEST_P(FtpServers, ItemsOfTheRootAreListedOpenedAndDeleted)
{
    if (GetParam() == FtpServerKind::Vsftpd)
        GTEST_SKIP() << "its root is the machine's";
    Use(server.Host());
    EXPECT_THAT(Put(u"a.txt", "content"), Succeeded());
    EXPECT_THAT(Names(u""), UnorderedElementsAre(u"a.txt", u"w"));
    for (const Facts& facts : List(Address()))
        EXPECT_EQ(facts.path, Address(u"/" + facts.name)) << "with one slash more";
    EXPECT_EQ(Content(Address(u"/a.txt")), "content");
    EXPECT_THAT(Find(u"a.txt"), Succeeded());
    EXPECT_THAT(Find(u"/a.txt"), Succeeded());
    EXPECT_THAT(Delete(u"a.txt"), Succeeded());
    EXPECT_THAT(Names(u""), testing::ElementsAre(u"w"));
}

TEST_P(FtpServers, WhatIsNotThereIsSaid)
{
    const Outcome missing = Find(u"none.txt");
    EXPECT_EQ(missing.status, Win32Status(2));
    ASSERT_TRUE(missing.error);
    EXPECT_TRUE(missing.error->text.starts_with(u"Couldn't find the URI \"w/none.txt\"."));
    EXPECT_EQ(FailedList(Address(u"none")).status, Win32Status(2));
    EXPECT_LT(FailedOpen(Address(u"none.txt")).status, 0);
    EXPECT_THAT(Put(u"a.txt", "x"), Succeeded());
    EXPECT_THAT(Find(u"a.txt"), Succeeded());
    EXPECT_EQ(Find(u"A.TXT").status, Win32Status(2));
}

TEST_P(FtpServers, ARefusedPasswordIsReportedAndStandsInNoText)
{
    host_->credentials = {S_OK, u"ftp", u"not-the-password", server.Host()};
    const Outcome refused = Find(u"a.txt");
    EXPECT_TRUE(refused.status == Win32Status(12013) || refused.status == Win32Status(12014));
    ASSERT_TRUE(refused.error);
    EXPECT_TRUE(refused.error->text.starts_with(u"The username and/or password is incorrect."));
    EXPECT_EQ(refused.error->text.find(u"not-the-password"), std::u16string::npos);
    const std::vector<std::u16string> calls = host_->Calls();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_TRUE(calls[1].starts_with(u"ForgetCredentials|FTP: The username and/or password"));
    EXPECT_EQ(calls[1].find(u"not-the-password"), std::u16string::npos);
    EXPECT_EQ(server.Logins(), 0);
}

TEST_P(FtpServers, ManyOperationsLogOnOnce)
{
    for (int i = 0; i < 10; ++i)
    {
        EXPECT_THAT(Put(u"a.txt", "x"), Succeeded());
        EXPECT_EQ(Content(Address(u"a.txt")), "x");
        EXPECT_EQ(Names(u"").size(), 1U);
        EXPECT_EQ(Find(u"none").status, Win32Status(2));
    }
    EXPECT_EQ(server.Logins(), 1);
}

TEST_P(FtpServers, AnOpenStreamLeavesTheServerToOthers)
{
    EXPECT_THAT(Put(u"a.txt", std::string(1000000, 'a')), Succeeded());
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt"), stream), Succeeded());
    EXPECT_EQ(Names(u"").size(), 1U);
    EXPECT_EQ(server.Logins(), 2);
    stream.Reset(); // in the middle
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Content(Address(u"a.txt")).size(), 1000000U);
}

TEST_P(FtpServers, CopiesAreWholeUnlessTheyAreCancelled)
{
    const std::string bytes(1000000, 'c');
    EXPECT_THAT(Put(u"from", bytes), Succeeded());
    FakeProgress progress;
    EXPECT_THAT(Copy(u"from", u"to", &progress), Succeeded());
    EXPECT_TRUE(Bytes(u"to") == bytes);
    EXPECT_EQ(progress.Questions(), 16);
    FakeProgress cancelling;
    cancelling.answer = [](int n) {
        return n == 3 ? VARIANT_FALSE : VARIANT_TRUE;
    };
    const Outcome cancelled = Copy(u"from", u"part", &cancelling);
    EXPECT_EQ(cancelled.status, E_ABORT);
    ASSERT_TRUE(cancelled.error);
    EXPECT_TRUE(cancelled.error->text.starts_with(u"The operation was cancelled."));
    EXPECT_LT(fs::file_size(Stored(u"part")), bytes.size());
    EXPECT_TRUE(Content(Address(u"to")) == bytes) << "the sessions are sound";
}

TEST_P(FtpServers, AListIsDeletedInOneSession)
{
    FakeItemList list({});
    for (const char16_t* const name : {u"a", u"b", u"c"})
    {
        EXPECT_THAT(Put(name, "x"), Succeeded());
        list.entries.push_back(Address(name));
    }
    list.count = 3;
    EXPECT_EQ(system->DeleteItems(&list, VARIANT_TRUE, VARIANT_FALSE), S_OK);
    EXPECT_TRUE(fs::is_empty(Stored(u"")));
    EXPECT_EQ(server.Logins(), 1);
}

} // namespace
} // namespace tarnwell::test
