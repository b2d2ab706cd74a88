// The environment, the host's own and a child's.
#include "platform/childrun.h"
#include "platform/wide.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::Contains;
using testing::Not;
using testing::StartsWith;

std::u16string OwnBlock()
{
    WCHAR* const block = GetEnvironmentStringsW();
    std::u16string copy;
    for (const WCHAR* entry = block; *entry != 0; entry += Units(entry).size() + 1)
        copy.append(Units(entry)) += u'\0';
    EXPECT_TRUE(FreeEnvironmentStringsW(block));
    return copy;
}

TEST(Environment, HoldsWhatTheHostHas)
{
    EXPECT_NE((u'\0' + OwnBlock()).find(u"\0PATH=", 0, 6), std::u16string::npos);
}

TEST(Environment, ChildHasTheHostsByDefault)
{
    EXPECT_THAT(Texts(RunChild({u"environment"}).output), Contains(StartsWith("PATH=")));
}

TEST(Environment, ChildHasTheGivenOne)
{
    std::u16string block = OwnBlock();
    block.append(u"TARNWELL_A=1=\u65e5").push_back(u'\0');
    block.append(u"TARNWELL_B=").push_back(u'\0');
    const Ended ended = RunChild({u"environment"}, {.environment = block});
    const std::vector<std::string> entries = Texts(ended.output);
    EXPECT_THAT(entries, Contains("TARNWELL_A=1=\xE6\x97\xA5"));
    EXPECT_THAT(entries, Contains("TARNWELL_B="));
    EXPECT_THAT(Texts(RunChild({u"environment"}).output), Not(Contains(StartsWith("TARNWELL_A="))));
}

TEST(Environment, WhatIsLeftOutIsGone)
{
    std::u16string block;
    const std::u16string own = OwnBlock();
    for (std::size_t start = 0; start < own.size();)
    {
        const std::u16string entry(own.c_str() + start);
        if (!entry.starts_with(u"PATH="))
            block.append(entry).push_back(u'\0');
        start += entry.size() + 1;
    }
    block.append(u"TARNWELL_A=1").push_back(u'\0');
    const Ended ended = RunChild({u"environment"}, {.environment = block});
    const std::vector<std::string> entries = Texts(ended.output);
    EXPECT_THAT(entries, Contains("TARNWELL_A=1"));
    EXPECT_THAT(entries, Not(Contains(StartsWith("PATH="))));
}

} // namespace
} // namespace tarnwell::test
