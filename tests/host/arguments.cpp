#include "arguments.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

TEST(Arguments, OptionsMayStandAnywhere)
{
    const CommandLine line = ParseArguments({u"--json", u"rm", u"a", u"-r", u"b", u"--yes"});
    EXPECT_EQ(line.command, u"rm");
    EXPECT_EQ(line.operands, (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_TRUE(line.json);
    EXPECT_TRUE(line.recursive);
    EXPECT_TRUE(line.yes);
    EXPECT_FALSE(line.parents);
}

TEST(Arguments, ValuesBesideOrBehindAnEqualsSign)
{
    const CommandLine line =
        ParseArguments({u"--user", u"--json", u"--password=a=b", u"--server=", u"ls"});
    EXPECT_EQ(line.user, u"--json");
    EXPECT_EQ(line.password, u"a=b");
    EXPECT_EQ(line.server, u"");
    EXPECT_FALSE(line.module);
    EXPECT_FALSE(line.json);
}

TEST(Arguments, LoneDashAndWhatFollowsTwoDashesAreOperands)
{
    const CommandLine line = ParseArguments({u"put", u"-", u"--", u"--json", u"-r"});
    EXPECT_EQ(line.operands, (std::vector<std::u16string>{u"-", u"--json", u"-r"}));
    EXPECT_FALSE(line.json);
}

// How to tell what is wrong stands in the rest.
TEST(Arguments, WhatIsWrongIsKeptAndTheRestRead)
{
    const CommandLine line = ParseArguments({u"--what", u"--lang=fr", u"ls", u"a", u"--json"});
    ASSERT_TRUE(line.wrong);
    EXPECT_EQ(Say(*line.wrong), u"There is no option \"--what\".");
    EXPECT_EQ(line.command, u"ls");
    EXPECT_TRUE(line.json);
    const CommandLine endless = ParseArguments({u"ls", u"--user"});
    ASSERT_TRUE(endless.wrong);
    EXPECT_EQ(Say(*endless.wrong), u"The option \"--user\" needs a value.");
    EXPECT_FALSE(ParseArguments({u"--lang", u"ja"}).wrong);
}

TEST(Arguments, NamesToExcludeAdd)
{
    EXPECT_FALSE(ParseArguments({u"compare"}).exclude);
    EXPECT_EQ(ParseArguments({u"--exclude", u"a", u"--exclude=b"}).exclude,
              (std::vector<std::u16string>{u"a", u"b"}));
}

TEST(Arguments, EmptyTextIsAnOperand)
{
    const CommandLine line = ParseArguments({u"ls", u""});
    EXPECT_EQ(line.operands, (std::vector<std::u16string>{u""}));
}

} // namespace

} // namespace tarnwell::host
