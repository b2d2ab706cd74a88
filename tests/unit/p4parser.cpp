// What is made of the text that the Perforce client prints.
#include "perforce/p4parser.h"
#include "frame/handle.h"
#include "platform/wide.h"
#include "support/p4output.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <functional>

namespace tarnwell::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t epoch = 116444736000000000; // of Unix time
constexpr std::uint64_t second = 10000000;

// How the text's lines end, and what a bare line feed is to the reader.
struct LineEnds
{
    const char* name;
    std::string_view end;
    BareLineFeed bare;
};

constexpr LineEnds windowsEnds{"OnWindows", "\r\n", BareLineFeed::LooksLikeTheEnd};
constexpr LineEnds linuxEnds{"OnLinux", "\n", BareLineFeed::IsALine};

// In the order of the fields.
using Item = std::tuple<std::u16string, std::uint64_t, std::uint64_t, bool, bool, std::uint32_t>;

Item File(std::u16string path, std::uint64_t time, std::uint64_t size, std::uint32_t revision)
{
    return {std::move(path), epoch + time * second, size, false, true, revision};
}

Item Folder(std::u16string path)
{
    return {std::move(path), epoch, 0, true, false, 0};
}

std::vector<Item> ItemsOf(const FSItems& items)
{
    std::vector<Item> all;
    for (const std::shared_ptr<FSItem>& item : items)
        all.emplace_back(item->text, item->modifiedTime, item->size, item->isDirectory,
                         item->isReadOnly, item->revision);
    return all;
}

class P4Output
{
public:
    // The bytes as they are, to a reader that takes bare line feeds in one way or the other.
    template <class Read> auto Of(std::string_view bytes, BareLineFeed bare, Read read) const
    {
        const std::u16string path = folder_ / u"output";
        WriteBytes(path, bytes);
        const OsHandle file(CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        BufferedReader reader(file.Get(), Decoding::Widen, bare);
        return read(reader);
    }

private:
    const TempFolder folder_;
};

// What holds for the lines of both platforms, on both.
class P4Parser : public testing::TestWithParam<LineEnds>
{
protected:
    template <class Read> auto Parsed(std::string_view text, Read read) const
    {
        std::string bytes;
        for (const char byte : text)
            bytes += byte == '\n' ? std::string(GetParam().end) : std::string(1, byte);
        return output_.Of(bytes, GetParam().bare, read);
    }
    std::vector<Item> Files(std::string_view text) const
    {
        return ItemsOf(Parsed(text, ReadFstat));
    }
    std::vector<RevisionRecord> Revisions(std::string_view text) const
    {
        return Parsed(text, ReadFileLog).records;
    }
    std::u16string Described(const std::string& lines) const
    {
        const auto records = Revisions(
            "//d/a\n... #1 change 12 edit on 2009/06/01 12:00:00 by ann@ws (text)\n" + lines);
        EXPECT_THAT(records, SizeIs(1));
        return records.empty() ? u"" : records[0].description;
    }

    const P4Output output_{};
};

INSTANTIATE_TEST_SUITE_P(Lines, P4Parser, testing::Values(windowsEnds, linuxEnds),
                         [](const auto& info) { return info.param.name; });

TEST_P(P4Parser, FilesHaveTheirFactsWhateverElseIsTold)
{
    EXPECT_THAT(Files(fstatOutput),
                ElementsAre(File(u"//depot/dir/a.txt", 1243857600, 5, 3),
                            File(u"//depot/dir/big file%40home.bin", 1243857601, 2147483647, 1),
                            File(u"//depot/dir/moved.txt", 1243857603, 0, 7),
                            File(u"//depot/dir/unsized.txt", 1243857604, 0, 1)));
}

TEST_P(P4Parser, TheLastRecordNeedsNoLineBehindIt)
{
    EXPECT_THAT(Files("... depotFile //a\n"), ElementsAre(File(u"//a", 0, 0, 0)));
    EXPECT_THAT(Files("... depotFile //a"), ElementsAre(File(u"//a", 0, 0, 0)));
    EXPECT_THAT(Files(""), IsEmpty());
    EXPECT_THAT(Files("\n\n\n"), IsEmpty());
}

TEST_P(P4Parser, AnyOtherLineEndsARecord)
{
    for (const std::string other : {"something", "...", "...depotFile //x", " ... headRev 7", "\r"})
    {
        EXPECT_THAT(Files("... depotFile //a\n" + other + "\n... depotFile //b\n"),
                    ElementsAre(File(u"//a", 0, 0, 0), File(u"//b", 0, 0, 0)))
            << other;
    }
}

TEST_P(P4Parser, RecordsWithNothingBetweenThemAreOne)
{
    EXPECT_THAT(Files("... depotFile //a\n... headRev 1\n... depotFile //b\n... fileSize 2\n"),
                ElementsAre(File(u"//b", 0, 2, 1)));
}

TEST_P(P4Parser, ATagWithoutAValueIsNone)
{
    EXPECT_THAT(Files("... depotFile //a\n... \n... isMapped\n... headRev\n... headRev 2\n"),
                ElementsAre(File(u"//a", 0, 0, 2)))
        << "none of these ends the record";
    EXPECT_THAT(Files("... isMapped\n... \n"), IsEmpty());
    EXPECT_THAT(Files("... headRev \n"), ElementsAre(File(u"", 0, 0, 0))) << "empty, but there";
}

TEST_P(P4Parser, ARecordWithoutAFileIsAnItemAllTheSame)
{
    EXPECT_THAT(Files("... headRev 2\n\n... ... otherOpen 1\n\n...  x y\n"),
                ElementsAre(File(u"", 0, 0, 2), File(u"", 0, 0, 0), File(u"", 0, 0, 0)));
}

TEST_P(P4Parser, OnlyAPlainDeleteIsDeleted)
{
    EXPECT_THAT(Files("... depotFile //a\n... headAction delete\n\n"
                      "... depotFile //b\n... headAction Delete\n\n"
                      "... depotFile //c\n... headAction  delete\n\n"
                      "... depotFile //d\n... headAction delete \n\n"
                      "... depotFile //e\n... headAction delete\n... headAction edit\n\n"
                      "... depotFile //f\n... headAction move/delete\n\n"),
                ElementsAre(File(u"//b", 0, 0, 0), File(u"//d", 0, 0, 0), File(u"//e", 0, 0, 0),
                            File(u"//f", 0, 0, 0)))
        << "blanks in front of a value don't count, those behind it do";
}

TEST_P(P4Parser, NothingOfARecordIsInTheNext)
{
    EXPECT_THAT(Files("... depotFile //a\n... headAction delete\n... fileSize 9\n... headRev 8\n"
                      "... headTime 7\n\n... depotFile //b\n\n... headRev 1\n"),
                ElementsAre(File(u"//b", 0, 0, 0), File(u"", 0, 0, 1)));
}

TEST_P(P4Parser, NumbersHave32BitsAndASign)
{
    EXPECT_THAT(Files("... fileSize 2147483648\n... headRev 99999999999\n... headTime -1\n"),
                ElementsAre(File(u"", ~std::uint64_t{0}, 2147483647, 2147483647)));
    EXPECT_THAT(Files("... fileSize -5\n... headRev -1\n... headTime 99999999999\n"),
                ElementsAre(File(u"", 2147483647, ~std::uint64_t{0} - 4, 0xFFFFFFFF)));
    EXPECT_THAT(Files("... fileSize \t+12x\n... headRev x1\n"), ElementsAre(File(u"", 0, 12, 0)));
    EXPECT_THAT(Files("... fileSize qd\n"), ElementsAre(File(u"", 0, 0, 0)));
}

TEST_P(P4Parser, BytesAreCharacters)
{
    EXPECT_THAT(Files("... depotFile //\xC3\xA4\xFF\n"),
                ElementsAre(File(u"//\u00c3\u00a4\u00ff", 0, 0, 0)));
    EXPECT_THAT(Files("... depotFile //a\rb \n"), ElementsAre(File(u"//a\rb ", 0, 0, 0)));
}

TEST_P(P4Parser, FoldersAreTheLinesOfADepot)
{
    EXPECT_THAT(ItemsOf(Parsed(dirsOutput, ReadDirs)),
                ElementsAre(Folder(u"//depot/dir"), Folder(u"//depot/other dir%23"),
                            Folder(u"//depot/zzz - no such file(s).")));
    EXPECT_THAT(ItemsOf(Parsed("/x\n\n//\n x//y\n//a \n", ReadDirs)),
                ElementsAre(Folder(u"//"), Folder(u"//a ")));
}

TEST_P(P4Parser, AHistoryIsReadAsItWasRecorded)
{
    const P4FileLog log = Parsed(filelogOutput, ReadFileLog);
    EXPECT_EQ(log.depotFile, u"//depot/dir/a.txt");
    ASSERT_THAT(log.records, SizeIs(5));
    EXPECT_EQ(log.records[0].id, u"5");
    EXPECT_EQ(log.records[0].description, u"20: moved away") << "no plain deletion";
    EXPECT_EQ(log.records[1].id, u"9") << "a deleted revision's description, taken for one";
    EXPECT_EQ(log.records[1].author, u"eve@ws");
    const RevisionRecord& third = log.records[2];
    EXPECT_EQ(third.id, u"3");
    EXPECT_EQ(third.author, u"ann@ws");
    EXPECT_EQ(third.description,
              u"12: first line... depotFile //not/a/fieldsecond... #9 change 99 edit on "
              u"2009/06/01 12:00:00 by eve@ws (text)");
    EXPECT_EQ(third.uri, u"");
    EXPECT_EQ(third.modifiedTime, epoch + 1243857600 * second);
    EXPECT_EQ(third.revisionTime, third.modifiedTime);
    EXPECT_EQ(log.records[3].id, u"2");
    EXPECT_EQ(log.records[3].description, u"11") << "there is none: the change stands alone";
    EXPECT_EQ(log.records[4].id, u"1");
    EXPECT_EQ(log.records[4].modifiedTime, 0U) << "there is no such month";
}

TEST_P(P4Parser, LinesOfADescriptionRunTogether)
{
    EXPECT_EQ(Described("\tfirst\n\tsecond\n"), u"12: firstsecond");
    EXPECT_EQ(Described("\ta\tb\n"), u"12: a b");
    EXPECT_EQ(Described("xfirst\nx\n\n\tlast"), u"12: firstlast") << "whatever comes first is cut";
    EXPECT_EQ(Described(""), u"12");
    EXPECT_EQ(Described("\n\t\n\n"), u"12");
    EXPECT_EQ(Described("\tone\n... ... branch from //x#1\n\ttwo\n"), u"12: one");
    EXPECT_EQ(Described("\tone\n...\n\ttwo\n"), u"12: one");
    EXPECT_EQ(Described("\t...\n\ttwo\n"), u"12: ...two");
    EXPECT_EQ(Described("\t\xC3\xA4\n"), u"12: \u00c3\u00a4");
}

TEST_P(P4Parser, TheFirstLineIsTheFileWhateverItSays)
{
    const std::string revision = "... #1 change 1 add on 2009/06/01 12:00:00 by a@b (text)\n";
    const P4FileLog log = Parsed("anything at all\n" + revision, ReadFileLog);
    EXPECT_EQ(log.depotFile, u"anything at all");
    EXPECT_THAT(log.records, SizeIs(1));
    EXPECT_EQ(Parsed("", ReadFileLog).depotFile, u"");
    EXPECT_THAT(Revisions(revision), IsEmpty());
}

TEST_P(P4Parser, SeveralFilesInOneAnswerAreOneHistory)
{
    const std::string revision =
        "... #1 change 1 add on 2009/06/01 12:00:00 by a@b (text)\n\n\tx\n";
    const P4FileLog log = Parsed("//d/a\n" + revision + "//d/b\n" + revision, ReadFileLog);
    EXPECT_EQ(log.depotFile, u"//d/a");
    ASSERT_THAT(log.records, SizeIs(2));
    EXPECT_EQ(log.records[0].description, u"1: x/d/b") << "as a line of the description";
    EXPECT_EQ(log.records[1].description, u"1: x");
}

TEST_P(P4Parser, ARevisionIsRecognizedInAnyCaseAndPlace)
{
    const auto records = Revisions("//d/a\nxx... #12 CHANGE 34 two words ON 2024/02/29 23:59:59 BY "
                                   "a@b (text) more\n");
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].id, u"12");
    EXPECT_EQ(records[0].author, u"a@b");
    EXPECT_EQ(records[0].modifiedTime, 133537247990000000U);
}

TEST_P(P4Parser, APathIsWhatFollowsTheLastMarkOfTheFirstLine)
{
    EXPECT_EQ(Parsed(haveOutput, ReadHave), u"C:\\ws\\dir\\a.txt");
    EXPECT_EQ(Parsed("//a#1 - /w/x - y\n//b#1 - /w/b\n", ReadHave), u"/w/x - y");
    EXPECT_EQ(Parsed("//a#1 - /w/x#2 - y\n", ReadHave), u"y");
    EXPECT_EQ(Parsed("//depot/a.txt - file(s) not on client.\n", ReadHave), u"");
    EXPECT_EQ(Parsed("\n//a#1 - /w/a\n", ReadHave), u"");
    EXPECT_EQ(Parsed("", ReadHave), u"");
}

TEST_P(P4Parser, WhatIsPrintedBesideTheContentIsDropped)
{
    Parsed(fstatOutput, [](BufferedReader& reader) {
        ReadPrint(reader);
        std::u16string line;
        EXPECT_FALSE(reader.ReadLine(line));
        return 0;
    });
}

TEST_P(P4Parser, HundredsOfThousandsOfLinesLoseNothing)
{
    constexpr std::size_t count = 50'000;
    std::string files;
    std::string history = "//d/a\n";
    for (std::size_t i = 1; i <= count; ++i)
    {
        const std::string number = std::to_string(i);
        files += "... depotFile //d/" + number +
                 "\n... headAction edit\n... ... otherOpen0 x\n"
                 "... headRev " +
                 number + "\n... fileSize 1\n\n";
        history +=
            "... #" + number + " change " + number +
            " edit on 2009/06/01 12:00:00 by a@b (text)\n\n\ttext\n\n... ... copy from //x\n";
    }
    const auto items = Parsed(files, ReadFstat);
    ASSERT_THAT(items, SizeIs(count));
    EXPECT_EQ(items[count - 1]->text, u"//d/50000");
    EXPECT_EQ(items[count - 1]->revision, count);
    const auto records = Revisions(history);
    ASSERT_THAT(records, SizeIs(count));
    EXPECT_EQ(records[count - 1].description, u"50000: text");
}

// 64 KB that begin as a revision does, and never come to its end.
TEST_P(P4Parser, ALineThatNearlyFitsLosesNothing)
{
    std::string hostile;
    while (hostile.size() < 65536)
        hostile += "... #1 change 1 a on 1/1/1 1:1:1 b";
    const std::string revision = "... #2 change 3 edit on 2009/06/01 12:00:00 by a@b (text)\n";
    const auto records =
        Revisions("//d/a\n" + hostile + "\n" + revision + "\n\tx\n" + hostile + "\n" + revision);
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_EQ(records[0].description, u"3: x");
    EXPECT_EQ(records[1].description, u"3");
    EXPECT_EQ(Parsed(std::string(65536, '#') + "1 -\n//a#1 - /a\n", ReadHave), u"");
    EXPECT_THAT(Files("... depotFile //a\n... " + std::string(65536, 'x') + "\n... headRev 2\n"),
                ElementsAre(File(u"//a", 0, 0, 2)));
}

// Where lines end in two characters, one alone is the end.
TEST(P4ParserOnWindows, ABareLineFeedStopsTheReaders)
{
    const P4Output output;
    constexpr BareLineFeed bare = BareLineFeed::LooksLikeTheEnd;
    EXPECT_THAT(ItemsOf(output.Of("... depotFile //a\r\n... headRev 1\r\n\n... depotFile //b\r\n",
                                  bare, ReadFstat)),
                ElementsAre(File(u"//a", 0, 0, 1)));
    EXPECT_THAT(ItemsOf(output.Of("//a\r\n\n//b\r\n", bare, ReadDirs)),
                ElementsAre(Folder(u"//a")));
    EXPECT_EQ(output.Of("\n//a\r\n", bare, ReadFileLog).depotFile, u"");
}

// In a description it ends the revision only; two in a row end the history.
TEST(P4ParserOnWindows, ABareLineFeedEndsADescription)
{
    const P4Output output;
    const std::string revision = "... #1 change 1 add on 2009/06/01 12:00:00 by a@b (text)\r\n";
    const auto read = [&](const std::string& between) {
        return output
            .Of("//a\r\n" + revision + "\tone\r\n" + between + "\ttwo\r\n" + revision,
                BareLineFeed::LooksLikeTheEnd, ReadFileLog)
            .records;
    };
    const auto one = read("\n");
    ASSERT_THAT(one, SizeIs(2));
    EXPECT_EQ(one[0].description, u"1: one");
    EXPECT_THAT(read("\n\n"), SizeIs(1));
}

// Lines that end in a line feed are lines there too, if they hold anything.
TEST(P4ParserOnWindows, OtherLinesMayEndInALineFeed)
{
    const P4Output output;
    EXPECT_THAT(ItemsOf(output.Of("... depotFile //a\n... headRev 1\nx\n... depotFile //b\n",
                                  BareLineFeed::LooksLikeTheEnd, ReadFstat)),
                SizeIs(2));
}

} // namespace
} // namespace tarnwell::test
