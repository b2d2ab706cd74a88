#include "git/gitworkparser.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::string Settings(const std::vector<std::string>& names)
{
    std::string settings;
    for (const std::string& name : names)
        settings += name + '\0';
    return settings;
}

TEST(GitFilterNames, AreThoseOfFiltersWithSettings)
{
    EXPECT_THAT(ReadGitFilterNames(""), IsEmpty());
    EXPECT_THAT(
        ReadGitFilterNames(Settings({"core.bare", "filter.lfs.clean", "filter.lfs.process",
                                     "filters.x.clean", "diff.filter.x", "filter.b.required"})),
        ElementsAre("b", "lfs"));
    EXPECT_THAT(ReadGitFilterNames(Settings({"filter.", "filter", "filter.clean", ""})), IsEmpty());
}

TEST(GitFilterNames, HoldWhateverIsInThem)
{
    EXPECT_THAT(ReadGitFilterNames(Settings({"filter..clean", "filter. =\"\\\t.clean",
                                             "filter.A.b.Clean.clean", "filter.\xFF.smudge"})),
                ElementsAre("", " =\"\\\t", "A.b.Clean", "\xFF"));
    EXPECT_THAT(ReadGitFilterNames("filter.cut.clean"), ElementsAre("cut"));
}

TEST(GitPaths, AreOneLineEach)
{
    EXPECT_EQ(QuotedGitPath("a/b c.txt"), "\"a/b c.txt\"");
    EXPECT_EQ(QuotedGitPath("-a\n\"b\\n\r\t\xC3\xA4"), "\"-a\\n\\\"b\\\\n\r\t\xC3\xA4\"");
}

} // namespace

} // namespace tarnwell::test
