// Addresses of a megabyte, and addresses made to be hard: each gets an answer or its refusal, on a
// small stack, by every pattern that addresses are taken apart with.
#include "frame/exception.h"
#include "ftp/ftpuri.h"
#include "git/gituri.h"
#include "mercurial/hguri.h"
#include "perforce/p4uri.h"
#include "subversion/svnuri.h"
#include "support/smallstack.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

constexpr std::size_t million = 1000000;

std::u16string Repeated(std::u16string_view piece)
{
    std::u16string text;
    while (text.size() < million)
        text += piece;
    return text;
}

struct AddressClass
{
    const char* name;
    std::u16string scheme;
    std::shared_ptr<Uri> (*make)(std::u16string text);
};

void PrintTo(const AddressClass& address, std::ostream* out)
{
    *out << address.name;
}

template <class Address> std::shared_ptr<Uri> Make(std::u16string text)
{
    return std::make_shared<Address>(std::move(text));
}

class HostileAddresses : public testing::TestWithParam<AddressClass>
{
protected:
    // Whether all questions are answered. If one isn't, the text is refused as none.
    static bool Answers(const std::u16string& text)
    {
        try
        {
            const auto uri = GetParam().make(text);
            EXPECT_EQ(uri->GetScheme(), GetParam().scheme);
            EXPECT_LE(uri->GetParent()->GetText().size(), text.size() + 1);
            EXPECT_LE(uri->ForDisplay()->GetText().size(), text.size() + 1);
            EXPECT_LE(uri->ForComparison()->GetText().size(), text.size() + 1);
            EXPECT_TRUE(text.ends_with(uri->GetPath()));
            return true;
        }
        catch (const ComException& exception)
        {
            EXPECT_EQ(static_cast<HRESULT>(exception.code), E_INVALIDARG);
            EXPECT_EQ(std::u16string(exception.file), u"uri");
            return false;
        }
    }
};

TEST_P(HostileAddresses, AMegabyteIsAnswered)
{
    const std::u16string scheme = GetParam().scheme + u"://";
    RunOnSmallStack([&] {
        EXPECT_TRUE(Answers(scheme + u"user:password@host:21/" + Repeated(u"path")));
        EXPECT_TRUE(Answers(scheme + Repeated(u"host")));
        EXPECT_TRUE(Answers(scheme + u"user:" + Repeated(u"password") + u"@host/a"));
        EXPECT_TRUE(Answers(scheme + u"host:" + Repeated(u"1") + u"/a"));
    });
}

TEST_P(HostileAddresses, PiecesThatMeanSomethingAreAnswered)
{
    RunOnSmallStack([&] {
        for (const char16_t* piece : {u":", u"@", u"/", u"a:", u"@:", u":1", u"://", u"a:b@",
                                      u"::@@//", u"#", u"#/", u"\\", u"\u65e5", u"\xD800"})
            EXPECT_TRUE(Answers(GetParam().scheme + u"://" + Repeated(piece)));
    });
}

TEST_P(HostileAddresses, ALineEndBehindThemIsRefused)
{
    RunOnSmallStack([&] {
        for (const char16_t* piece : {u"/", u"a:/", u"::@@//", u"a/b"})
            EXPECT_FALSE(Answers(GetParam().scheme + u"://" + Repeated(piece) + u'\n'));
    });
}

TEST_P(HostileAddresses, WhatNeverBecomesAnAddressIsRefused)
{
    RunOnSmallStack([&] {
        for (const char16_t* piece : {u"a", u":", u"/", u":/", u"//", u"a:/"})
            EXPECT_FALSE(Answers(Repeated(piece)));
    });
}

// A server can list such names, and a client's command line would end there.
TEST(AddressesOfServers, WithATerminatorAreRefusedAsNone)
{
    const std::u16string terminator(1, u'\0');
    struct
    {
        const char16_t* message;
        std::u16string scheme;
        std::shared_ptr<Uri> (*make)(std::u16string text);
    } const all[] = {{u"Can't parse the URI", u"ftp", Make<FTPUri>},
                     {u"Invalid Perforce URI", u"p4", Make<P4Uri>},
                     {u"Can't parse the URI", u"svn", Make<SVNUri>},
                     {u"Can't parse the URI", u"hg", Make<HGUri>},
                     {u"Can't parse the URI", u"git", Make<GITUri>}};
    for (const auto& address : all)
    {
        SCOPED_TRACE(testing::PrintToString(address.scheme));
        const std::u16string whole = address.scheme + u"://host/a";
        EXPECT_EQ(address.make(whole)->GetText(), whole);
        for (const std::u16string& text :
             {whole + terminator + u"b", whole + terminator, whole + u"#" + terminator + u"1",
              address.scheme + terminator + u"://host/a", address.scheme + u"://" + terminator})
        {
            try
            {
                address.make(text);
                ADD_FAILURE() << "not refused";
            }
            catch (const ComException& exception)
            {
                EXPECT_EQ(static_cast<HRESULT>(exception.code), E_INVALIDARG);
                EXPECT_TRUE(exception.message.starts_with(address.message));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Uri, HostileAddresses,
                         testing::Values(AddressClass{"Common", u"ftp", Make<Uri>},
                                         AddressClass{"Git", u"git", Make<GITUri>},
                                         AddressClass{"Mercurial", u"hg", Make<HGUri>}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace tarnwell::test
