// What Subversion prints of items.
#include "subversion/svntreeparser.h"

#include "support/svnoutput.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

std::vector<SvnElement> SvnElementsIn(std::string_view bytes, std::string_view name)
{
    SvnXmlReader reader(name);
    reader.Feed(bytes);
    std::vector<SvnElement> found;
    while (std::optional<SvnElement> element = reader.Next())
        found.push_back(std::move(*element));
    EXPECT_TRUE(reader.IsComplete());
    return found;
}

SvnElement SvnElementIn(const std::string& element, std::string_view name)
{
    const auto found =
        SvnElementsIn("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>" + element + "</a>", name);
    EXPECT_EQ(found.size(), 1U);
    return found.at(0);
}

TEST(SvnTreeParser, ReadsFacts)
{
    const auto facts = ReadSvnInfo(SvnElementsIn(infoOutput, "entry").at(0));
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->url, "file:///r/trunk/zero");
    EXPECT_EQ(facts->root, "file:///r");
    EXPECT_EQ(facts->path, "trunk/zero");
    EXPECT_EQ(facts->revision, "4");
    EXPECT_EQ(facts->changedRevision, "2");
    EXPECT_GT(facts->changedTime, 133000000000000000U);
    EXPECT_FALSE(facts->isFolder);
    EXPECT_EQ(facts->size, 0U);
}

TEST(SvnTreeParser, ReadsPathsDecoded)
{
    const std::string rest = "<repository><root>file:///r</root></repository></entry>";
    const auto read = [&](const std::string& path) {
        return ReadSvnInfo(SvnElementIn("<entry kind=\"dir\" revision=\"x\"><url>file:///r/" +
                                            path + "</url><relative-url>^/" + path +
                                            "</relative-url>" + rest,
                                        "entry"));
    };
    const auto facts = read("a%20b/%C3%A4%25");
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->path, "a b/\xC3\xA4%");
    EXPECT_TRUE(facts->isFolder);
    EXPECT_EQ(facts->revision + facts->changedRevision, "");
    ASSERT_TRUE(read(""));
    EXPECT_EQ(read("")->path, "");
    for (const char* const path : {"a//b", "..", "%2E%2E/x", "a/", "a%00"})
        EXPECT_FALSE(read(path)) << path;
}

TEST(SvnTreeParser, ReadsListings)
{
    const auto entries = SvnElementsIn(listOutput, "entry");
    ASSERT_EQ(entries.size(), 4U);
    const auto first = ReadSvnEntry(entries[0]);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->name, "50%.txt");
    EXPECT_EQ(first->size, 5000000000U);
    EXPECT_FALSE(first->isFolder);
    EXPECT_EQ(ReadSvnEntry(entries[1])->name, "a&b <c> \"d\".txt");
    EXPECT_TRUE(ReadSvnEntry(entries[2])->isFolder);
}

TEST(SvnTreeParser, NamesThatAreNoneAreNotRead)
{
    for (const char* const name : {"", ".", "..", "../x", "a/../b", "/a", "a/", "a//b"})
        EXPECT_FALSE(ReadSvnEntry(SvnElementIn("<entry kind=\"file\"><name>" + std::string(name) +
                                                   "</name><size>1</size></entry>",
                                               "entry")))
            << name;
    for (const char* const entry :
         {"<entry kind=\"file\"><name>a</name></entry>", "<entry><name>a</name></entry>",
          "<entry kind=\"file\"><name>a</name><size>x</size></entry>",
          "<entry kind=\"file\"><size>1</size></entry>"})
        EXPECT_FALSE(ReadSvnEntry(SvnElementIn(entry, "entry"))) << entry;
}

TEST(SvnTreeParser, ReadsMarks)
{
    const auto marks = ReadSvnMarks(
        SvnElementIn("<target path=\"file:///r/a%20b\"><property name=\"svn:eol-style\"/>"
                     "<property name=\"svn:executable\"/></target>",
                     "target"));
    ASSERT_TRUE(marks);
    EXPECT_EQ(marks->url, "file:///r/a%20b");
    EXPECT_TRUE(marks->isExecutable);
    EXPECT_FALSE(marks->isSpecial);
    EXPECT_FALSE(marks->hasKeywords);
    EXPECT_TRUE(marks->hasLineEnds);
    EXPECT_FALSE(ReadSvnMarks(SvnElementIn("<target/>", "target")));
    EXPECT_FALSE(ReadSvnMarks(SvnElementIn("<target path=\"x\"><property/></target>", "target")));
}

TEST(SvnTreeParser, AddressesAreEncodedAndDecoded)
{
    EXPECT_EQ(EncodeSvnPath("a b/@#%?\xC3\xA4-_."), "a%20b/%40%23%25%3F%C3%A4-_.");
    EXPECT_EQ(DecodeSvnUrl("a%20b%c3%A4%2"), "a b\xC3\xA4%2");
    EXPECT_EQ(DecodeSvnUrl("%%41%zz%"), "%A%zz%");
}

} // namespace
} // namespace tarnwell::test
