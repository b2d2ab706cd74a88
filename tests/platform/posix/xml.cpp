// What the XML library is asked for beyond the promises of every platform.
#include "platform/xml.h"
#include "support/opened.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

std::u16string TextOf(std::string_view bytes)
{
    const TempFolder folder;
    XmlNode document;
    EXPECT_EQ(LoadXml(OpenedWith(folder, bytes).Get(), nullptr, document), S_OK);
    const XmlPath path("//a/text()");
    std::u16string text;
    EXPECT_EQ(ReadXmlText(document, path, text), S_OK);
    return text;
}

TEST(XmlLibrary, IllFormedUtf8IsReplaced)
{
    EXPECT_EQ(TextOf("<a>1\xFF\xC3 2\xE6\x97</a>"), u"1\uFFFD\uFFFD 2\uFFFD");
    EXPECT_EQ(TextOf("<a>\xED\xA0\x80</a>").find(u'\xD800'), std::u16string::npos);
}

TEST(XmlLibrary, LongDocumentsAreReadWhole)
{
    const std::string text(5'000'000, 'x');
    EXPECT_EQ(TextOf("<a>" + text + "</a>").size(), text.size());
}

} // namespace
} // namespace tarnwell::test
