// What hosts in C++ include, over the finished module: beyond what the guide's listings show.
#include "support/tempfolder.h"

#include <tarnwell/client.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

namespace tarnwell::test
{

namespace
{

using namespace client;

class Client : public testing::Test
{
protected:
    std::string In(const std::string& name) const
    {
        return files_.Combine(folder_.Path(), name);
    }

    const ThreadScope thread_{};
    const TempFolder folder_{};
    const Module module_{};
    FileSystem files_ = module_.Open(folder_.Path());
};

TEST_F(Client, TextsComeBackAsTheyWere)
{
    for (const char* const text : {"", "plain", "n\xC3\xA4her", "\xE6\x97\xA5\xE6\x9C\xAC",
                                   "\xF0\x9F\x90\x9F", "\xFF\xFE", "a\xC3", "\xC0\xAF", "\xF5"})
        EXPECT_EQ(Utf8(Utf16(text)), text);
    for (const std::u16string text :
         {u"\xD800", u"a\xDBFF", u"\xDC00\xD800x", u"\xDC80\xD83D\xDC1F"})
    {
        const std::string bytes = Utf8(text);
        EXPECT_EQ(Utf8(Utf16(bytes)), bytes);
    }
}

TEST_F(Client, AddressesComeInEveryForm)
{
    files_.GetFile(In("f")).Write("data");
    const std::string utf8 = In("f");
    const std::u16string units = Utf16(utf8);
    EXPECT_EQ(files_.GetFile(utf8).Read(), "data");
    EXPECT_EQ(files_.GetFile(utf8.c_str()).Read(), "data");
    EXPECT_EQ(files_.GetFile(std::string_view(utf8)).Read(), "data");
    EXPECT_EQ(files_.GetFile(units).Read(), "data");
    EXPECT_EQ(files_.GetFile(units.c_str()).Read(), "data");
    EXPECT_EQ(files_.GetFile(folder_.Path() / "f").Read(), "data");
    EXPECT_EQ(files_.GetFile(Bstr(units)).Read(), "data");
}

TEST_F(Client, TheSchemeChoosesTheClass)
{
    EXPECT_EQ(ClassOf("svn://h/r"), CLSID_SVNFileSystem);
    EXPECT_EQ(ClassOf("svn+ssh://h/r"), CLSID_SVNFileSystem);
    EXPECT_EQ(ClassOf("SvnHttps://h/r"), CLSID_SVNFileSystem);
    EXPECT_EQ(ClassOf("p4:////depot"), CLSID_P4FileSystem);
    EXPECT_EQ(ClassOf("FTP://h"), CLSID_FTPFileSystem);
    EXPECT_EQ(ClassOf("git:f"), CLSID_GITFileSystem);
    EXPECT_EQ(ClassOf("hg://f"), CLSID_HGFileSystem);
    EXPECT_EQ(ClassOf("svn:/h"), CLSID_Win32FileSystem);
    EXPECT_EQ(ClassOf("svnx://h"), CLSID_Win32FileSystem);
    EXPECT_EQ(ClassOf("C:\\git:f"), CLSID_Win32FileSystem);
    EXPECT_EQ(ClassOf(""), CLSID_Win32FileSystem);
}

TEST_F(Client, BuffersOfAnyKindAreFilledToTheEnd)
{
    files_.GetFile(In("f")).Write(std::vector<std::uint32_t>{0x64636261, 0x68676665});
    Reader reader = files_.GetFile(In("f")).Open();
    std::array<std::uint16_t, 3> words{};
    EXPECT_EQ(reader.Read(words), 6U);
    EXPECT_EQ(words[2], 0x6665);
    std::string rest(10, '.');
    EXPECT_EQ(reader.Read(rest), 2U);
    EXPECT_EQ(rest, "gh........");
    EXPECT_EQ(reader.Read(rest), 0U);
    EXPECT_EQ(reader.Seek(-3, SeekFromEnd), 5U);
    EXPECT_EQ(reader.ReadAll(), "fgh");
    EXPECT_EQ(reader.ReadAll(), "");
}

TEST_F(Client, LongContentIsReadWhole)
{
    for (const std::size_t size : {0x0FFFFU, 0x10000U, 0x10001U, 0x20000U})
    {
        files_.GetFile(In("f")).Write(std::string(size, 'x'));
        EXPECT_EQ(files_.GetFile(In("f")).Read().size(), size);
        EXPECT_EQ(files_.GetFile(In("f"), true).Size(), size);
    }
}

TEST_F(Client, ListsGoFromTheFirstToTheLast)
{
    for (const char* const name : {"a", "b", "c"})
        files_.GetFile(In(name)).Write("");
    const Contents contents = files_.GetFolder(folder_.Path()).Contents();
    std::string names;
    for (const Item& item : contents)
        names += item.Name();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, "abc");
    EXPECT_EQ(std::distance(contents.begin(), contents.end()), 3);
    EXPECT_FALSE(contents.empty());
    EXPECT_THROW(contents[3], Failure);
    EXPECT_EQ(contents[0].AsFile().Read(), "");
    EXPECT_THROW(contents[0].AsFolder(), Failure);
}

TEST_F(Client, AFailureHasTheStatusAndTheText)
{
    try
    {
        files_.GetFile(In("none"), true);
        FAIL();
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(static_cast<std::uint32_t>(failure.Status()), 0x80070002U);
        EXPECT_NE(std::string(failure.what()).find("none"), std::string::npos);
    }
}

TEST_F(Client, ABareFailureDoesNotShowAnEarlierText)
{
    EXPECT_THROW(files_.GetFile(In("none"), true), Failure);
    try
    {
        module_.Open("git:").CreateTempFile("git:///f");
        FAIL();
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(failure.Status(), E_NOTIMPL);
        EXPECT_STREQ(failure.what(), "The file system doesn't offer this operation.");
    }
}

TEST_F(Client, WhatAFunctionThrowsComesOutOfTheCallThatAsked)
{
    Answers answers;
    answers.credentials = [](const CredentialsQuestion&) -> std::optional<Credentials> {
        throw std::domain_error("no answer");
    };
    const FileSystem files = module_.Open("svn://127.0.0.1:1/r", answers);
    EXPECT_THROW(files.GetFolder("svn://127.0.0.1:1/r").Contents(), std::domain_error);
    // And is not met again.
    EXPECT_THROW(files_.GetFile(In("none"), true), Failure);
}

TEST_F(Client, SettingsAreAskedWhenAFolderIsRead)
{
    int asked = 0;
    Answers answers;
    answers.iterateStreams = [&] {
        return ++asked > 100;
    };
    files_.GetFile(In("f")).Write("");
    const FileSystem files = module_.Open(folder_.Path(), answers);
    EXPECT_EQ(files.GetFolder(folder_.Path()).Contents().size(), 1U);
    EXPECT_EQ(asked, 1);
}

TEST_F(Client, NoCredentialsAreARefusal)
{
    Answers answers;
    CredentialsQuestion seen{};
    answers.credentials = [&](const CredentialsQuestion& question) {
        seen = question;
        return std::optional<Credentials>();
    };
    const FileSystem files = module_.Open("svn://example.invalid/r", answers);
    try
    {
        files.GetFolder("svn://example.invalid/r").Contents();
        FAIL();
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(failure.Status(), E_ACCESSDENIED);
    }
    EXPECT_EQ(seen.kind, CredentialsForServer);
    EXPECT_EQ(seen.host, "example.invalid");
}

TEST_F(Client, OnlyWhatIsConfirmedIsDeleted)
{
    files_.GetFile(In("f")).Write("");
    Item item = files_.GetFile(In("f"));
    EXPECT_FALSE(item.Delete(false, [](const std::string&) { return false; }));
    EXPECT_TRUE(std::filesystem::exists(folder_.Path() / "f"));
    EXPECT_TRUE(item.Delete(false, [&](const std::string& what) { return what == In("f"); }));
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "f"));
    // With nothing confirmed there is nothing to ask the module for.
    files_.DeleteItems({In("none")}, false, [](const std::string&) { return false; });
}

TEST_F(Client, CopyFlagsReachThePlatform)
{
    files_.GetFile(In("f")).Write("data");
    EXPECT_TRUE(files_.Copy(In("f"), In("g"), nullptr, CopyFailIfExists));
    EXPECT_THROW(files_.Copy(In("f"), In("g"), nullptr, CopyFailIfExists), Failure);
    EXPECT_THROW(module_.Open("git:").Copy("git:///f", "git:///g", nullptr, CopyLink), Failure);
}

TEST_F(Client, ACopyTellsHowFarItIs)
{
    const std::string bytes(200'000, 'x');
    files_.GetFile(In("f")).Write(bytes);
    File target = files_.GetFile(In("g"));
    std::vector<std::uint64_t> told;
    const auto listen = [&](const Amounts& amounts) {
        EXPECT_EQ(amounts.total, bytes.size());
        told.push_back(amounts.done);
        return true;
    };
    EXPECT_TRUE(CopyContent(files_.GetFile(In("f")), target, listen));
    EXPECT_EQ(told, (std::vector<std::uint64_t>{0, 65536, 131072, 196608, 200000}));
    EXPECT_EQ(target.Read(), bytes);
    EXPECT_FALSE(CopyContent(files_.GetFile(In("f")), target, [] { return false; }));
    EXPECT_TRUE(CopyContent(files_.GetFile(In("f")), target));
}

TEST_F(Client, FunctionsOfAllKindsAreProgress)
{
    files_.GetFile(In("f")).Write("data");
    EXPECT_TRUE(files_.Copy(In("f"), In("g"), [] { return true; }));
    EXPECT_TRUE(files_.Copy(In("f"), In("g"), std::function<bool()>()));
    EXPECT_TRUE(files_.Copy(In("f"), In("g"), std::function<bool()>([] { return true; })));
    EXPECT_FALSE(Progress());
    EXPECT_FALSE(Progress([] { return true; }).WantsAmounts());
    EXPECT_TRUE(Progress([](const Amounts&) { return true; }).WantsAmounts());
}

// Without a repository there is a reason, whatever clients there are.
TEST_F(Client, HistoriesAndTreesFailInWords)
{
    const FileSystem files = module_.Open("git:");
    EXPECT_TRUE(files.HasHistory());
    EXPECT_TRUE(files.HasTrees());
    EXPECT_FALSE(module_.Open("ftp://h").HasTrees());
    const std::string address = "git:" + folder_.Path().string();
    EXPECT_THROW(files.History(address), Failure);
    EXPECT_THROW(files.OpenTree(address), Failure);
    EXPECT_THROW(module_.Open("ftp://h").OpenTree("ftp://h/a"), Failure);
}

TEST_F(Client, AFileThatIsNoModuleIsRefused)
{
    const auto file = folder_.Path() / "libtarnwell.so";
    std::ofstream(file) << "no library";
    EXPECT_THROW(Module{file}, LoadFailure);
    EXPECT_THROW(Module{folder_.Path() / "none"}, LoadFailure);
}

} // namespace

} // namespace tarnwell::test
