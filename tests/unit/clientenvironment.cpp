// The environment that a client gets where it may not have all of the host's.
#include "runner/environment.h"
#include "frame/trim.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;

TEST(ClientEnvironment, LeavesOutWhatBeginsWithThePrefixInAnyCase)
{
    constexpr std::u16string_view block =
        u"=C:=C:\\x\0A=1\0GIT_DIR=x\0git_dir=y\0Git_Index=z\0GITX=kept\0B=GIT_\0GIT=1\0\0"sv;
    EXPECT_EQ(WithoutVariables(block.data(), u"GIT_"),
              u"=C:=C:\\x\0A=1\0GITX=kept\0B=GIT_\0GIT=1\0\0"s);
}

TEST(ClientEnvironment, NothingLeftIsEmpty)
{
    EXPECT_EQ(WithoutVariables(u"GIT_DIR=x\0", u"GIT_"), u"");
    EXPECT_EQ(WithoutVariables(u"\0", u"GIT_"), u"");
}

TEST(Trimming, TakesBlanksAndLineEnds)
{
    EXPECT_EQ(Trimmed(u" \t\r\n a b \n"), u"a b");
    EXPECT_EQ(Trimmed(u" \n"), u"");
    EXPECT_EQ(Trimmed(u""), u"");
    EXPECT_EQ(TrimmedLeft(u"\t a "), u"a ");
}

} // namespace
} // namespace tarnwell::test
