// What is read out of a file server's answer, honest or not.
#include "local/snapshotanswer.h"
#include "support/snapshotserver.h"

#include <gmock/gmock.h>

#include <cstring>
#include <memory>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using Tokens = std::vector<std::u16string>;

const Tokens someTokens = {u"@GMT-2024.05.01-10.30.00", u"x", u"@GMT-2023.01.02-03.04.05"};

// From memory of just that size, so that reading beyond it is noticed.
Tokens Parsed(std::string_view bytes)
{
    const std::unique_ptr<std::byte[]> answer(new std::byte[bytes.size()]);
    std::memcpy(answer.get(), bytes.data(), bytes.size());
    return ReadSnapshotTokens({answer.get(), bytes.size()});
}

std::string Header(std::uint32_t all, std::uint32_t named, std::uint32_t size)
{
    return SnapshotServer::Header(all, named, size);
}

std::string Names(const Tokens& tokens)
{
    return SnapshotServer::NamesOf(tokens);
}

std::uint64_t SizeAfter(std::uint32_t namesSize)
{
    const std::string start = Header(1, 2, namesSize) + "abcd";
    return SnapshotAnswerSize(
        std::as_bytes(std::span<const char, snapshotAnswerStart>(start.data(), start.size())));
}

TEST(SnapshotAnswer, TakesSixteenBytesMoreThanItsNames)
{
    EXPECT_EQ(SizeAfter(0), 16U);
    EXPECT_EQ(SizeAfter(0x01020304), 0x01020314U);
    EXPECT_EQ(SizeAfter(0xFFFFFFFF), 0x10000000FU) << "the sum has more bits than the size";
}

TEST(SnapshotAnswer, NamesAreReadInTheirOrder)
{
    EXPECT_EQ(Parsed(Header(3, 3, 0) + Names(someTokens)), someTokens);
    const Tokens beyondAscii = {u"\u65e5\U0001F600", u"\xD800"};
    EXPECT_EQ(Parsed(Header(2, 2, 0) + Names(beyondAscii)), beyondAscii);
}

TEST(SnapshotAnswer, TheNumberOfThoseNamedCounts)
{
    EXPECT_THAT(Parsed(Header(3, 2, 0) + Names(someTokens)), ElementsAre(someTokens[0], u"x"));
    EXPECT_THAT(Parsed(Header(3, 0, 0) + Names(someTokens)), IsEmpty());
    EXPECT_EQ(Parsed(Header(0, 3, 0) + Names(someTokens)), someTokens);
    EXPECT_EQ(Parsed(Header(3, 3, 2) + Names(someTokens)), someTokens);
}

TEST(SnapshotAnswer, ANumberTooHighReadsNoMoreThanThereIs)
{
    EXPECT_EQ(Parsed(Header(3, 4, 0) + Names(someTokens)), someTokens);
    EXPECT_EQ(Parsed(Header(3, 0xFFFFFFFF, 0xFFFFFFFF) + Names(someTokens)), someTokens);
    EXPECT_EQ(Parsed(Header(3, 0x80000000, 0) + Names(someTokens) + std::string(99, '\0')),
              someTokens);
    EXPECT_THAT(Parsed(Header(9, 9, 0)), IsEmpty());
}

TEST(SnapshotAnswer, ANameWithoutItsEndIsNone)
{
    const std::string whole = Header(3, 3, 0) + Names(someTokens);
    const std::size_t end = whole.size() - 2; // the list's own terminator
    EXPECT_EQ(Parsed(whole.substr(0, end)), someTokens);
    EXPECT_THAT(Parsed(whole.substr(0, end - 1)), ElementsAre(someTokens[0], u"x"))
        << "half a terminator";
    EXPECT_THAT(Parsed(whole.substr(0, end - 2)), ElementsAre(someTokens[0], u"x"));
    EXPECT_THAT(Parsed(Header(1, 1, 0) + "x"), IsEmpty());
}

TEST(SnapshotAnswer, AnEmptyNameEndsTheList)
{
    EXPECT_THAT(Parsed(Header(3, 3, 0) + Names({u"a", u"", u"b"})), ElementsAre(u"a"));
}

TEST(SnapshotAnswer, OfAnyLengthIsRead)
{
    const std::string whole = Header(3, 3, 0) + Names(someTokens);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_LE(Parsed(whole.substr(0, length)).size(), 3U);
    EXPECT_THAT(Parsed(whole.substr(0, 11)), IsEmpty());
}

// 1 May 2024, 10:30 UTC.
constexpr std::uint64_t tokenTime = 133590330000000000;

TEST(SnapshotTime, IsReadAsUtc)
{
    EXPECT_EQ(SnapshotTimeFromToken(u"@GMT-2024.05.01-10.30.00"), tokenTime);
    EXPECT_EQ(SnapshotTimeFromToken(u"@GMT-2024.05.01-10.30.07"), tokenTime + 70'000'000);
    EXPECT_EQ(SnapshotTimeFromToken(u"@GMT-1601.01.01-00.00.00"), 0U);
    EXPECT_EQ(SnapshotTimeFromToken(u"@GMT-9999.12.31-23.59.59"), 2650467743990000000U);
}

TEST(SnapshotTime, IsFoundAnywhereInEitherCase)
{
    EXPECT_EQ(SnapshotTimeFromToken(u"@gmt-2024.05.01-10.30.00"), tokenTime);
    EXPECT_EQ(SnapshotTimeFromToken(u"ab@GMT-2024.05.01-10.30.0099"), tokenTime);
    EXPECT_EQ(SnapshotTimeFromToken(u"@GMT-1 @GMT-2024.05.01-10.30.00 @GMT-2025.05.01-10.30.00"),
              tokenTime);
}

TEST(SnapshotTime, AnyOtherTextHasNone)
{
    for (const std::u16string_view text :
         {u"", u"x", u"@GMT-2024.05.01-10.30", u"@GMT-2024-05-01-10.30.00",
          u"GMT-2024.05.01-10.30.00", u"@GMT-2024x05.01-10.30.00", u"@GMT-024.05.01-10.30.00",
          u"@GMT-\u0662\u0660\u0662\u0664.05.01-10.30.00"})
        EXPECT_EQ(SnapshotTimeFromToken(text), 0U);
}

TEST(SnapshotTime, WhatIsNoMomentIsNoTime)
{
    for (const std::u16string_view text :
         {u"@GMT-2024.13.01-10.30.00", u"@GMT-2024.05.32-10.30.00", u"@GMT-2024.05.00-10.30.00",
          u"@GMT-2024.05.01-24.00.00", u"@GMT-2024.05.01-10.60.00", u"@GMT-2024.05.01-10.30.60",
          u"@GMT-1600.05.01-10.30.00"})
        EXPECT_EQ(SnapshotTimeFromToken(text), 0U);
}

} // namespace
} // namespace tarnwell::test
