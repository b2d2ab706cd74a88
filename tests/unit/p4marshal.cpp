// What the Perforce client prints for histories and trees, in any pieces.
#include "perforce/p4marshal.h"

#include "perforce/p4historyparser.h"
#include "perforce/p4names.h"
#include "perforce/p4strict.h"
#include "perforce/p4treeparser.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
using testing::ElementsAre;

std::string MarshalledText(const std::string& text)
{
    return "s"s + static_cast<char>(text.size()) + "\0\0\0"s + text;
}

std::string MarshalledPairs(const std::vector<std::pair<std::string, std::string>>& pairs)
{
    std::string bytes = "{";
    for (const auto& [name, value] : pairs)
        bytes += MarshalledText(name) + MarshalledText(value);
    return bytes + "0";
}

struct ParsedRecords
{
    std::vector<P4Record> records;
    bool isComplete;
};

ParsedRecords RecordsInPieces(const std::string& bytes, std::size_t piece)
{
    P4RecordParser parser;
    ParsedRecords parsed;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        parser.Feed(std::string_view(bytes).substr(at, piece));
        while (std::optional<P4Record> record = parser.Next())
            parsed.records.push_back(std::move(*record));
    }
    parsed.isComplete = parser.IsComplete();
    return parsed;
}

TEST(P4RecordParser, RecordsOfAnySizeAreNotKept)
{
    const std::string pair = MarshalledText("key") + MarshalledText("0123456789");
    for (const std::size_t most : {50U, 500U})
    {
        P4RecordParser parser(most);
        parser.Feed("{");
        for (int i = 0; i < 10; ++i)
        {
            parser.Feed(pair);
            EXPECT_FALSE(parser.Next());
        }
        parser.Feed("0");
        EXPECT_EQ(parser.Next().has_value(), most == 500);
        EXPECT_EQ(parser.IsComplete(), most == 500);
    }
    P4RecordParser parser(50);
    for (int i = 0; i < 10; ++i)
    {
        parser.Feed("{" + pair + "0");
        EXPECT_TRUE(parser.Next()) << i;
    }
    EXPECT_TRUE(parser.IsComplete());
}

TEST(P4RecordParser, ReadsTheSameInPiecesOfAnySize)
{
    const std::string bytes = MarshalledPairs({{"code", "stat"}, {"desc", "a {0s\ns\0 title\n"s}}) +
                              "{0" + "{" + MarshalledText("code") + MarshalledText("error") +
                              MarshalledText("severity") + "i\x03\0\0\0"s +
                              MarshalledText("generic") + "i\xFF\xFF\xFF\xFF"s + "0";
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece)
    {
        const ParsedRecords parsed = RecordsInPieces(bytes, piece);
        ASSERT_EQ(parsed.records.size(), 3U);
        EXPECT_TRUE(parsed.isComplete);
        EXPECT_EQ(parsed.records[0].Code(), "stat");
        EXPECT_EQ(parsed.records[0].Text("desc"), "a {0s\ns\0 title\n"s);
        EXPECT_FALSE(parsed.records[1].Has("code"));
        EXPECT_EQ(parsed.records[1].Code(), "");
        EXPECT_EQ(parsed.records[2].Text("severity"), "3");
        EXPECT_EQ(parsed.records[2].Text("generic"), "-1");
    }
}

TEST(P4RecordParser, AnAnswerThatBreaksOffIsIncomplete)
{
    const std::string bytes = MarshalledPairs({{"code", "stat"}, {"a", "b"}});
    for (std::size_t size = 1; size < bytes.size(); ++size)
        EXPECT_FALSE(RecordsInPieces(bytes.substr(0, size), 3).isComplete) << size;
    EXPECT_TRUE(RecordsInPieces("", 1).isComplete);
}

TEST(P4RecordParser, WhatIsNoDictionaryIsNone)
{
    for (const std::string& bytes :
         {"x"s, "\n{0"s, "{x"s, "{u\x01\0\0\0a"s, "{"s + MarshalledText("a") + "0", "{i\0\0\0\0"s,
          "{s\xFF\xFF\xFF\xFF"s, "{"s + MarshalledText("a") + "{0", "... depotFile //x\n"s})
    {
        const ParsedRecords parsed = RecordsInPieces(bytes + std::string(10, '0'), 2);
        EXPECT_TRUE(parsed.records.empty()) << bytes;
        EXPECT_FALSE(parsed.isComplete) << bytes;
    }
}

TEST(P4RecordParser, ALaterValueTakesThePlaceOfAnEarlierOne)
{
    const ParsedRecords parsed = RecordsInPieces(MarshalledPairs({{"a", "1"}, {"a", "2"}}), 100);
    ASSERT_EQ(parsed.records.size(), 1U);
    EXPECT_EQ(parsed.records[0].Text("a"), "2");
}

P4Record P4RecordOf(const std::vector<std::pair<std::string, std::string>>& pairs)
{
    P4Record record;
    for (const auto& [name, value] : pairs)
        record.Set(name, value);
    return record;
}

TEST(P4HistoryParser, ReadsTheRevisionsOfAFile)
{
    const auto changes = P4FileLogReader().Next(P4RecordOf({{"depotFile", "//depot/a"},
                                                            {"rev0", "2"},
                                                            {"change0", "17"},
                                                            {"time0", "1000000000"},
                                                            {"user0", "ann"},
                                                            {"client0", "ws"},
                                                            {"desc0", "a\n\nb\n\n"},
                                                            {"rev1", "1"},
                                                            {"change1", "3"},
                                                            {"rev3", "x"}}),
                                                true);
    ASSERT_TRUE(changes);
    ASSERT_EQ(changes->size(), 2U);
    EXPECT_EQ((*changes)[0].id, "17");
    EXPECT_EQ((*changes)[0].revision, "2");
    EXPECT_EQ((*changes)[0].author, "ann@ws");
    EXPECT_EQ((*changes)[0].description, "a\n\nb");
    EXPECT_EQ((*changes)[0].time, 126444736000000000U);
    EXPECT_EQ((*changes)[0].path, "//depot/a");
    EXPECT_EQ((*changes)[1].author, "");
    EXPECT_EQ((*changes)[1].time, 0U);
    for (const auto& record :
         {P4RecordOf({{"rev0", "1"}, {"change0", "1"}}), P4RecordOf({{"depotFile", "x"}}),
          P4RecordOf({{"depotFile", "//a"}, {"rev0", "1"}}),
          P4RecordOf({{"depotFile", "//depot/../a"}, {"rev0", "1"}, {"change0", "1"}}),
          P4RecordOf({{"depotFile", "///elsewhere/a"}, {"rev0", "1"}, {"change0", "1"}}),
          P4RecordOf({{"depotFile", "//a"}, {"rev0", "-1"}, {"change0", "1"}}),
          P4RecordOf({{"depotFile", "//a"}, {"rev0", "1"}, {"change0", "1x"}})})
        EXPECT_FALSE(P4FileLogReader().Next(record, true));
}

// However the client orders what it tells of them.
TEST(P4HistoryParser, ReadsRevisionsWhileTheirRecordComes)
{
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    const Pairs inOrder = {
        {"depotFile", "//a"}, {"rev0", "2"},    {"change0", "17"}, {"time0", "1"},   {"user0", "a"},
        {"client0", "w"},     {"desc0", "new"}, {"rev1", "1"},     {"change1", "3"}, {"time1", "1"},
        {"user1", "a"},       {"client1", "w"}, {"desc1", "old"}};
    Pairs byKind = inOrder;
    std::stable_sort(byKind.begin(), byKind.end(), [](const auto& left, const auto& right) {
        return left.first.substr(0, 3) < right.first.substr(0, 3);
    });
    for (const auto& [pairs, firstAt] : {std::pair(inOrder, 8U), std::pair(byKind, 12U)})
    {
        P4FileLogReader reader;
        P4Record record;
        std::vector<std::string> descriptions;
        const auto take = [&](bool isWhole) {
            const auto changes = reader.Next(record, isWhole);
            ASSERT_TRUE(changes);
            for (const P4Change& change : *changes)
                descriptions.push_back(change.description);
        };
        for (std::size_t i = 0; i < pairs.size(); ++i)
        {
            take(false);
            EXPECT_EQ(descriptions.size(), i < firstAt ? 0U : 1U) << i;
            record.Set(pairs[i].first, pairs[i].second);
        }
        take(true);
        EXPECT_THAT(descriptions, ElementsAre("new", "old"));
        take(true);
        EXPECT_EQ(descriptions.size(), 2U) << "each is given once";
    }
    // What is none is one before all has come, too.
    P4Record record = P4RecordOf(inOrder);
    record.Set("rev0", "x");
    EXPECT_FALSE(P4FileLogReader().Next(record, false));
    record = P4RecordOf(inOrder);
    record.Set("depotFile", "//../a");
    EXPECT_FALSE(P4FileLogReader().Next(record, false));
}

TEST(P4HistoryParser, ReadsAChange)
{
    const auto change = ReadP4Change(
        P4RecordOf({{"change", "5"}, {"time", "0"}, {"user", "ann"}, {"desc", "x\r\n"}}));
    ASSERT_TRUE(change);
    EXPECT_EQ(change->id, "5");
    EXPECT_EQ(change->author, "ann");
    EXPECT_EQ(change->description, "x");
    EXPECT_EQ(change->time, 116444736000000000U);
    EXPECT_FALSE(ReadP4Change(P4RecordOf({{"change", "default"}})));
    EXPECT_FALSE(ReadP4Change(P4Record()));
}

TEST(P4TreeParser, TypesOldAndNew)
{
    struct Case
    {
        const char* text;
        bool isLink, isExecutable, hasKeywords;
    };
    for (const auto& [text, isLink, isExecutable, hasKeywords] : {Case{"text", false, false, false},
                                                                  {"text+x", false, true, false},
                                                                  {"text+kx", false, true, true},
                                                                  {"text+ko", false, false, true},
                                                                  {"xtext", false, true, false},
                                                                  {"kxtext", false, true, true},
                                                                  {"ktext", false, false, true},
                                                                  {"uxbinary", false, true, false},
                                                                  {"cxtext", false, true, false},
                                                                  {"xltext", false, true, false},
                                                                  {"symlink", true, false, false},
                                                                  {"symlink+x", true, true, false},
                                                                  {"binary+F", false, false, false},
                                                                  {"utf16+x", false, true, false},
                                                                  {"unicode", false, false, false},
                                                                  {"apple", false, false, false},
                                                                  {"", false, false, false},
                                                                  {"extinct", false, false, false}})
    {
        const P4Type type = ReadP4Type(text);
        EXPECT_EQ(type.isLink, isLink) << text;
        EXPECT_EQ(type.isExecutable, isExecutable) << text;
        EXPECT_EQ(type.hasKeywords, hasKeywords) << text;
        const std::string_view name = text;
        EXPECT_EQ(type.isText, name.find("text") != std::string::npos || name == "unicode" ||
                                   name.starts_with("utf"))
            << text;
    }
}

TEST(P4TreeParser, ReadsAFile)
{
    const auto file = ReadP4File(P4RecordOf({{"depotFile", "//depot/a"},
                                             {"headAction", "edit"},
                                             {"headType", "text"},
                                             {"fileSize", "4294967296"},
                                             {"digest", "ABC"}}));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->path, "//depot/a");
    EXPECT_EQ(file->size, 4294967296U);
    EXPECT_EQ(file->digest, "ABC");
    EXPECT_TRUE(file->isThere);
    for (const char* const action : {"delete", "move/delete", "purge", "archive"})
        EXPECT_FALSE(
            ReadP4File(P4RecordOf({{"depotFile", "//a"}, {"headAction", action}}))->isThere);
    EXPECT_FALSE(ReadP4File(P4RecordOf({{"depotFile", "//a"}})));
    EXPECT_FALSE(ReadP4File(P4RecordOf({{"headAction", "add"}})));
    EXPECT_EQ(ReadP4Folder(P4RecordOf({{"dir", "//a"}})), "//a");
    EXPECT_FALSE(ReadP4Folder(P4RecordOf({{"dir", "a"}})));
}

TEST(P4TreeParser, NamesBelowAFolder)
{
    EXPECT_EQ(BelowP4Folder("//depot/a/b", "//depot"), "a/b");
    EXPECT_EQ(BelowP4Folder("//depot", "//"), "depot");
    for (const char* const path :
         {"//depot", "//depot/", "//depot2/a", "//depot/../x", "//depot/a/..", "//depot/./a",
          "//depot//a", "//depot/a/", "//other/a", ""})
        EXPECT_FALSE(BelowP4Folder(path, "//depot")) << path;
}

TEST(P4Item, RevisionsAreWhatTheClientTakes)
{
    struct Case
    {
        std::u16string_view text;
        std::string_view spec;
    };
    for (const auto& [text, spec] : {Case{u"", ""},
                                     {u"12", "@12"},
                                     {u"@12", "@12"},
                                     {u"#3", "#3"},
                                     {u"head", "#head"},
                                     {u"#head", "#head"},
                                     {u"have", "#have"},
                                     {u"#have", "#have"},
                                     {u"@have", "@have"},
                                     {u"v1.0", "@v1.0"},
                                     {u"@v1.0", "@v1.0"},
                                     {u"=12", "@=12"},
                                     {u"@=12", "@=12"},
                                     {u"2024/03/05 10:00:00", "@2024/03/05 10:00:00"},
                                     {u"a b", "@a b"},
                                     {u"-x", "@-x"},
                                     {u"\u00e4", "@\xC3\xA4"}})
        EXPECT_EQ(P4RevisionOf(text), spec) << testing::PrintToString(text);
    for (const std::u16string_view text :
         {u"#"sv, u"@"sv, u"#x"sv, u"1,2"sv, u"@1,@2"sv, u">1"sv, u"a&b"sv, u"a|b"sv, u"x*"sv,
          u"a%40"sv, u"a..."sv, u" a"sv, u"a "sv, u"\n"sv, u"a\rb"sv, u"\0"sv, u"\xD800"sv})
        EXPECT_FALSE(P4RevisionOf(text)) << testing::PrintToString(text);
    for (const char* const moment : {"", "#head", "@now", "@12", "@2024/03/05"})
        EXPECT_TRUE(IsP4Moment(moment)) << moment;
    for (const char* const set : {"#3", "#have", "@v1.0", "@=12", "@12a", "@/x"})
        EXPECT_FALSE(IsP4Moment(set)) << set;
}

TEST(P4Item, NamesAreEncodedAndBack)
{
    EXPECT_EQ(P4Encoded("a@b#c*d%e/f"), "a%40b%23c%2Ad%25e/f");
    EXPECT_EQ(P4Decoded("a%40b%23c%2Ad%25e/f%2a%41%"), "a@b#c*d%e/f*%41%");
    EXPECT_EQ(P4Decoded(P4Encoded("%40%2540")), "%40%2540");
}

TEST(P4Names, AFolderOfAllIsWhatStandsInFront)
{
    EXPECT_EQ(P4FolderOfAll(u"/home/a/..."), u"/home/a");
    EXPECT_EQ(P4FolderOfAll(u"C:\\a\\..."), u"C:\\a");
    for (const std::u16string_view other : {u"", u"..", u"...", u"/...", u"/home/a"})
        EXPECT_EQ(P4FolderOfAll(other), u"") << other.size();
}

TEST(P4Strict, WordsSayWhatAFailureIs)
{
    struct Case
    {
        std::u16string_view words;
        std::uint64_t generic;
        HRESULT status;
    };
    for (const auto& [words, generic, status] :
         {Case{u"Perforce client error:\n\tConnect to server failed; check $P4PORT.", 0,
               HistoryServerSilent},
          {u"Perforce password (P4PASSWD) invalid or unset.", 0x24, E_ACCESSDENIED},
          {u"User ann doesn't exist.", 2, E_ACCESSDENIED},
          {u"//depot/x - no permission for operation on file(s).", 0, E_ACCESSDENIED},
          {u"Invalid changelist/client/label/date '@x'.", 2, HistoryNoRevision},
          {u"Client 'ws' unknown - use 'client' command to create it.", 2, HistoryBadSettings},
          {u"Unicode clients require a unicode enabled server.", 0x24, HistoryBadSettings},
          {u"other words", 0x26, HistoryServerSilent},
          {u"other words", 0x06, E_ACCESSDENIED},
          {u"other words", 0x04, E_ACCESSDENIED},
          {u"other words", 0x02, HistoryNoRevision},
          {u"other words", 0x24, HistoryBadSettings},
          {u"other words", 0x27, HistoryClientFailed},
          {u"", 0, HistoryClientFailed},
          // Names don't count.
          {u"//depot/Password invalid - odd", 0, HistoryClientFailed}})
        EXPECT_EQ(P4FailureOf(words, generic).status, status) << testing::PrintToString(words);
    EXPECT_TRUE(IsP4LoginFailure(u"Your session has expired, please login again."));
    EXPECT_FALSE(IsP4LoginFailure(u"You don't have permission for this operation."));
}

} // namespace
} // namespace tarnwell::test
