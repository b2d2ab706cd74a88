// What of a Git client's run can be seen here only.
#include "module/gittest.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{

namespace
{

TEST_F(Git, AStreamsFileHasNoNameWhileItIsOpen)
{
    const std::string hash = repository.Commit(u"a.txt", "bytes", "first");
    const TempFolder temporary;
    const EnvironmentValue variable(temporaryFolderVariable, temporary.Path().c_str());
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt", hash), stream), Succeeded());
    EXPECT_TRUE(std::filesystem::is_empty(temporary.Path()));
    EXPECT_EQ(ReadAll(stream), "bytes");
}

// It separates nothing here.
TEST_F(Git, ABackslashIsPartOfAName)
{
    const std::string hash = repository.Commit(u"sub/a\\b.txt", "bytes", "first");
    EXPECT_EQ(Content(Address(u"sub/a\\b.txt", hash)), "bytes");
    EXPECT_EQ(Revisions(Address(u"sub/a\\b.txt")).size(), 2U);
}

} // namespace

} // namespace tarnwell::test
