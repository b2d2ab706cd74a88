// New files: what only shows on this platform.
#include "platform/newfile.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

// A folder of that name is one of them.
TEST(FileBeside, AnotherNameIsTriedAfterAnyFailureButADenial)
{
    for (const DWORD error : {ERROR_ALREADY_EXISTS, ERROR_PATH_NOT_FOUND, ERROR_BUSY})
        EXPECT_TRUE(MayTryAnotherName(error)) << error;
}

} // namespace
} // namespace tarnwell::test
