#include "module/perforcetest.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

// Credentials are declined, so that the client goes by its own settings.
PerforceTest::PerforceTest() : SystemTest(CLSID_P4FileSystem, {})
{
    host_->credentials.status = E_FAIL;
}

PerforceTest::~PerforceTest()
{
    EXPECT_TRUE(std::filesystem::is_empty(temporary_.Path())) << "a temporary file is left";
}

std::u16string P4Failed(const std::u16string& address, const std::u16string& words)
{
    return u"An error occurred while accessing \"" + address + u"\"\n\n" + words;
}

} // namespace tarnwell::test
