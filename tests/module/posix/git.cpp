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

} // namespace

} // namespace tarnwell::test
