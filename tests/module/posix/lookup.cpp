// Looking up what only this platform has: one root, links, pipes, names with colons.
#include "module/localtest.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

constexpr std::uint32_t linkAttribute = 0x400;

class PosixLookup : public LocalTest
{
};

TEST_F(PosixLookup, TheRootIsItsOwnParent)
{
    const auto found = Folder(u"/");
    const Facts facts = FactsOf(found);
    EXPECT_EQ(facts.path, u"/");
    EXPECT_EQ(facts.name, u"");
    EXPECT_EQ(facts.parent, u"/");
    EXPECT_EQ(facts.attributes & folderAttribute, folderAttribute);
    EXPECT_THAT(GetFile(u"/"), Failed(Win32Status(2), u"Failed to open \"/\"."));
}

TEST_F(PosixLookup, TheParentBelowTheRootIsTheRoot)
{
    const Facts there = FactsOf(Folder(u"/tmp"));
    EXPECT_EQ(there.path, u"/tmp");
    EXPECT_EQ(there.parent, u"/");
    const Facts missing = FactsOf(NewFile(u"/no-such-file-of-tarnwell"));
    EXPECT_EQ(missing.path, u"/no-such-file-of-tarnwell");
    EXPECT_EQ(missing.parent, u"/");
}

TEST_F(PosixLookup, AColonIsAPartOfTheName)
{
    const std::u16string path = Put(u"a.txt:s1", "12345");
    const Facts facts = FactsOf(File(path));
    EXPECT_EQ(facts.name, u"a.txt:s1");
    EXPECT_EQ(facts.size, 5U);
    Put(u"b.txt");
    EXPECT_THAT(GetFile(folder / u"b.txt:s1"),
                Failed(Win32Status(2), u"Failed to open \"" + (folder / u"b.txt:s1") + u"\"."));
}

TEST_F(PosixLookup, ALinkShowsItsTargetAndThatItIsOne)
{
    const std::u16string target = Put(u"target", "12345");
    fs::create_symlink("target", folder.Path() / "link");
    const Facts link = FactsOf(File(folder / u"link"));
    const Facts itself = FactsOf(File(target));
    EXPECT_EQ(link.name, u"link");
    EXPECT_EQ(link.size, 5U);
    EXPECT_EQ(link.time, itself.time);
    EXPECT_EQ(link.attributes & linkAttribute, linkAttribute);
    EXPECT_EQ(itself.attributes & linkAttribute, 0U);
}

TEST_F(PosixLookup, ALinkToAFolderIsAFolder)
{
    MakeDirectory(u"target");
    fs::create_directory_symlink("target", folder.Path() / "link");
    const Facts link = FactsOf(Folder(folder / u"link"));
    EXPECT_EQ(link.attributes & (linkAttribute | folderAttribute), linkAttribute | folderAttribute);
}

TEST_F(PosixLookup, ALinkToNothingExists)
{
    fs::create_symlink("nothing", folder.Path() / "link");
    const Facts link = FactsOf(File(folder / u"link"));
    EXPECT_EQ(link.attributes & linkAttribute, linkAttribute);
    EXPECT_EQ(link.size, 0U);
    EXPECT_NE(link.time, 0U) << "its own";
    ComPtr<IFileStream> stream;
    EXPECT_EQ(File(folder / u"link")->Open(readAccess, openExisting, stream.Out()), Win32Status(2));
}

TEST_F(PosixLookup, LinksAreListedAsTheyAreLookedUp)
{
    Put(u"target", "12345");
    fs::create_symlink("target", folder.Path() / "link");
    fs::create_symlink("nothing", folder.Path() / "dangling");
    MakeDirectory(u"sub");
    fs::create_directory_symlink("sub", folder.Path() / "subLink");
    for (const auto& item : ItemsOf(List(folder.Text())))
    {
        const Facts listed = FactsOf(item);
        const bool isFolder = (listed.attributes & folderAttribute) != 0;
        const Facts found = isFolder ? FactsOf(Folder(listed.path)) : FactsOf(File(listed.path));
        EXPECT_EQ(listed, found) << testing::PrintToString(listed.name);
    }
}

TEST_F(PosixLookup, APipeIsLookedAtWithoutWaitingForItsOtherEnd)
{
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(FactsOf(File(folder / u"pipe")).size, 0U);
    EXPECT_THAT(NamesOf(List(folder.Text())), testing::ElementsAre(u"pipe"));
}

TEST_F(PosixLookup, WhatAPipeHoldsIsThereForItsOpening)
{
    const fs::path pipe = folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int writer = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(write(writer, "12345", 5), 5);
    const auto item = File(pipe.u16string());
    EXPECT_THAT(NamesOf(List(folder.Text())), testing::ElementsAre(u"pipe"));
    ComPtr<IFileStream> stream;
    ASSERT_EQ(item->Open(readAccess, openExisting, stream.Out()), S_OK);
    close(writer);
    EXPECT_EQ(ReadAll(stream), "12345");
}

// Its writer, who waits for a reader, would take the lookup for one.
TEST_F(PosixLookup, APipeIsNeverOpenedToBeLookedAt)
{
    const fs::path pipe = folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int openings = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(openings, pipe.c_str(), IN_OPEN), 0);
    char events[4096];
    const auto item = File(pipe.u16string());
    FactsOf(item);
    List(folder.Text());
    EXPECT_LT(read(openings, events, sizeof events), 0) << "nothing was opened";
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GT(read(openings, events, sizeof events), 0) << "as the test would see it";
    close(reader);
    close(openings);
}

TEST_F(PosixLookup, ASocketExists)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.Path() / "s";
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int socketDescriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(socketDescriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    const Facts facts = FactsOf(File(folder / u"s"));
    EXPECT_EQ(facts.name, u"s");
    EXPECT_EQ(facts.size, 0U);
    close(socketDescriptor);
}

TEST_F(PosixLookup, ADotFileIsHidden)
{
    constexpr std::uint32_t hidden = 2;
    EXPECT_EQ(FactsOf(File(Put(u".dot"))).attributes & hidden, hidden);
    EXPECT_EQ(FactsOf(File(Put(u"plain"))).attributes, 128U) << "nothing else to say";
}

TEST_F(PosixLookup, PathsJoinWithASlash)
{
    Bstr result;
    EXPECT_EQ(system->CombinePath(Ole(u"C:"), Ole(u"x"), result.Out()), S_OK);
    EXPECT_EQ(result.View(), u"C:/x") << "there are no drives";
    EXPECT_EQ(system->CombinePath(Ole(u"a\\"), Ole(u"x"), result.Out()), S_OK);
    EXPECT_EQ(result.View(), u"a\\/x") << "a backslash is a part of the name";
}

} // namespace

} // namespace tarnwell::test
