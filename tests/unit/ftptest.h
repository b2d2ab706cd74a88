// What tests of the FTP file system on a server of the test's own have in common.
#pragma once

#include "frame/exception.h"
#include "frame/hostuser.h"
#include "ftp/ftpsession.h"
#include "ftp/ftpuri.h"
#include "support/errorinfo.h"
#include "support/fakehost.h"
#include "unit/fakeinternet.h"

#include <gmock/gmock.h>

#include <optional>

namespace tarnwell::test
{

class FtpUser : public HostUIUser
{
};

struct FtpFailure
{
    std::uint32_t code;
    std::u16string text;
};

void PrintTo(const FtpFailure& failure, std::ostream* out);

// Threw a failure with this code and this text, whose line ends are line feeds.
MATCHER_P2(Threw, code, text, "")
{
    return arg && arg->code == static_cast<std::uint32_t>(code) && arg->text == text;
}

class FtpTest : public testing::Test
{
protected:
    FtpTest();
    // Nothing is left open.
    ~FtpTest() override;

    // What `call` throws; nothing if it doesn't.
    template <class Call> static std::optional<FtpFailure> FailureOf(Call&& call)
    {
        try
        {
            std::forward<Call>(call)();
            return std::nullopt;
        }
        catch (const ComException& failure)
        {
            EXPECT_THAT(std::u16string(failure.file),
                        testing::AnyOf(u"ftpobjects", u"interfaceimpl"));
            return FtpFailure{failure.code, WithLineFeeds(failure.message)};
        }
    }

    // Closes all sessions that wait, and tells how many these were.
    static std::size_t DrainPool(FakeInternet& internet);

    FakeInternet internet;
    const ComPtr<FakeHost> host = FakeHost::Make();
    FtpUser user;
};

inline constexpr std::uint32_t notFoundStatus = 0x80070002;
inline constexpr std::uint32_t extendedStatus = 0x80072EE3; // the server refused

} // namespace tarnwell::test
