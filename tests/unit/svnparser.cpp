// What is made of the XML that the Subversion client prints.
#include "subversion/svnparser.h"
#include "subversion/svnuri.h"
#include "support/components.h"
#include "support/opened.h"
#include "support/svnoutput.h"
#include "support/thrown.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

constexpr std::uint64_t someTime = 134397248749119430; // 2026-11-21T08:54:34.911943Z

class SvnParser : public testing::Test
{
protected:
    XmlNode Load(std::string_view output) const
    {
        return LoadSvnXml(OpenedWith(folder_, output).Get());
    }

    FSItems List(std::string_view output) const
    {
        return ParseListOutput(Load(output));
    }
    FSItem ListItem(std::string_view output) const
    {
        return *ParseListItemOutput(Load(output));
    }
    FSItem Info(std::string_view output) const
    {
        return *ParseInfoOutput(Load(output));
    }
    std::vector<RevisionRecord> Log(std::string_view output,
                                    const std::u16string& address = u"svn://u:p@h/r/a.txt@9") const
    {
        return ParseLogOutput(SVNUri(address), LoadSvnLog(OpenedWith(folder_, output).Get()));
    }

    const Components components_;
    const TempFolder folder_;
};

// `text` with the one `from` in it replaced.
std::string With(std::string_view text, std::string_view from, std::string_view to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string_view::npos) << from;
    return std::string(text).replace(at, from.size(), to);
}

// Runs `read`, which has to fail with message 151 and the system's text for the status.
template <class Read> void ExpectUnread(Read&& read)
{
    const Thrown thrown = ThrownBy(std::forward<Read>(read));
    EXPECT_LT(thrown.status, 0);
    EXPECT_TRUE(
        thrown.text.starts_with(u"An error occurred while communicating with Subversion. "));
    EXPECT_EQ(thrown.source, u"svnobjects");
}

TEST_F(SvnParser, AListingIsItsItemsInOrder)
{
    const FSItems items = List(listOutput);
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0]->text, u"svnfile:///r/trunk/50%.txt");
    EXPECT_EQ(items[1]->text, u"svnfile:///r/trunk/a&b <c> \"d\".txt");
    EXPECT_EQ(items[2]->text, u"svnfile:///r/trunk/my dir");
    EXPECT_EQ(items[3]->text, u"svnfile:///r/trunk/\u65e5\u672c.txt");
    EXPECT_EQ(items[0]->size, 5000000000U);
    EXPECT_EQ(items[0]->revision, 2U);
    EXPECT_EQ(items[1]->revision, 4U);
    EXPECT_EQ(items[0]->modifiedTime, someTime);
    EXPECT_EQ(items[1]->modifiedTime, 134397248752097990U);
    EXPECT_TRUE(!items[0]->isDirectory && items[0]->isReadOnly);
    EXPECT_TRUE(items[2]->isDirectory && !items[2]->isReadOnly);
    EXPECT_EQ(items[2]->size, 0U);
    EXPECT_EQ(items[3]->size, 0U);
}

TEST_F(SvnParser, AnEmptyFolderHasNoItems)
{
    EXPECT_TRUE(List(emptyListOutput).empty());
}

TEST_F(SvnParser, ListedAddressesGetTheirOwnFormByTheirScheme)
{
    for (const auto& [listed, own] :
         {std::pair{"svn://h/r", u"svn://h/r/50%.txt"},
          std::pair{"svn+ssh://h/r", u"svn+ssh://h/r/50%.txt"},
          std::pair{"http://h/r", u"svnhttp://h/r/50%.txt"},
          std::pair{"https://h/r", u"svnhttps://h/r/50%.txt"},
          std::pair{"http:x", u"svnhttp:x/50%.txt"}, std::pair{"HTTP://h/r", u"HTTP://h/r/50%.txt"},
          std::pair{"file:///r", u"svnfile:///r/50%.txt"}})
        EXPECT_EQ(List(With(listOutput, "file:///r/trunk", listed))[0]->text, own);
}

TEST_F(SvnParser, WhatIsNoFileIsAFolder)
{
    const FSItems items = List(With(listOutput, "kind=\"file\"", "kind=\"FILE\""));
    EXPECT_TRUE(items[0]->isDirectory);
    EXPECT_EQ(items[0]->size, 0U) << "whatever the size";
    EXPECT_FALSE(items[1]->isDirectory);
}

TEST_F(SvnParser, NumbersAndDatesThatDoNotReadAreZero)
{
    EXPECT_EQ(List(With(listOutput, "revision=\"2\"", "revision=\"x\""))[0]->revision, 0U);
    EXPECT_EQ(List(With(listOutput, "5000000000", "many"))[0]->size, 0U);
    EXPECT_EQ(List(With(listOutput, ".911943Z", "Z"))[0]->modifiedTime, 0U);
}

TEST_F(SvnParser, OneMissingFactFailsTheWholeListing)
{
    for (const auto& change :
         {std::pair{"<name>my dir</name>", ""}, std::pair{"<name>my dir</name>", "<name></name>"},
          std::pair{"<name>my dir</name>", "<name>  </name>"},
          std::pair{"kind=\"dir\"", "sort=\"dir\""}, std::pair{"<size>1</size>", ""},
          std::pair{"revision=\"4\"", ""}, std::pair{"path=\"file:///r/trunk\"", ""},
          std::pair{"<date>2026-11-21T08:54:35.209799Z</date>", ""}})
        ExpectUnread([&] { List(With(listOutput, change.first, change.second)); });
}

TEST_F(SvnParser, AListingOfOneItemTellsItsFacts)
{
    const FSItem item = ListItem(fileListOutput);
    EXPECT_EQ(item.text, u"http://127.0.0.1:8080/r/a.txt") << "as it stands";
    EXPECT_EQ(item.size, 12U);
    EXPECT_EQ(item.revision, 7U);
    EXPECT_EQ(item.modifiedTime, someTime);
    EXPECT_FALSE(item.isDirectory);
    EXPECT_TRUE(item.isReadOnly);
    EXPECT_EQ(ListItem(listOutput).size, 5000000000U) << "the first decides";
    ExpectUnread([&] { ListItem(emptyListOutput); });
    ExpectUnread([&] { ListItem(With(fileListOutput, "<size>12</size>", "")); });
}

TEST_F(SvnParser, InfoTellsAllButTheSize)
{
    const FSItem file = Info(infoOutput);
    EXPECT_EQ(file.text, u"svnfile:///r/trunk/zero");
    EXPECT_EQ(file.revision, 2U) << "the last change's, not the item's";
    EXPECT_EQ(file.modifiedTime, someTime);
    EXPECT_FALSE(file.isDirectory);
    EXPECT_TRUE(file.isReadOnly);
    EXPECT_EQ(file.size, 0U);
    const FSItem folder = Info(With(infoOutput, "kind=\"file\"", "kind=\"dir\""));
    EXPECT_TRUE(folder.isDirectory);
    EXPECT_FALSE(folder.isReadOnly);
    for (const auto& [listed, own] :
         {std::pair{"svn://h/r", u"svn://h/r"}, std::pair{"http://h/r", u"svnhttp://h/r"},
          std::pair{"https://h/r", u"svnhttps://h/r"}, std::pair{"http:h", u"http:h"}})
        EXPECT_EQ(Info(With(infoOutput, "file:///r/trunk/zero", listed)).text, own);
    for (const char* const fact : {"<url>file:///r/trunk/zero</url>", "kind=\"file\"",
                                   "revision=\"2\"", "<date>2026-11-21T08:54:34.911943Z</date>"})
        ExpectUnread([&] { Info(With(infoOutput, fact, "")); });
}

TEST_F(SvnParser, TheLogIsTheRevisionsInOrder)
{
    const auto records = Log(logOutput);
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0].id, u"4");
    EXPECT_EQ(records[0].author, u"J\u00f6rg <j&k>");
    EXPECT_EQ(records[0].description, u"") << "an empty message";
    EXPECT_EQ(records[0].uri, u"svn://u:p@h/r/a.txt@4");
    EXPECT_EQ(records[0].modifiedTime, 134397248752097990U);
    EXPECT_EQ(records[0].revisionTime, records[0].modifiedTime);
    EXPECT_EQ(records[1].description, u"second \u65e5");
    EXPECT_EQ(records[2].description, u"line one\n  line two & <tag> ]]>\n\ttabbed")
        << "trimmed at the ends only";
    EXPECT_EQ(records[2].uri, u"svn://u:p@h/r/a.txt@2");
}

TEST_F(SvnParser, ALogWithoutEntriesIsEmpty)
{
    EXPECT_TRUE(Log("<log>\n</log>\n").empty());
}

TEST_F(SvnParser, AMissingMessageIsEmptyAndAMissingAuthorFails)
{
    EXPECT_EQ(Log(With(logOutput, "<msg>second \xE6\x97\xA5</msg>", ""))[1].description, u"");
    for (const char* const fact :
         {"<author>root</author>", "revision=\"3\"", "<date>2026-11-21T08:54:35.031892Z</date>"})
        ExpectUnread([&] { Log(With(logOutput, fact, "")); });
    ExpectUnread([&] { Log(With(logOutput, "<author>root</author>", "<author></author>")); });
}

TEST_F(SvnParser, RevisionsOfTheLogAreText)
{
    EXPECT_EQ(Log(With(logOutput, "revision=\"4\"", "revision=\" x 4\""))[0].uri,
              u"svn://u:p@h/r/a.txt@ x 4");
    EXPECT_EQ(Log(With(logOutput, "54:35.209799Z", "54:35Z"))[0].modifiedTime, 0U);
}

TEST_F(SvnParser, ReferencesSectionsAndWhiteSpaceAreText)
{
    EXPECT_EQ(Log(With(logOutput, "<msg></msg>", "<msg><![CDATA[<a> & b]]></msg>"))[0].description,
              u"<a> & b");
    EXPECT_EQ(Log(With(logOutput, "<msg></msg>", "<msg>&#65;&#x3042;&apos;</msg>"))[0].description,
              u"A\u3042'");
    EXPECT_EQ(Log(With(logOutput, "<msg></msg>", "<msg>a\r\nb</msg>"))[0].description, u"a\nb");
    EXPECT_EQ(
        Log(With(logOutput, "<msg></msg>", "<msg>\xE3\x80\x80 a\xC2\xA0\n</msg>"))[0].description,
        u"a");
}

// Output that breaks off, or isn't what it should be, never gives a part of a listing.
TEST_F(SvnParser, WhatIsNotWholeIsNotRead)
{
    for (const std::string_view output :
         {std::string_view(), std::string_view("svn: oops\n"), listOutput.substr(0, 400),
          listOutput.substr(0, listOutput.size() - 5)})
    {
        ExpectUnread([&] { List(output); });
        ExpectUnread([&] { ListItem(output); });
        ExpectUnread([&] { Info(output); });
    }
    ExpectUnread([&] { List(infoOutput); });
    ExpectUnread([&] { Info(listOutput); });
    ExpectUnread([&] { List(With(listOutput, "my dir", "my &dir;")); });
    ExpectUnread([&] { List(With(listOutput, "my dir", "my & dir")); });
}

TEST_F(SvnParser, OfALogThatBreaksOffNothingIsRead)
{
    for (std::size_t size = 0; size + 2 < logOutput.size(); size += 97)
        ExpectUnread([&] { Log(logOutput.substr(0, size)); });
}

// They aren't read; what looks like them is.
TEST_F(SvnParser, ChangedPathsMakeNoDifference)
{
    constexpr std::string_view entry =
        "<logentry revision=\"3\"><author>Ann</author><date>2024-03-05T10:20:30.1Z</date>"
        "<msg>text</msg></logentry>";
    const std::string path = "<path action=\"M\">/a</path>";
    const std::string log =
        "<log>" + With(entry, "<author>", "<paths>" + path + "</paths><author>");
    for (const std::string& inner :
         {path + path, std::string(), "<author>Bob</author><msg>other</msg>" + path,
          "<paths>" + path + "</paths>"})
    {
        const auto records = Log(With(log, path, inner) + "</log>");
        ASSERT_EQ(records.size(), 1U) << inner;
        EXPECT_EQ(records[0].author, u"Ann") << inner;
        EXPECT_EQ(records[0].description, u"text") << inner;
    }
    const auto nested = Log(With(log, path, "<log>" + std::string(entry) + "</log>") + "</log>");
    EXPECT_EQ(nested.size(), 2U);
    EXPECT_EQ(Log(With(log, "text", "<paths/>text") + "</log>")[0].description, u"text");
    EXPECT_EQ(Log(With(log, "text", "te<paths/>xt") + "</log>")[0].description, u"te");
    ExpectUnread([&] { Log(With(log, path, "<a></b>") + "</log>"); });
    ExpectUnread([&] { Log(With(log, path, "&") + "</log>"); });
}

TEST_F(SvnParser, WhatIsNoLogHasNoRevisions)
{
    EXPECT_TRUE(Log(listOutput).empty());
}

TEST_F(SvnParser, LongListingsAndLogsAreReadWhole)
{
    constexpr std::size_t count = 20000;
    std::string items;
    std::string entries;
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::string number = std::to_string(i);
        const std::string date = "<date>2024-03-05T10:20:30.1Z</date>";
        items += "<entry kind=\"dir\"><name>" + number + "</name><commit revision=\"1\">" + date +
                 "</commit></entry>\n";
        entries += "<logentry revision=\"" + number + "\"><author>Ann</author>" + date +
                   "<paths><path action=\"M\">/a</path></paths></logentry>\n";
    }
    const FSItems list = List("<lists><list path=\"svn://h\">" + items + "</list></lists>");
    ASSERT_EQ(list.size(), count);
    EXPECT_EQ(list.back()->text, u"svn://h/19999");
    const auto log = Log("<log>" + entries + "</log>");
    ASSERT_EQ(log.size(), count);
    EXPECT_EQ(log.back().id, u"19999");
}

TEST_F(SvnParser, AFileThatCannotBeReadIsAFailure)
{
    ExpectUnread([] { LoadSvnXml(INVALID_HANDLE_VALUE); });
    ExpectUnread([] { LoadSvnLog(INVALID_HANDLE_VALUE); });
}

} // namespace
} // namespace tarnwell::test
