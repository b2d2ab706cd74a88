// Files that had other names, and links, as the host program shows them in all systems.
#include "backends/backend.h"
#include "e2e/hostrun.h"
#include "e2e/json.h"
#include "support/clients.h"

#include <tarnwell/text.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;

class HostOverSystems : public ClientTest, public testing::WithParamInterface<const Backend*>
{
protected:
    void SetUp() override
    {
        ClientTest::SetUp();
        if (IsSkipped())
            return;
        const std::string why = GetParam()->whyNot == nullptr ? "" : GetParam()->whyNot();
        if (!why.empty())
            GTEST_SKIP() << why;
        data_ = GetParam()->makeData();
    }

    static std::vector<JsonLine> Lines(std::vector<std::u16string> arguments)
    {
        arguments.insert(arguments.begin(), u"--json");
        const HostRun run = RunHost(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return JsonLinesOf(run.output);
    }

    std::unique_ptr<BackendData> data_;
};

TEST_P(HostOverSystems, LogFollowsAFileThroughItsNames)
{
    const std::string text = "one line\nand another\nand one more\n";
    data_->Put(u"old.txt", text, "made");
    data_->Rename(u"old.txt", u"new.txt", "renamed");
    data_->Put(u"new.txt", text + "changed\n", "changed");
    const std::u16string address = data_->Address(u"new.txt");

    const auto followed = Lines({u"log", u"--follow", address});
    ASSERT_THAT(followed, SizeIs(3));
    for (const auto& [i, description, name] : {std::tuple(0U, "changed", "new.txt"),
                                               {1U, "renamed", "new.txt"},
                                               {2U, "made", "old.txt"}})
    {
        EXPECT_EQ(followed[i].Text("description"), description);
        EXPECT_THAT(followed[i].Text("path"), EndsWith(name));
    }
    const HostRun old = RunHost({u"cat", DecodeName(followed[2].Text("uri"))});
    EXPECT_EQ(old.output, text) << old.errors;
    EXPECT_THAT(Lines({u"log", u"--follow", u"-n", u"1", u"--skip", u"2", address}), SizeIs(1));
    EXPECT_THAT(Lines({u"log", address}), SizeIs(2));
}

TEST_P(HostOverSystems, LinksAreShownAndLeadNowhere)
{
    data_->PutLink(u"link", "to/there");
    data_->Put(u"a.txt", "x", "with a link");
    const auto items = Lines({u"ls", data_->Address(u"")});
    std::vector<std::string> kinds;
    for (const JsonLine& item : items)
        kinds.push_back(item.Text("name") + " " + item.Text("kind"));
    EXPECT_THAT(kinds, ElementsAre("a.txt file", "link link"));
    const auto facts = Lines({u"stat", data_->Address(u"link")});
    ASSERT_THAT(facts, SizeIs(1));
    EXPECT_EQ(facts[0].Text("kind"), "link");
    EXPECT_EQ(facts[0].Raw("size"), "8");
    EXPECT_EQ(RunHost({u"cat", data_->Address(u"link")}).output, "to/there");
}

bool HasBoth(const Backend& row)
{
    return row.strict.histories && row.strict.trees && row.strict.links;
}

INSTANTIATE_TEST_SUITE_P(Systems, HostOverSystems, testing::ValuesIn(BackendsThat(HasBoth)),
                         [](const testing::TestParamInfo<const Backend*>& row) {
                             return std::string(row.param->name);
                         });

} // namespace

} // namespace tarnwell::test
