// The XML that the Subversion client prints, in any pieces.
#include "subversion/svnxml.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

const std::string svnPrologue = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

struct SvnRead
{
    std::vector<SvnElement> elements;
    bool isComplete = false;
};

SvnRead SvnReadInPieces(const std::string& bytes, std::size_t piece)
{
    SvnXmlReader reader("entry");
    SvnRead read;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        reader.Feed(std::string_view(bytes).substr(at, piece));
        while (std::optional<SvnElement> element = reader.Next())
            read.elements.push_back(std::move(*element));
    }
    read.isComplete = reader.IsComplete();
    return read;
}

SvnRead SvnReadWhole(const std::string& bytes)
{
    return SvnReadInPieces(bytes, bytes.size());
}

TEST(SvnXml, IsReadTheSameInPiecesOfAnySize)
{
    const std::string bytes =
        svnPrologue +
        "<lists>\n<list\n   path=\"a&amp;b > c\">\n<entry\n   kind=\"file\" x='\"'>\r\n"
        "<name>&lt;&#xE4;&#26085;&apos;&quot;</name>\r<size/>\n</entry>\n"
        "<entry>two</entry></list>\n</lists>\n";
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
    {
        const SvnRead read = SvnReadInPieces(bytes, piece);
        EXPECT_TRUE(read.isComplete);
        ASSERT_EQ(read.elements.size(), 2U);
        const SvnElement& first = read.elements[0];
        ASSERT_NE(first.Attribute("kind"), nullptr);
        EXPECT_EQ(*first.Attribute("kind"), "file");
        EXPECT_EQ(*first.Attribute("x"), "\"");
        EXPECT_EQ(first.Attribute("y"), nullptr);
        EXPECT_EQ(first.text, "\n\n\n");
        ASSERT_EQ(first.children.size(), 2U);
        EXPECT_EQ(*first.ChildText("name"), "<\xC3\xA4\xE6\x97\xA5'\"");
        EXPECT_EQ(*first.ChildText("size"), "");
        EXPECT_EQ(first.Child("date"), nullptr);
        EXPECT_EQ(read.elements[1].text, "two");
    }
}

TEST(SvnXml, IsThereAsSoonAsItsEndIs)
{
    SvnXmlReader reader("entry");
    reader.Feed(svnPrologue + "<list><entry>a</entry");
    EXPECT_FALSE(reader.Next());
    reader.Feed(">");
    EXPECT_TRUE(reader.Next());
    EXPECT_FALSE(reader.IsComplete());
    reader.Feed("<entry>b");
    EXPECT_FALSE(reader.Next());
}

TEST(SvnXml, WhatIsNoneIsNotComplete)
{
    for (const char* const bytes : {"",
                                    "<a>",
                                    "<a></b>",
                                    "</a>",
                                    "<a",
                                    "text",
                                    "<a/>text",
                                    "<a/><b/>",
                                    "<a><!-- c --></a>",
                                    "<!DOCTYPE a><a/>",
                                    "<a><![CDATA[x]]></a>",
                                    "<a>&x;</a>",
                                    "<a>&#0;</a>",
                                    "<a>&#xD800;</a>",
                                    "<a>&lt</a>",
                                    "<a>]]></a>",
                                    "<a x=1/>",
                                    "<a x/>",
                                    "<a x=\"<\"/>",
                                    "<a x=\"1\"x=\"2\"/>",
                                    "<a x=\"1\" x=\"2\"/>",
                                    "<a x=\"1\"y=\"2\"/>",
                                    "<1/>",
                                    "< a/>",
                                    "<a/ >",
                                    "<a><?pi?></a>"})
        EXPECT_FALSE(SvnReadWhole(svnPrologue + bytes).isComplete) << bytes;
    EXPECT_TRUE(SvnReadWhole(svnPrologue + "<a/>").isComplete);
    EXPECT_FALSE(SvnReadWhole("<a/>").isComplete);
    EXPECT_FALSE(SvnReadWhole("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>").isComplete);
    EXPECT_FALSE(SvnReadWhole("<?xml version=\"1.0\"?><a/>").isComplete);
}

TEST(SvnXml, NothingIsReadBehindWhatIsNone)
{
    const SvnRead read = SvnReadWhole(svnPrologue + "<a><entry/><b></c><entry/></a>");
    EXPECT_EQ(read.elements.size(), 1U);
    EXPECT_FALSE(read.isComplete);
}

TEST(SvnXml, ADocumentBeginsSoon)
{
    for (const std::size_t blanks : {900U, 1000U})
    {
        SvnXmlReader reader("entry");
        reader.Feed("<?xml version=\"1.0\" encoding=\"UTF-8\"" + std::string(blanks, ' '));
        EXPECT_FALSE(reader.Next());
        reader.Feed("?><entry/>");
        EXPECT_EQ(reader.Next().has_value(), blanks == 900);
        EXPECT_EQ(reader.IsComplete(), blanks == 900);
    }
}

TEST(SvnXml, ElementsOfAnySizeAreNotKept)
{
    const auto complete = [](const std::string& piece, std::size_t most) {
        SvnXmlReader reader("entry", most);
        reader.Feed(svnPrologue + "<a><entry>");
        for (int i = 0; i < 10; ++i)
        {
            reader.Feed(piece);
            EXPECT_FALSE(reader.Next());
        }
        reader.Feed("</entry></a>");
        const bool isFound = reader.Next().has_value();
        EXPECT_FALSE(reader.Next());
        EXPECT_EQ(reader.IsComplete(), isFound);
        return isFound;
    };
    for (const char* const piece : {"0123456789", "<b c=\"2\"/>", "<b>5</b>67"})
    {
        EXPECT_TRUE(complete(piece, 200)) << piece;
        EXPECT_FALSE(complete(piece, 50)) << piece;
    }
    // As many as there are.
    SvnXmlReader reader("entry", 50);
    reader.Feed(svnPrologue + "<a>");
    for (int i = 0; i < 10; ++i)
    {
        reader.Feed("<entry>0123456789</entry>");
        EXPECT_TRUE(reader.Next()) << i;
    }
}

TEST(SvnXml, HasAnEnd)
{
    std::string deep = svnPrologue;
    for (int i = 0; i < 100000; ++i)
        deep += "<entry>";
    const SvnRead read = SvnReadWhole(deep);
    EXPECT_THAT(read.elements, IsEmpty());
    EXPECT_FALSE(read.isComplete);
}

} // namespace
} // namespace tarnwell::test
