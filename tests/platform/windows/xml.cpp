// What the system's XML parser does otherwise than the library elsewhere.
#include "platform/xml.h"
#include "support/components.h"
#include "support/opened.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(XmlSystem, IllFormedUtf8IsRefused)
{
    const Components components;
    const TempFolder folder;
    WriteBytes(folder / u"document.xml", "<a b='1'>\xFF</a>");
    const OsHandle file = OpenedForReading(folder / u"document.xml");
    XmlNode document;
    EXPECT_LT(LoadXml(file.Get(), nullptr, document), 0);
    EXPECT_FALSE(document);
}

TEST(XmlSystem, WithoutComponentsNothingIsRead)
{
    const TempFolder folder;
    WriteBytes(folder / u"document.xml", "<a b='1'/>");
    const OsHandle file = OpenedForReading(folder / u"document.xml");
    XmlNode document;
    EXPECT_EQ(LoadXml(file.Get(), nullptr, document), CO_E_NOTINITIALIZED);
}

} // namespace
} // namespace tarnwell::test
