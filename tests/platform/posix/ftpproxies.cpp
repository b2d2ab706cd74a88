// The platform's lists of proxies.
#include "platform/posix/internet/proxychoice.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

using posix::IsBypassed;
using posix::ProxyForFtp;

TEST(FtpProxy, IsTheFirstForFtpElseTheFirstPlainOne)
{
    EXPECT_EQ(ProxyForFtp(""), "");
    EXPECT_EQ(ProxyForFtp("a:1"), "a:1");
    EXPECT_EQ(ProxyForFtp("a:1 b:2"), "a:1");
    EXPECT_EQ(ProxyForFtp("a:1;ftp=b:2;ftp=c:3"), "b:2");
    EXPECT_EQ(ProxyForFtp("http=a:1; ftp=http://b:2"), "http://b:2");
    EXPECT_EQ(ProxyForFtp("a:1;FTP=b:2"), "b:2");
    EXPECT_EQ(ProxyForFtp("http=a:1;https=b:2"), "");
    EXPECT_EQ(ProxyForFtp("http=a:1  c:3"), "c:3");
}

TEST(FtpProxy, IsBypassedByThePlatformsRules)
{
    EXPECT_FALSE(IsBypassed("host", ""));
    EXPECT_TRUE(IsBypassed("host", "host"));
    EXPECT_TRUE(IsBypassed("HOST", "a;Host"));
    EXPECT_FALSE(IsBypassed("host.example", "host"));
    EXPECT_TRUE(IsBypassed("host.example", "*.example"));
    EXPECT_TRUE(IsBypassed("a.b.example", "a*ex*e"));
    EXPECT_FALSE(IsBypassed("a.b.example", "a*ex*f"));
    EXPECT_TRUE(IsBypassed("10.1.2.3", "192.168.*; 10.*"));
    EXPECT_TRUE(IsBypassed("anything", "*"));
    EXPECT_TRUE(IsBypassed("host", "<local>"));
    EXPECT_TRUE(IsBypassed("host", "<LOCAL>"));
    EXPECT_FALSE(IsBypassed("host.example", "<local>"));
}

} // namespace
} // namespace tarnwell::test
