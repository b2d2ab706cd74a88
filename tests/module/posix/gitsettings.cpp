// What the user's own settings and the system's care mean for histories and trees of Git.
#include "module/githistorytest.h"
#include "support/environmentvalue.h"

#include <tarnwell/text.h>

#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;

// A user with these settings and no others.
class User
{
public:
    explicit User(const std::string& settings)
    {
        WriteBytes(home_ / u".gitconfig", settings);
    }

private:
    const TempFolder home_;
    const EnvironmentValue variable_{"HOME", home_.Path().c_str()};
    const EnvironmentValue other_{"XDG_CONFIG_HOME", nullptr};
};

using GitSettings = GitHistories;

TEST_F(GitSettings, OfAUserWhoWantsBareRepositoriesNamedCountAsNamed)
{
    repository.Commit(u"a.txt", "1", "first");
    const TempFolder other;
    const std::u16string bare = other / u"bare";
    repository.Run({"clone", "-q", "--bare", ".", EncodeName(bare).value()});
    const User user("[safe]\n\tbareRepository = explicit\n");
    EXPECT_THAT(Descriptions(bare), ElementsAre(u"first"));
    EXPECT_EQ(TreeStatus(bare), S_OK);
}

TEST_F(GitSettings, OfAUserThatCantBeReadSayWhy)
{
    repository.Commit(u"a.txt", "1", "first");
    const User user("[broken\n");
    EXPECT_EQ(ReadStatus(Address(u"a.txt")), HistoryBadSettings);
    EXPECT_EQ(TreeStatus(Address(u"a.txt")), HistoryBadSettings);
}

TEST_F(GitSettings, RepositoriesOfOthersAreRefusedUnlessTheUserAllowsThem)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give a folder away";
    repository.Commit(u"a.txt", "1", "first");
    constexpr uid_t stranger = 12345;
    for (const char16_t* const name : {u".git", u""})
        ASSERT_EQ(chown((repository.Folder().Path() / name).c_str(), stranger, stranger), 0);
    {
        const User user("");
        HistorySink sink;
        EXPECT_THAT(Read(Address(u"a.txt"), sink),
                    FailedSaying(E_ACCESSDENIED, u"Access to the repository of "));
        EXPECT_EQ(TreeStatus(Address(u"a.txt")), E_ACCESSDENIED);
    }
    const User user("[safe]\n\tdirectory = *\n");
    EXPECT_THAT(Descriptions(Address(u"a.txt")), ElementsAre(u"first"));
    EXPECT_EQ(TreeStatus(Address(u"a.txt")), S_OK);
}

} // namespace
} // namespace tarnwell::test
