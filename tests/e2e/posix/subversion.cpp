// The host program on Subversion repositories, by the prescribed calls.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/posix/svnserve.h"
#include "support/svnrepository.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::string_view committer = "J\xC3\xB6rg";

class HostOnSubversion : public testing::Test
{
protected:
    HostOnSubversion()
    {
        repository_.MakeFolder("trunk");
        repository_.MakeFolder("trunk/my dir");
        repository_.Commit("trunk/my dir/x y.txt", "deep");
        repository_.Commit("trunk/a.txt", "old", "first", std::string(committer));
        repository_.Commit("trunk/a.txt", "new text", "second\nline");
    }

    using Environment = std::vector<std::pair<std::string, std::string>>;

    HostRun Run(const std::vector<std::u16string>& arguments, Environment environment = {}) const
    {
        environment.emplace_back("HOME", home_.Path().string());
        return RunPrescribed({arguments, {}, std::move(environment), {}});
    }

    const TempFolder home_;
    const SvnRepository repository_;
    const std::u16string trunk_ = repository_.Address(u"trunk");
};

TEST_F(HostOnSubversion, LsListsAFolder)
{
    const HostRun run = Run({u"--json", u"ls", trunk_});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto lines = JsonLinesOf(run.output);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[0].Text("name"), "a.txt");
    EXPECT_EQ(lines[0].Text("path"), Utf8(trunk_) + "/a.txt@5");
    EXPECT_EQ(lines[0].Text("comparable_url"), Utf8(trunk_) + "/a.txt");
    EXPECT_EQ(lines[0].Raw("size"), "8");
    EXPECT_EQ(lines[0].Raw("attributes"), "129");
    EXPECT_EQ(lines[1].Text("name"), "my dir");
    EXPECT_EQ(lines[1].Raw("folder"), "true");
    EXPECT_THAT(Run({u"ls", trunk_}).output,
                AllOf(HasSubstr("--r-         8 B"), HasSubstr("d---           -")));
}

// A listing gives the address of its folder as the client writes it.
TEST_F(HostOnSubversion, FindStaysInTheRevision)
{
    EXPECT_THAT(LinesOf(Run({u"find", trunk_}).output),
                testing::ElementsAre(Utf8(trunk_) + "/a.txt@5", Utf8(trunk_) + "/my dir",
                                     Utf8(trunk_) + "/my%20dir/x y.txt@3"));
    const HostRun old = Run({u"find", trunk_ + u"@4", u"*.txt"});
    EXPECT_EQ(old.errors, "");
    EXPECT_THAT(LinesOf(old.output), testing::ElementsAre(Utf8(trunk_) + "/a.txt@4",
                                                          Utf8(trunk_) + "/my%20dir/x y.txt@3"));
}

TEST_F(HostOnSubversion, WhatIsFoundInARevisionOpens)
{
    repository_.Commit("trunk/a%2541 %2525.txt", "percent");
    const auto environment = Environment{{"HOME", home_.Path().string()}};
    const HostRun found = RunHost({{u"find", trunk_, u"*%*"}, {}, environment, {}});
    ASSERT_THAT(LinesOf(found.output), SizeIs(1)) << found.errors;
    const std::u16string address = DecodeName(LinesOf(found.output)[0]);
    const HostRun run = RunHost({{u"cat", address}, {}, environment, {}});
    EXPECT_EQ(run.output, "percent") << run.errors;
}

TEST_F(HostOnSubversion, StatTellsAllFacts)
{
    for (const std::u16string name : {u"/a.txt", u"/a.txt@4", u"/my dir"})
    {
        const HostRun run = Run({u"--json", u"stat", trunk_ + name});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        const auto lines = JsonLinesOf(run.output);
        ASSERT_THAT(lines, SizeIs(1));
        EXPECT_FALSE(lines[0].Has("errors"));
        EXPECT_EQ(lines[0].Raw("size"), name == u"/a.txt"     ? "8"
                                        : name == u"/a.txt@4" ? "3"
                                                              : "null");
    }
    const HostRun missing = Run({u"stat", trunk_ + u"/none"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_THAT(missing.errors, AllOf(StartsWith("An error occurred while accessing \"svnfile:"),
                                      EndsWith("\n0x80004005\n")));
}

TEST_F(HostOnSubversion, CatGivesTheBytesOfARevision)
{
    EXPECT_EQ(Run({u"cat", trunk_ + u"/a.txt"}).output, "new text");
    EXPECT_EQ(Run({u"cat", trunk_ + u"/a.txt@4"}).output, "old");
    EXPECT_EQ(Run({u"cat", trunk_ + u"/my dir/x y.txt"}).output, "deep");
    EXPECT_EQ(Run({u"cat", trunk_ + u"/none"}).exitCode, 1);
}

TEST_F(HostOnSubversion, LogListsTheRevisions)
{
    const HostRun run = Run({u"--json", u"log", trunk_ + u"/a.txt"});
    EXPECT_EQ(run.exitCode, 0);
    const auto lines = JsonLinesOf(run.output);
    ASSERT_THAT(lines, SizeIs(2)) << "there is no working copy";
    EXPECT_EQ(lines[0].Text("id"), "5");
    EXPECT_EQ(lines[0].Text("description"), "second\nline");
    EXPECT_EQ(lines[1].Text("author"), committer);
    EXPECT_EQ(Run({u"cat", DecodeName(lines[1].Text("uri"))}).output, "old");
    const HostRun none = Run({u"log", trunk_ + u"/none"});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(none.output + none.errors, "No revisions.\n");
}

TEST_F(HostOnSubversion, ComparePairsByName)
{
    const HostRun files = Run({u"--json", u"compare", trunk_ + u"/a.txt@4", trunk_ + u"/a.txt@5"});
    EXPECT_EQ(files.exitCode, 3);
    EXPECT_EQ(JsonLinesOf(files.output).at(0).Raw("first_difference"), "0");

    const HostRun folders = Run({u"compare", trunk_ + u"@4", trunk_});
    EXPECT_EQ(folders.exitCode, 3);
    EXPECT_THAT(folders.output, AllOf(HasSubstr("a.txt: different"), EndsWith("1 different\n")));

    const TempFolder exported;
    repository_.Svn(
        {"export", "-q", "--force", repository_.Url() + "/trunk", exported.Path().string()});
    const HostRun same = Run({u"compare", trunk_, exported.Text()});
    EXPECT_EQ(same.exitCode, 0) << same.output << same.errors;
}

// The client fills them in when it reads a file, and lists the size without.
TEST_F(HostOnSubversion, CompareReadsFilesWithKeywords)
{
    const TempFolder checkout;
    const std::string folder = (checkout.Path() / "wc").string();
    repository_.Svn({"checkout", "-q", repository_.Url() + "/trunk", folder});
    WriteBytes(checkout / u"wc/k.txt", "$Revision$\n");
    repository_.Svn({"add", "-q", folder + "/k.txt"});
    repository_.Svn({"propset", "-q", "svn:keywords", "Revision", folder + "/k.txt"});
    repository_.Svn({"commit", "-q", "-m", "keywords", folder});
    ASSERT_NE(ReadBytes(checkout / u"wc/k.txt"), "$Revision$\n");
    for (const bool isLeft : {true, false})
    {
        const std::u16string other = checkout / u"wc";
        const HostRun run =
            isLeft ? Run({u"compare", trunk_, other}) : Run({u"compare", other, trunk_});
        EXPECT_EQ(run.exitCode, 0) << run.output << run.errors;
        EXPECT_EQ(run.output, "4 equal\n");
    }
}

// As "svn status" says it of the same files; on a server a listing tells neither properties nor
// links.
TEST_F(HostOnSubversion, CompareKnowsWhatAWorkingCopyConverts)
{
    const TempFolder checkout;
    const std::filesystem::path folder = checkout.Path() / "wc";
    const std::string wc = folder.string();
    repository_.CheckOut(folder);
    WriteBytes(checkout / u"wc/trunk/k.txt", "$Id$ $Rev:$\nand more\n");
    WriteBytes(checkout / u"wc/trunk/plain.txt", "$Id: none $\n");
    std::filesystem::create_symlink("my dir", folder / "trunk/link");
    for (const char* const name : {"k.txt", "plain.txt", "link"})
        repository_.Svn({"add", "-q", wc + "/trunk/" + name});
    repository_.Svn({"propset", "-q", "svn:keywords", "Id Rev", wc + "/trunk/k.txt"});
    repository_.Svn({"commit", "-q", "-m", "keywords and a link", wc});
    ASSERT_NE(ReadBytes(checkout / u"wc/trunk/k.txt").find("$Id: k.txt "), std::string::npos);

    const SvnServe server(repository_, "read");
    const auto environment = Environment{{"HOME", home_.Path().string()}};
    const std::u16string disk = checkout / u"wc/trunk";
    const auto compare = [&](const std::u16string& address) {
        const HostRun run = RunHost({{u"compare", address, disk}, {}, environment, {}});
        return run.output + run.errors;
    };
    const std::u16string addresses[] = {trunk_, u"svn://" + server.Host() + u"/trunk"};
    for (const std::u16string& address : addresses)
        EXPECT_EQ(compare(address), "6 equal\n") << Utf8(address);
    WriteBytes(checkout / u"wc/trunk/k.txt", "$Id: k.txt 1 x $ $Rev:$\nand MORE\n");
    WriteBytes(checkout / u"wc/trunk/plain.txt", "$Id: some $\n");
    for (const std::u16string& address : addresses)
        EXPECT_THAT(compare(address),
                    AllOf(HasSubstr("k.txt: different"), HasSubstr("plain.txt: different"),
                          EndsWith("4 equal, 2 different\n")));
}

// The module chooses the character set for its clients, and their language.
TEST_F(HostOnSubversion, NamesBeyondAsciiComeThroughInAnyLocale)
{
    repository_.Commit("trunk/\xE6\x97\xA5.txt", "bytes");
    for (const char* locale : {"C", "POSIX", "ja_JP.UTF-8", "en_US.ISO-8859-1"})
    {
        const Environment environment{{"LC_ALL", locale}};
        const std::u16string path = trunk_ + u"/\u65e5.txt";
        EXPECT_EQ(Run({u"cat", path}, environment).output, "bytes") << locale;
        EXPECT_THAT(JsonLinesOf(Run({u"--json", u"log", path}, environment).output), SizeIs(1));
        const auto lines = JsonLinesOf(Run({u"--json", u"ls", trunk_}, environment).output);
        ASSERT_THAT(lines, SizeIs(3)) << locale;
        EXPECT_EQ(lines[2].Text("name"), "\xE6\x97\xA5.txt");
        EXPECT_THAT(Run({u"ls", u"svnfile:///nowhere/at/all"}, environment).errors,
                    HasSubstr("Unable to open repository"))
            << locale;
    }
}

TEST_F(HostOnSubversion, CredentialsComeFromTheOptions)
{
    const SvnServe server(repository_, "none");
    const std::u16string address = u"svn://" + server.Host() + u"/trunk/a.txt";
    EXPECT_EQ(Run({u"--user", u"ann", u"--password", u"secret", u"cat", address}).output,
              "new text");
    const std::u16string ann = u"svn://ann:*@" + server.Host() + u"/trunk/a.txt";
    EXPECT_EQ(Run({u"--password", u"secret", u"cat", ann}).output, "new text");

    const HostRun wrong = Run({u"--user", u"ann", u"--password", u"wrong", u"cat", address});
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_THAT(wrong.errors, HasSubstr("You can configure this information in Options"));
    const HostRun declined = Run({u"--no-credentials", u"cat", address});
    EXPECT_THAT(declined.errors, AllOf(StartsWith("User name and password credentials might be"),
                                       EndsWith("\n0x80070005\n")));
    EXPECT_EQ(Run({u"cat", address}).exitCode, 1) << "nobody without a name";
}

TEST_F(HostOnSubversion, ServersForEverybodyNeedNoOptions)
{
    const SvnServe server(repository_, "read");
    const std::u16string address = u"svn://" + server.Host() + u"/trunk";
    EXPECT_EQ(Run({u"cat", address + u"/a.txt"}).output, "new text");
    EXPECT_THAT(JsonLinesOf(Run({u"--json", u"ls", address}).output), SizeIs(2));
}

} // namespace

} // namespace tarnwell::test
