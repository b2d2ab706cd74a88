// Sessions and the pool that keeps them. Time is a number here, and nobody waits.
#include "ftp/ftppool.h"

#include "unit/ftptest.h"

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t second = 10'000'000;
constexpr std::uint64_t start = 133'000'000'000'000'000;

class FtpPool : public FtpTest
{
protected:
    std::unique_ptr<FTPSession> Connected(const ConnectionKey& key, std::uint64_t now = start)
    {
        auto session = pool.Acquire(key, now);
        session->Connection(user);
        return session;
    }

    const ConnectionKey key{u"u", u"p", u"h", noPort};
    const ConnectionKey other{u"u", u"p", u"other", noPort};
    ConnectionPool pool;
};

TEST_F(FtpPool, KeysAreOrderedByUserPasswordHostAndPort)
{
    const std::vector<ConnectionKey> ordered{
        {u"", u"z", u"z", 9}, {u"A", u"z", u"z", 9}, {u"a", u"", u"z", 9},  {u"a", u"B", u"z", 9},
        {u"a", u"b", u"", 9}, {u"a", u"b", u"H", 9}, {u"a", u"b", u"h", 1}, {u"a", u"b", u"h", 2},
    };
    EXPECT_TRUE(std::is_sorted(ordered.begin(), ordered.end()));
    EXPECT_EQ(std::adjacent_find(ordered.begin(), ordered.end()), ordered.end());
    EXPECT_LT((ConnectionKey{u"\xD800", u"", u"", 1}), (ConnectionKey{u"\xFF00", u"", u"", 1}))
        << "by units";
}

TEST_F(FtpPool, AKeyIsAllOfAnAddressButThePath)
{
    EXPECT_EQ(ConnectionKeyOf(FTPUri(u"ftp://u:p@h:21/a/b")),
              (ConnectionKey{u"u", u"p", u"h", 21}));
    EXPECT_EQ(ConnectionKeyOf(FTPUri(u"ftp://u@h")), ConnectionKeyOf(FTPUri(u"ftp://u@h/x")));
    EXPECT_NE(ConnectionKeyOf(FTPUri(u"ftp://u@h")), ConnectionKeyOf(FTPUri(u"ftp://u:p@h")));
    EXPECT_NE(ConnectionKeyOf(FTPUri(u"ftp://u@h")), ConnectionKeyOf(FTPUri(u"ftp://u@H")));
    EXPECT_NE(ConnectionKeyOf(FTPUri(u"ftp://u@h")), ConnectionKeyOf(FTPUri(u"ftp://u@h:21")));
}

TEST_F(FtpPool, ANewSessionIsNotConnected)
{
    const auto session = pool.Acquire(key, start);
    EXPECT_EQ(session->Key(), key);
    EXPECT_THAT(internet.Calls(), IsEmpty());
}

TEST_F(FtpPool, TwoAtOnceAreTwo)
{
    const auto first = Connected(key);
    const auto second = Connected(key);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(internet.Calls(u"connect").size(), 2U);
}

TEST_F(FtpPool, TheOneThatWaitedLongestGoesOutFirst)
{
    std::vector<FTPSession*> order;
    std::vector<std::unique_ptr<FTPSession>> sessions;
    for (int i = 0; i < 3; ++i)
    {
        sessions.push_back(pool.Acquire(key, start));
        order.push_back(sessions.back().get());
    }
    for (auto& session : sessions)
        pool.Release(std::move(session), start);
    for (FTPSession* const expected : order)
    {
        sessions[0] = pool.Acquire(key, start);
        EXPECT_EQ(sessions[0].get(), expected);
        sessions.push_back(std::move(sessions[0]));
    }
    EXPECT_EQ(std::count(order.begin(), order.end(), pool.Acquire(key, start).get()), 0);
}

TEST_F(FtpPool, ASessionIsForItsKeyOnly)
{
    auto session = Connected(key);
    const FTPSession* const released = session.get();
    pool.Release(std::move(session), start);
    EXPECT_NE(pool.Acquire(other, start).get(), released);
    EXPECT_NE(pool.Acquire({u"u", u"", u"h", noPort}, start).get(), released);
    EXPECT_EQ(pool.Acquire(key, start).get(), released);
}

TEST_F(FtpPool, SixtySecondsAreNotTooLongAndSixtyOneAre)
{
    auto session = Connected(key);
    const FTPSession* const first = session.get();
    pool.Release(std::move(session), start);
    session = pool.Acquire(key, start + 60 * second + second - 1);
    EXPECT_EQ(session.get(), first) << "the part of a second doesn't count";
    pool.Release(std::move(session), start);
    internet.ForgetCalls();
    session = pool.Acquire(key, start + 61 * second);
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close connection", u"close root"));
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpPool, AgesAreDifferencesOfWholeSeconds)
{
    // 60 seconds and a tick, but 61 when both times are cut down first.
    auto session = Connected(key);
    pool.Release(std::move(session), start + second - 1);
    pool.Prune(start + 61 * second);
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpPool, AnyAcquireClosesWhatIsTooOldWhateverItsKey)
{
    auto old = Connected(key);
    auto young = Connected(key);
    auto another = Connected(other);
    const FTPSession* const kept = young.get();
    pool.Release(std::move(old), start);
    pool.Release(std::move(another), start + 5 * second);
    pool.Release(std::move(young), start + 10 * second);
    pool.Acquire({u"x", u"", u"x", noPort}, start + 66 * second);
    EXPECT_EQ(internet.Open().size(), 2U);
    EXPECT_EQ(pool.Acquire(key, start + 66 * second).get(), kept);
}

TEST_F(FtpPool, WhatIsYoungKeepsItsOrder)
{
    std::vector<std::unique_ptr<FTPSession>> sessions;
    std::vector<FTPSession*> all;
    for (int i = 0; i < 5; ++i)
    {
        sessions.push_back(Connected(key));
        all.push_back(sessions.back().get());
    }
    const std::uint64_t since[] = {start + 50 * second, start, start + 51 * second, start + second,
                                   start + 52 * second};
    for (std::size_t i = 0; i < 5; ++i)
        pool.Release(std::move(sessions[i]), since[i]);
    const std::uint64_t now = start + 70 * second;
    for (const std::size_t i : {0U, 2U, 4U})
    {
        sessions[i] = pool.Acquire(key, now);
        EXPECT_EQ(sessions[i].get(), all[i]);
    }
}

TEST_F(FtpPool, ClearingItClosesWhatWaitsAndNothingElse)
{
    const auto used = Connected(key);
    pool.Release(Connected(key), start);
    pool.Release(Connected(other), start);
    EXPECT_EQ(internet.Open().size(), 6U);
    pool.Clear();
    EXPECT_EQ(internet.Open().size(), 2U);
    pool.Clear();
}

TEST_F(FtpPool, ItsEndClosesWhatWaits)
{
    {
        ConnectionPool ending;
        ending.Release(Connected(key), start);
        ending.Release(Connected(other), start);
        EXPECT_EQ(internet.Open().size(), 4U);
    }
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpPool, ADroppedSessionClosesTheConnectionBeforeTheRoot)
{
    auto session = Connected(key);
    internet.ForgetCalls();
    session.reset();
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close connection", u"close root"));
}

class FtpSessions : public FtpTest
{
protected:
    static FTPSession For(const std::u16string& address)
    {
        return FTPSession(ConnectionKeyOf(FTPUri(address)));
    }
    std::u16string Connect(const std::u16string& address)
    {
        internet.ForgetCalls();
        For(address).Connection(user);
        return internet.Calls(u"connect").at(0);
    }
};

TEST_F(FtpSessions, CredentialsOfTheAddressAreUsedWithoutAQuestion)
{
    EXPECT_EQ(Connect(u"ftp://u:p@h/x"), u"connect h|21|u|p|passive");
    EXPECT_EQ(Connect(u"ftp://u@h/x"), u"connect h|21|u||passive");
    EXPECT_THAT(host->Calls(), IsEmpty());
}

TEST_F(FtpSessions, ThePortOfTheAddressIsLost)
{
    EXPECT_EQ(Connect(u"ftp://u:p@h:2121/x"), u"connect h|21|u|p|passive");
    host->credentials = {S_OK, u"U", u"P", u"h"};
    EXPECT_EQ(Connect(u"ftp://h:2121/x"), u"connect h|21|U|P|passive");
    EXPECT_THAT(host->Calls(), ElementsAre(u"GetCredentials|0|h|")) << "without the port, too";
}

TEST_F(FtpSessions, TheAnswersHostMayCarryAPort)
{
    const std::pair<const char16_t*, const char16_t*> rows[] = {
        {u"other:2121", u"other|2121"},      {u"other:", u"other|21"},
        {u"other:70000", u"other|4464"},     {u"other:65535", u"other|21"},
        {u"other:99999999999", u"other|21"}, // 2147483647, whose low bits are those of no port
        {u"other:12:13", u"other|12"},       {u"", u"|21"},
    };
    for (const auto& [answer, expected] : rows)
    {
        host->credentials = {S_OK, u"U", u"P", answer};
        EXPECT_EQ(Connect(u"ftp://u:*@h:99/x"),
                  u"connect " + std::u16string(expected) + u"|U|P|passive");
    }
    EXPECT_EQ(host->Calls().front(), u"GetCredentials|0|h|u");
}

TEST_F(FtpSessions, AHostThatDeclinesEndsIt)
{
    host->credentials.status = E_FAIL;
    FTPSession session = For(u"ftp://h/x");
    try
    {
        session.Connection(user);
        ADD_FAILURE() << "connected";
    }
    catch (const ComException& failure)
    {
        EXPECT_EQ(static_cast<HRESULT>(failure.code), E_ACCESSDENIED);
        EXPECT_TRUE(failure.message.starts_with(u"User name and password credentials might"));
    }
    EXPECT_THAT(internet.Calls(u"connect"), IsEmpty());
    EXPECT_THAT(internet.Open(), IsEmpty());
}

TEST_F(FtpSessions, WithoutAHostAndAUserItFails)
{
    const FtpUser nobody;
    FTPSession session = For(u"ftp://h/x");
    EXPECT_THROW(session.Connection(nobody), ComException);
}

TEST_F(FtpSessions, ConnectsOnceAndAgainAfterAReset)
{
    host->credentials = {S_OK, u"U", u"P", u"h"};
    FTPSession session = For(u"ftp://h/x");
    const HINTERNET connection = session.Connection(user);
    EXPECT_EQ(session.Connection(user), connection);
    EXPECT_EQ(internet.Calls(u"connect").size(), 1U);
    internet.ForgetCalls();
    session.ResetHandles();
    EXPECT_THAT(internet.Calls(), ElementsAre(u"close connection", u"close root"));
    EXPECT_NE(session.Connection(user), nullptr);
    EXPECT_EQ(host->Calls().size(), 2U) << "what was resolved isn't kept";
}

TEST_F(FtpSessions, ARefusedLogonIsReportedOnceAndFails)
{
    for (const DWORD error :
         {DWORD{ERROR_INTERNET_INCORRECT_USER_NAME}, DWORD{ERROR_INTERNET_INCORRECT_PASSWORD}})
    {
        const ComPtr<FakeHost> asked = FakeHost::Make();
        user.SetHostObject(asked->Unknown());
        internet.Fail("InternetConnectW", error, u"530-Sorry.\r\n530 Login incorrect.\r\n");
        FTPSession session = For(u"ftp://u:secret@h/x");
        const std::u16string text = u"The username and/or password is incorrect.\n\nUnable to "
                                    u"connect to the remote server.\n\n530 Login incorrect.";
        EXPECT_THAT(FailureOf([&] { session.Connection(user); }), Threw(0x80070000 | error, text));
        ASSERT_EQ(asked->Calls().size(), 1U);
        EXPECT_EQ(WithLineFeeds(asked->Calls()[0]), u"ForgetCredentials|FTP: " + text);
        EXPECT_THAT(internet.Open(), IsEmpty()) << "not connected";
        EXPECT_NE(session.Connection(user), nullptr) << "and may try again";
    }
    user.SetHostObject(host->Unknown());
}

TEST_F(FtpSessions, OtherFailuresPassUnchanged)
{
    internet.Fail("InternetConnectW", ERROR_INTERNET_NAME_NOT_RESOLVED);
    FTPSession session = For(u"ftp://u:p@h/x");
    EXPECT_THAT(FailureOf([&] { session.Connection(user); }),
                Threw(0x80072EE7, u"Unable to connect to the remote server.\n\n"));
    internet.Fail("InternetConnectW", 12015, u"530 No.");
    EXPECT_THAT(FailureOf([&] { session.Connection(user); }),
                Threw(0x80072EEF, u"Unable to connect to the remote server.\n\n530 No."));
    EXPECT_THAT(host->Calls(), IsEmpty());
}

} // namespace
} // namespace tarnwell::test
