// Addresses taken apart without their pattern: always as the pattern does it.
#include "frame/exception.h"
#include "ftp/ftpuri.h"
#include "git/gituri.h"
#include "perforce/p4uri.h"
#include "subversion/svnuri.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace tarnwell::test
{
namespace
{

using Telling = UriParts (Uri::*)() const;

// A line for each part; nothing for a text that is no address.
template <class Address>
std::optional<std::u16string> Told(const std::u16string& text, Telling tell)
{
    try
    {
        const UriParts parts = (Address(text).*tell)();
        return parts.scheme + u'|' + parts.user + u'|' + parts.password + u'|' + parts.host + u'|' +
               static_cast<char16_t>(parts.port) + u'|' + parts.path;
    }
    catch (const ComException&)
    {
        return std::nullopt;
    }
}

// Whether it is an address.
template <class Address> bool IsToldAlike(const std::u16string& text)
{
    const auto told = Told<Address>(text, &Uri::GetParts);
    EXPECT_EQ(told, Told<Address>(text, &Uri::GetMatchedParts)) << testing::PrintToString(text);
    return told.has_value();
}

// The last four end a line or a text.
constexpr char16_t units[] = u"/:@a1\u00e4\n\r\u2028\0";
constexpr std::size_t unitCount = std::size(units) - 1;
constexpr std::size_t plainCount = unitCount - 4;

// All texts of `length` of these units behind `start`; how many are addresses.
template <class Address> std::size_t TellAll(const std::u16string& start, std::size_t length)
{
    if (length == 0)
        return IsToldAlike<Address>(start) ? 1 : 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < unitCount; ++i)
        count += TellAll<Address>(start + units[i], length - 1);
    return count;
}

// Longer ones, some with units that end a line or a text; how many are addresses.
template <class Address> std::size_t TellSome(const std::u16string& start)
{
    constexpr std::size_t texts = 10'000;
    constexpr std::size_t longest = 24;
    std::mt19937 random; // the same each time
    std::size_t count = 0;
    for (std::size_t i = 0; i < texts; ++i)
    {
        std::u16string text = start;
        const std::size_t kinds = i % 8 == 0 ? unitCount : plainCount;
        for (std::size_t length = random() % longest; length > 0; --length)
            text += units[random() % kinds];
        count += IsToldAlike<Address>(text) ? 1 : 0;
    }
    return count;
}

template <class Address> void Compare(const std::u16string& scheme)
{
    EXPECT_GT(TellAll<Address>(scheme + u"://", 4), 1000U);
    EXPECT_GT(TellSome<Address>(scheme + u"://"), 8000U);
}

TEST(UsualParts, OfGeneralAddressesAreThoseOfThePattern)
{
    Compare<Uri>(u"x");
    EXPECT_GT(TellAll<Uri>(u"", 4), 0U);
}

TEST(UsualParts, OfFtpAddressesAreThoseOfThePattern)
{
    Compare<FTPUri>(u"ftp");
}

TEST(UsualParts, OfSubversionAddressesAreThoseOfThePattern)
{
    Compare<SVNUri>(u"svn");
}

TEST(UsualParts, OfWorkingCopiesAreThoseOfThePattern)
{
    Compare<GITUri>(u"git");
}

TEST(UsualParts, OfPerforceAddressesAreThoseOfThePattern)
{
    Compare<P4Uri>(u"p4");
}

} // namespace
} // namespace tarnwell::test
