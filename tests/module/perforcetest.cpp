#include "module/perforcetest.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

// Credentials are declined, so that the client goes by its own settings.
PerforceTest::PerforceTest(std::string whyNot) : SystemTest(CLSID_P4FileSystem, std::move(whyNot))
{
    host_->credentials.status = E_FAIL;
}

PerforceTest::~PerforceTest()
{
    EXPECT_TRUE(std::filesystem::is_empty(temporary_.Path())) << "a temporary file is left";
}

PerforceClientTest::PerforceClientTest(const char* why)
    : PerforceTest(PerforceServer::IsReal() ? why : "")
{
    depot_.Submit("a.txt", "one");
}

void PerforceClientTest::Fail(const std::string& command, const std::string& way)
{
    depot_.Tell("fail\t" + command + "\t" + way);
}

void PerforceClientTest::ExpectFailed(const Outcome& outcome, HRESULT status,
                                      const std::u16string& of, const std::u16string& words) const
{
    EXPECT_EQ(outcome.status, status);
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(WithLineFeeds(WithoutLine(outcome.error->text)),
              P4Failed(of, words) + u" [p4objects@N]");
}

std::string TargetOf(const std::string& run)
{
    const std::size_t start = run.find("print|-o|") + 9;
    return run.substr(start, run.find('|', start) - start);
}

std::u16string P4Failed(const std::u16string& address, const std::u16string& words)
{
    return u"An error occurred while accessing \"" + address + u"\"\n\n" + words;
}

} // namespace tarnwell::test
