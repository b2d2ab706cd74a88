// The environment that a client gets where it may not have all of the host's.
#include "frame/trim.h"
#include "runner/environment.h"

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
    EXPECT_EQ(ChangedEnvironment(block.data(), u"GIT_", {}),
              u"=C:=C:\\x\0A=1\0GITX=kept\0B=GIT_\0GIT=1\0\0"s);
}

TEST(ClientEnvironment, NothingLeftIsEmpty)
{
    EXPECT_EQ(ChangedEnvironment(u"GIT_DIR=x\0", u"GIT_", {}), u"");
    EXPECT_EQ(ChangedEnvironment(u"\0", u"GIT_", {}), u"");
}

TEST(ClientEnvironment, WithoutAPrefixNothingIsLeftOut)
{
    EXPECT_EQ(ChangedEnvironment(u"=C:=x\0A=1\0", u"", {}), u"=C:=x\0A=1\0\0"s);
}

TEST(ClientEnvironment, VariablesThatAreSetStandInTheOnesPlaceAndInNoOthers)
{
    constexpr const char16_t* set[] = {u"A=new", u"EMPTY="};
    EXPECT_EQ(ChangedEnvironment(u"A=old\0B=1\0a=2\0AB=3\0EMPTY=x\0", u"", set),
              u"B=1\0a=2\0AB=3\0A=new\0EMPTY=\0\0"s);
    EXPECT_EQ(ChangedEnvironment(u"\0", u"", set), u"A=new\0EMPTY=\0\0"s);
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
