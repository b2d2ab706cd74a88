// The host program on files of Git and Mercurial repositories, by the prescribed calls.
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/clients.h"
#include "support/mercurialrepository.h"
#include "support/repository.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::string_view author = "\xC3\x9Cml\xC3\xA4ut";

const std::string oldBytes("old\r\n\n\0\x1A\xFF", 8);
const std::string newBytes("new text\r\n");

struct System
{
    const char* name;
    const char16_t* scheme;
    const char* unknownRevision; // what the client says of it
};

// A file with two revisions, by an author with letters outside ASCII.
struct History
{
    std::u16string path;
    std::u16string oldest, newest; // revisions
    std::shared_ptr<const void> repository;
};

std::u16string Widened(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

History MakeHistory(const System& system)
{
    const std::string by(author);
    if (system.name == std::string("Git"))
    {
        const auto made = std::make_shared<Repository>();
        const std::string oldest = made->Commit(u"sub/a b.txt", oldBytes, "first", by);
        const std::string newest = made->Commit(u"sub/a b.txt", newBytes, "second", by);
        return {Joined(*made / u"sub", u"a b.txt"), Widened(oldest), Widened(newest), made};
    }
    const auto made = std::make_shared<MercurialRepository>();
    const std::vector<std::string> option = {"-u", by};
    made->Commit(u"sub/a b.txt", oldBytes, "first", option);
    made->Commit(u"sub/a b.txt", newBytes, "second", option);
    return {Joined(*made / u"sub", u"a b.txt"), u"0", u"1", made};
}

// Nothing here changes it, so one of each kind is made.
const History& HistoryOf(const System& system)
{
    static std::map<const char*, History> made;
    if (!WhyNoClients().empty())
        return made[system.name];
    const auto found = made.find(system.name);
    return found == made.end() ? made.emplace(system.name, MakeHistory(system)).first->second
                               : found->second;
}

// Messages have the platform's line ends.
std::string WithoutReturns(std::string text)
{
    std::erase(text, '\r');
    return text;
}

class WorkingCopies : public ClientTest, public testing::WithParamInterface<System>
{
protected:
    HostRun Run(const std::vector<std::u16string>& arguments,
                const std::vector<std::pair<std::string, std::string>>& environment = {}) const
    {
        return RunPrescribed({arguments, {}, environment, {}});
    }

    std::u16string Address(const std::u16string& revision = {}) const
    {
        return GetParam().scheme + history_.path + (revision.empty() ? u"" : u"#" + revision);
    }

    const History& history_ = HistoryOf(GetParam());
};

TEST_P(WorkingCopies, LogListsTheRevisions)
{
    const HostRun run = Run({u"--json", u"log", Address()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    const auto lines = JsonLinesOf(run.output);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].Text("description"), "Working Copy");
    EXPECT_EQ(lines[0].Text("uri"), Utf8(history_.path));
    EXPECT_EQ(lines[0].Raw("modified"), "null");
    EXPECT_EQ(lines[1].Text("id"), Utf8(history_.newest));
    EXPECT_EQ(lines[1].Text("description"), "second");
    EXPECT_EQ(lines[1].Text("author"), author);
    EXPECT_EQ(lines[2].Text("description"), "first");
    EXPECT_EQ(Run({u"cat", Widened(lines[2].Text("uri"))}).output, oldBytes);
}

TEST_P(WorkingCopies, LogIsReadableToo)
{
    EXPECT_THAT(Run({u"log", Address()}).output,
                testing::AllOf(HasSubstr("    second\n"), HasSubstr("    Working Copy\n"),
                               HasSubstr(std::string(author) + "\n")));
}

TEST_P(WorkingCopies, LogOfWhatHasNoHistorySaysSo)
{
    const TempFolder folder;
    const HostRun run = Run({u"log", GetParam().scheme + folder.Text()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "No revisions.\n");
    EXPECT_EQ(run.errors, "");
}

TEST_P(WorkingCopies, CatGivesTheBytesOfARevision)
{
    EXPECT_EQ(Run({u"cat", Address()}).output, newBytes);
    EXPECT_EQ(Run({u"cat", Address(history_.oldest)}).output, oldBytes);
}

TEST_P(WorkingCopies, CatTellsWhatTheClientSays)
{
    const HostRun run = Run({u"cat", Address(u"987654")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(WithoutReturns(run.errors), StartsWith("An error occurred while accessing \"" +
                                                       Utf8(Address(u"987654")) + "\"\n\n"));
    EXPECT_THAT(run.errors, HasSubstr(GetParam().unknownRevision));
    EXPECT_THAT(run.errors, testing::EndsWith("\n0x80004005\n"));
}

TEST_P(WorkingCopies, StatTellsTheNamesAndThatThereAreNoFacts)
{
    const HostRun run = Run({u"--json", u"stat", Address(u"7")});
    EXPECT_EQ(run.exitCode, 0);
    const auto lines = JsonLinesOf(run.output);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].Text("name"), "a b.txt#7");
    EXPECT_EQ(lines[0].Text("comparable_name"), "a b.txt");
    EXPECT_EQ(lines[0].Text("comparable_url"), Utf8(Address()));
    for (const char* fact : {"size", "attributes", "modified"})
    {
        EXPECT_EQ(lines[0].Raw(fact), "null");
        EXPECT_THAT(JsonLine(lines[0].Raw("errors")).Text(fact),
                    StartsWith("Failed to create a support object. "));
    }
}

TEST_P(WorkingCopies, StatNamesInOneLineWhatIsNotTold)
{
    const HostRun run = Run({u"stat", Address()});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, HasSubstr("\nnot told here   attributes, size, modified\n"));
    EXPECT_THAT(run.output, testing::Not(HasSubstr("Function not implemented")));
}

TEST_P(WorkingCopies, CompareGoesByContent)
{
    const HostRun run =
        Run({u"--json", u"compare", Address(history_.oldest), Address(history_.newest)});
    EXPECT_EQ(run.exitCode, 3);
    const auto lines = JsonLinesOf(run.output);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].Text("result"), "different");
    EXPECT_EQ(lines[0].Raw("first_difference"), "0");
    EXPECT_EQ(Run({u"compare", Address(), Address(history_.newest)}).exitCode, 0);
    EXPECT_EQ(Run({u"compare", Address(), history_.path}).exitCode, 0);
}

// The module chooses the character set for its clients.
TEST_P(WorkingCopies, NamesOfPeopleComeThroughInAnyLocale)
{
    for (const char* locale : {"C", "POSIX", "ja_JP.UTF-8", "en_US.ISO-8859-1"})
    {
        const HostRun run = Run({u"--json", u"log", Address()}, {{"LC_ALL", locale}});
        const auto lines = JsonLinesOf(run.output);
        ASSERT_EQ(lines.size(), 3U) << locale << run.errors;
        EXPECT_EQ(lines[1].Text("author"), author) << locale;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Clients, WorkingCopies,
    testing::Values(System{"Git", u"git://", "fatal: "},
                    System{"Mercurial", u"hg://", "abort: unknown revision '987654'"}),
    [](const testing::TestParamInfo<System>& system) { return std::string(system.param.name); });

} // namespace

} // namespace tarnwell::test
