// What is XML and what isn't: each platform's parser is given the same documents, and has to make
// the same of each.
#include "platform/xml.h"
#include "support/components.h"
#include "support/opened.h"
#include "support/wine.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using namespace std::string_view_literals;

// Where in a document something stands.
constexpr std::pair<std::string_view, std::string_view> places[] = {
    {"<a b='1'>x", "y</a>"},             // a text
    {"<a b='1' c='x", "y'/>"},           // an attribute
    {"<a b='1'><!--x", "y--></a>"},      // a comment
    {"<a b='1'><![CDATA[x", "y]]></a>"}, // a section
    {"<a b='1'><?x x", "y?></a>"},       // an instruction
    {"<a b='1' ", "/>"},                 // a tag
    {"", "<a b='1'/>"},                  // in front of all
    {"<a b='1'/>", ""},                  // behind all
};

struct Row
{
    std::string_view bytes;
    // For each place whether it may stand there.
    std::string_view taken;
};

const Row rows[] = {
#include "platform/xmlcases.inc"
};

struct Case
{
    std::string_view bytes;
    bool isTaken;
};

const Case documents[] = {
#include "platform/xmldocuments.inc"
};

// Wine's parser takes document types, and prefixes that stand for nothing; the system's doesn't.
bool IsTakenByWine(std::string_view bytes)
{
    return IsUnderWine() &&
           (bytes.find("<!DOCTYPE") != bytes.npos || bytes.find(':') != bytes.npos);
}

class XmlCases : public testing::Test
{
protected:
    void Expect(std::string_view bytes, bool isTaken)
    {
        if (!isTaken && IsTakenByWine(bytes))
            return;
        EXPECT_EQ(IsTaken(bytes), isTaken) << testing::PrintToString(bytes);
    }

private:
    bool IsTaken(std::string_view bytes)
    {
        XmlNode document;
        return LoadXml(OpenedWith(folder_, bytes).Get(), nullptr, document) == S_OK;
    }

    const Components components_;
    const TempFolder folder_;
};

TEST_F(XmlCases, WhatMayStandWhere)
{
    for (const Row& row : rows)
    {
        ASSERT_EQ(row.taken.size(), std::size(places));
        for (std::size_t i = 0; i < std::size(places); ++i)
        {
            const std::string bytes = std::string(places[i].first) + std::string(row.bytes) +
                                      std::string(places[i].second);
            Expect(bytes, row.taken[i] == '+');
        }
    }
}

TEST_F(XmlCases, DocumentsAndOthers)
{
    for (const Case& document : documents)
        Expect(document.bytes, document.isTaken);
}

} // namespace
} // namespace tarnwell::test
