// Listings as servers print them.
#include "platform/posix/internet/listingparser.h"

#include <gmock/gmock.h>

namespace tarnwell::test::ftplistings
{
namespace
{

using posix::ListedEntry;
using posix::ListingForm;
using posix::ListingReader;
using posix::Moment;
using posix::MomentOf;
using posix::ParseFactLine;
using posix::ParseListLine;

// 15 June 2024, 12:00, a Saturday.
constexpr Moment now = 1718452800;

Moment At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return MomentOf(year, month, day, {hour, minute, second}).value();
}

struct Line
{
    const char* text;
    const char* name;
    std::uint64_t size;
    Moment time;
    // 'd' folder, 'l' link, 'r' read-only; nothing for an ordinary file.
    const char* kind = "";
};

std::string KindOf(const ListedEntry& entry)
{
    return std::string(entry.isFolder ? "d" : "") + (entry.isLink ? "l" : "") +
           (entry.isReadOnly ? "r" : "");
}

// Servers' bytes aren't always text, and the results of tests are.
std::string Printable(const char* line)
{
    return testing::PrintToString(std::string(line));
}

void PrintTo(const Line& line, std::ostream* out)
{
    *out << Printable(line.text);
}

class ListLines : public testing::TestWithParam<Line>
{
};

TEST_P(ListLines, AreRead)
{
    const Line& line = GetParam();
    const std::optional<ListedEntry> entry = ParseListLine(line.text, now);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, line.name);
    EXPECT_EQ(entry->size, line.size);
    EXPECT_EQ(entry->time, line.time);
    EXPECT_FALSE(entry->isUtc);
    EXPECT_EQ(KindOf(*entry), line.kind);
}

const Line unixLines[] = {
    {"-rw-r--r--    1 ftp      ftp           123 Jan 12 10:30 a.txt", "a.txt", 123,
     At(2024, 1, 12, 10, 30)},
    {"drwxr-xr-x 2 1000 1000 4096 Jan 12  2020 sub", "sub", 4096, At(2020, 1, 12), "d"},
    // Without a group; numeric owners; signs behind the mode.
    {"-rw-r--r-- 1 ftp 123 Jan 12 10:30 a", "a", 123, At(2024, 1, 12, 10, 30)},
    {"-rw-r--r--+ 1 0 0 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r--. 1 0 0 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r--@ 1 0 0 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    // Owners with names that dates have, and with digits.
    {"-rw-r--r-- 1 may 1999 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 12 jan jan 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    // Read-only: no w anywhere.
    {"-r--r--r-- 1 ftp ftp 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30), "r"},
    {"-r--r--rw- 1 ftp ftp 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    // Links, with and without what they lead to.
    {"lrwxrwxrwx 1 ftp ftp 5 Jan  2 10:30 a -> b", "a", 5, At(2024, 1, 2, 10, 30), "l"},
    {"lrwxrwxrwx 1 ftp ftp 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30), "l"},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a -> b", "a -> b", 5, At(2024, 1, 2, 10, 30)},
    // Devices have two numbers for a size; pipes and sockets are files.
    {"crw-rw-rw- 1 root root 1, 3 Jan  2 10:30 null", "null", 0, At(2024, 1, 2, 10, 30)},
    {"brw-rw-rw- 1 root root 8,10 Jan  2 10:30 sda", "sda", 0, At(2024, 1, 2, 10, 30)},
    {"prw-rw-rw- 1 root root 0 Jan  2 10:30 pipe", "pipe", 0, At(2024, 1, 2, 10, 30)},
    {"srw-rw-rw- 1 root root 0 Jan  2 10:30 socket", "socket", 0, At(2024, 1, 2, 10, 30)},
    // Blocks and inodes in front.
    {"   4 -rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"1234 4 -rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    // Sizes: huge, too huge, and so wide that the group's name is touched.
    {"-rw-r--r-- 1 ftp ftp 18446744073709551615 Jan  2 10:30 a", "a", 18446744073709551615U,
     At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 99999999999999999999 Jan  2 10:30 a", "a", 0, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp group4294967301 Jan  2 10:30 a", "a", 4294967301U, At(2024, 1, 2, 10, 30)},
    // Blanks behind the clock belong to the name, and those at its end.
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30  two before", " two before", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 behind  ", "behind  ", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2  2020  before", " before", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 2020  column", "column", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 2020   before", " before", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 2020 plain", "plain", 5, At(2020, 1, 2)},
    // Names that look like what stands before them.
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 7 Feb  3 11:40 b", "7 Feb  3 11:40 b", 5,
     At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 2020", "2020", 5, At(2024, 1, 2, 10, 30)},
    // The latest such date that is not over a day ahead.
    {"-rw-r--r-- 1 ftp ftp 5 Jun 15 12:00 a", "a", 5, At(2024, 6, 15, 12)},
    {"-rw-r--r-- 1 ftp ftp 5 Jun 16 12:00 a", "a", 5, At(2024, 6, 16, 12)},
    {"-rw-r--r-- 1 ftp ftp 5 Jun 16 12:01 a", "a", 5, At(2023, 6, 16, 12, 1)},
    {"-rw-r--r-- 1 ftp ftp 5 Dec 31 23:59 a", "a", 5, At(2023, 12, 31, 23, 59)},
    {"-rw-r--r-- 1 ftp ftp 5 Feb 29 10:30 a", "a", 5, At(2024, 2, 29, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 Feb 29  2020 a", "a", 5, At(2020, 2, 29)},
    // The other way round, with seconds, by numbers, with a zone.
    {"-rw-r--r-- 1 ftp ftp 5  2 Jan 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 2. Jan 2020 a", "a", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30:15 2020 a", "a", 5, At(2020, 1, 2, 10, 30, 15)},
    {"-rw-r--r-- 1 ftp ftp 5 2020-01-02 10:30 a", "a", 5, At(2020, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 2020-01-02 10:30:15 a", "a", 5, At(2020, 1, 2, 10, 30, 15)},
    {"-rw-r--r-- 1 ftp ftp 5 01-02 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 2020-01-02  a", "a", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5  2020-01-02  before", " before", 5, At(2020, 1, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 2020-01-02 10:30  before", " before", 5, At(2020, 1, 2, 10, 30)},
    // Other languages.
    {"-rw-r--r-- 1 ftp ftp 5 M\u00e4r  2 10:30 a", "a", 5, At(2024, 3, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 M\344r  2 10:30 a", "a", 5, At(2024, 3, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 2 f\u00e9vr. 10:30 a", "a", 5, At(2024, 2, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 ago  2  2020 a", "a", 5, At(2020, 8, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 12\u6708  2 2020 a", "a", 5, At(2020, 12, 2)},
    {"-rw-r--r-- 1 ftp ftp 5 1\u6708  2\u65e5 10:30 a", "a", 5, At(2024, 1, 2, 10, 30)},
    {"-rw-r--r-- 1 ftp ftp 5 OKT  2  2020 a", "a", 5, At(2020, 10, 2)},
    // Other systems that print nearly the same.
    {"drwxrwxr-x               folder        2 May 10  1996 network", "network", 2, At(1996, 5, 10),
     "d"},
    {"d [RWCEAFMS] ftp 512 Jan  2 18:53 login", "login", 512, At(2024, 1, 2, 18, 53), "d"},
    {"- [R----F--] ftp 214059 Oct 20 15:27 cx.exe", "cx.exe", 214059, At(2023, 10, 20, 15, 27),
     "r"},
};

const Line dosLines[] = {
    {"01-31-20  03:04PM       <DIR>          sub", "sub", 0, At(2020, 1, 31, 15, 4), "d"},
    {"01-31-2020  03:04PM             1234 a b.txt", "a b.txt", 1234, At(2020, 1, 31, 15, 4)},
    {"01-31-20  12:04AM 1 a", "a", 1, At(2020, 1, 31, 0, 4)},
    {"01-31-20  12:04PM 1 a", "a", 1, At(2020, 1, 31, 12, 4)},
    {"01-31-20  3:04 PM 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"01-31-20  03:04p 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"01-31-20  15:04 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"01-31-69  15:04 1 a", "a", 1, At(2069, 1, 31, 15, 4)},
    {"01-31-70  15:04 1 a", "a", 1, At(1970, 1, 31, 15, 4)},
    {"2020-01-31  15:04 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"01/31/2020  15:04 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"31.01.2020  15:04 1 a", "a", 1, At(2020, 1, 31, 15, 4)},
    {"02-29-20  15:04 1 a", "a", 1, At(2020, 2, 29, 15, 4)},
    {"01-31-20  15:04 1,234,567 a", "a", 1234567, At(2020, 1, 31, 15, 4)},
    {"01-31-20  15:04 1.234.567 a", "a", 1234567, At(2020, 1, 31, 15, 4)},
    {"01-31-20  15:04 5000000000 a", "a", 5000000000U, At(2020, 1, 31, 15, 4)},
    {"01-31-20  15:04 <JUNCTION>     a", "a", 0, At(2020, 1, 31, 15, 4), "l"},
    {"01-31-20  03:04PM       <JUNCTION>     a b ", "a b ", 0, At(2020, 1, 31, 15, 4), "l"},
    {"01-31-20  15:04 <SYMLINK>      a", "a", 0, At(2020, 1, 31, 15, 4), "l"},
    {"01-31-20  15:04 <SYMLINKD>     a", "a", 0, At(2020, 1, 31, 15, 4), "l"},
    // One blank behind a size, all behind a kind.
    {"01-31-20  15:04 1  a ", " a ", 1, At(2020, 1, 31, 15, 4)},
};

INSTANTIATE_TEST_SUITE_P(Unix, ListLines, testing::ValuesIn(unixLines));
INSTANTIATE_TEST_SUITE_P(Dos, ListLines, testing::ValuesIn(dosLines));

TEST(ListLine, AZoneMakesTheTimeUniversal)
{
    const auto entry =
        ParseListLine("-rw-r--r-- 1 ftp ftp 5 2020-01-02 10:30:15.000000000 +0130 a", now);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, "a");
    EXPECT_EQ(entry->time, At(2020, 1, 2, 9, 0, 15));
    EXPECT_TRUE(entry->isUtc);
}

// As the C library's locales abbreviate them.
TEST(ListLine, MonthsOfManyLanguagesAreKnown)
{
    constexpr const char* languages[][12] = {
        {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
        {"Jan", "Feb", "Mär", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"},
        {"janv.", "févr.", "mars", "avril", "mai", "juin", "juil.", "août", "sept.", "oct.", "nov.",
         "déc."},
        {"ene", "feb", "mar", "abr", "may", "jun", "jul", "ago", "sep", "oct", "nov", "dic"},
        {"gen", "feb", "mar", "apr", "mag", "giu", "lug", "ago", "set", "ott", "nov", "dic"},
        {"jan", "fev", "mar", "abr", "mai", "jun", "jul", "ago", "set", "out", "nov", "dez"},
        {"jan", "feb", "mrt", "apr", "mei", "jun", "jul", "aug", "sep", "okt", "nov", "dec"},
        {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "dec"},
        {"jan.", "feb.", "mars", "april", "mai", "juni", "juli", "aug.", "sep.", "okt.", "nov.",
         "des."},
        {"sty", "lut", "mar", "kwi", "maj", "cze", "lip", "sie", "wrz", "paź", "lis", "gru"},
        {"led", "úno", "bře", "dub", "kvě", "čen", "čec", "srp", "zář", "říj", "lis", "pro"},
        {"янв", "фев", "мар", "апр", "мая", "июн", "июл", "авг", "сен", "окт", "ноя", "дек"},
    };
    for (const auto& names : languages)
    {
        for (int month = 1; month <= 12; ++month)
        {
            const std::string name = names[month - 1];
            const auto entry = ParseListLine("-rw-r--r-- 1 f f 5 " + name + "  2  2020 a", now);
            ASSERT_TRUE(entry.has_value()) << name;
            EXPECT_EQ(entry->time, At(2020, month, 2)) << name;
        }
    }
}

class NoListLines : public testing::TestWithParam<std::string>
{
};

TEST_P(NoListLines, MakeNoEntry)
{
    EXPECT_FALSE(ParseListLine(GetParam(), now).has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Of, NoListLines,
    testing::Values(
        "", " ", "total 12", "insgesamt 12", "-", "d", "drwxr-xr-x",
        "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30", "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 ",
        // No such day, no size, a size below nothing.
        "-rw-r--r-- 1 ftp ftp 5 Feb 30 10:30 a", "-rw-r--r-- 1 ftp ftp 5 Feb 29  2019 a",
        "-rw-r--r-- 1 ftp ftp Jan  2 10:30 a", "-rw-r--r-- 1 ftp ftp -5 Jan  2 10:30 a",
        "-rw-r--r-- 1 ftp ftp 5 Jan  2 24:30 a", "-rw-r--r-- 1 ftp ftp 5 Xyz  2 10:30 a",
        "xrw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a", "-rw-r--r-x! 1 f f 5 Jan  2 10:30 a",
        // Names that no path can hold.
        "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a/b", "-rw-r--r-- 1 f f 5 Jan  2 10:30 ../a",
        "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a\rb", "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a\u2028b",
        "-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a\u2029b",
        std::string("-rw-r--r-- 1 ftp ftp 5 Jan  2 10:30 a\0b", 39),
        "lrwxrwxrwx 1 ftp ftp 5 Jan  2 10:30  -> b", "01-31-20  03:04PM", "01-31-20  03:04PM <DIR>",
        "01-31-20  03:04PM <DIR>   ", "01-31-20  03:04XM 1 a", "13-32-20  03:04PM 1 a",
        "01-31-20  03:04PM 12x a", "01-31-20  03:04PM 1,23 a", "01-31-20  03:04PM -5 a",
        // Other systems' listings.
        "README.TXT;1  2/4  12-JAN-2020 10:30:00  [FTP,FTP]  (RWED,RWED,RE,)",
        "CORE.DIR;1          1  8-SEP-1996 16:09 [SYSTEM] (RWE,RWE,RE,RE)",
        "[ROOT.SUB]A.TXT;1  %RMS-E-PRV, insufficient privilege", "Directory DISK$USER:[FTP]",
        "Total of 3 files, 10/12 blocks.",
        "Volume Unit    Referred Ext Used Recfm Lrecl BlkSz Dsorg Dsname",
        "Migrated                                                MY.OLD.DATA",
        " Name     VV.MM   Created       Changed      Size  Init   Mod   Id",
        "MEMBER1   01.02 2020/01/02 2020/01/03 10:30    12    12     0 USER",
        "QSECOFR                                     *MEM       A.FILE/A.MBR",
        "QDFTOWN         2048 2020-01-31 15:09:55 *DIR       HOME/",
        "QSYS  77824 02/23/20 15:09:55 *DIR QOPENSYS/",
        "WYOSPT 3420   2020/05/21  1  200  FB      80  8053  PS  MY.DATA"));

struct FactLine
{
    const char* text;
    const char* name;
    std::uint64_t size = 0;
    std::optional<Moment> time = std::nullopt;
    const char* kind = "";
};

void PrintTo(const FactLine& line, std::ostream* out)
{
    *out << Printable(line.text);
}

class FactLines : public testing::TestWithParam<FactLine>
{
};

TEST_P(FactLines, AreRead)
{
    const FactLine& line = GetParam();
    const std::optional<ListedEntry> entry = ParseFactLine(line.text);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, line.name);
    EXPECT_EQ(entry->size, line.size);
    EXPECT_EQ(entry->time, line.time);
    EXPECT_TRUE(entry->isUtc);
    EXPECT_EQ(KindOf(*entry), line.kind);
}

const FactLine factLines[] = {
    {"type=file;size=5;modify=20200131150405;perm=adfrw; a b", "a b", 5, At(2020, 1, 31, 15, 4, 5)},
    // In any order, case and number; unknown ones.
    {"Modify=20200131150405;SIZE=5;Type=FILE;x-odd=1;unique=a=b; a", "a", 5,
     At(2020, 1, 31, 15, 4, 5)},
    {"type=dir;sizd=4096;modify=20200131150405; sub", "sub", 0, At(2020, 1, 31, 15, 4, 5), "d"},
    {"type=dir; a", "a", 0, std::nullopt, "d"},
    {" a", "a"},
    {"  a ", " a "},
    {"type=file;size=5 a", "a", 5},
    // Links.
    {"type=OS.unix=slink:/else/where; a", "a", 0, std::nullopt, "l"},
    {"type=OS.unix=slink:/with a blank;size=3; a", "a", 3, std::nullopt, "l"},
    {"type=OS.UNIX=symlink; a", "a", 0, std::nullopt, "l"},
    {"type=OS.unix=chr-1/3; a", "a"},
    // Permissions.
    {"type=file;perm=r; a", "a", 0, std::nullopt, "r"},
    {"type=file;perm=; a", "a", 0, std::nullopt, "r"},
    {"type=file;perm=ra; a", "a"},
    {"type=file;perm=rW; a", "a"},
    {"type=file;UNIX.mode=0444; a", "a", 0, std::nullopt, "r"},
    {"type=file;UNIX.mode=0464; a", "a"},
    {"type=file;perm=w;UNIX.mode=0444; a", "a"},
    {"type=file;UNIX.mode=; a", "a"},
    // What can't be read.
    {"type=file;size=-5;modify=2020013115040; a", "a"},
    {"type=file;size=12x;modify=20200231150405; a", "a"},
    {"type=file;size=18446744073709551616;modify=; a", "a"},
    {"type=file;size=18446744073709551615; a", "a", 18446744073709551615U},
};

INSTANTIATE_TEST_SUITE_P(Of, FactLines, testing::ValuesIn(factLines));

TEST(FactLine, FractionsOfASecondAreKept)
{
    const auto entry = ParseFactLine("modify=20200131150405.25; a");
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->time, At(2020, 1, 31, 15, 4, 5));
    EXPECT_EQ(entry->fraction, 250000000U);
}

TEST(FactLine, WhatIsNoEntryMakesNone)
{
    for (const char* const line :
         {"", "a", "no facts here", "type=cdir; .", "type=pdir; /up", "type=file; ", "type=file;",
          "type=file; a/b", "type=file; ../../etc", "type=file; a\rb", "type=file; a\u2028b"})
        EXPECT_FALSE(ParseFactLine(line).has_value()) << line;
}

std::vector<std::string> NamesOf(ListingForm form, std::string_view text, std::size_t piece)
{
    ListingReader reader(form, now);
    for (std::size_t at = 0; at < text.size(); at += piece)
        EXPECT_TRUE(reader.Take(text.substr(at, piece)));
    std::vector<std::string> names;
    for (const ListedEntry& entry : reader.Finish())
        names.push_back(entry.name);
    return names;
}

TEST(Listings, MayComeInPieces)
{
    constexpr std::string_view text = "total 3\r\n\r\n"
                                      "drwxr-xr-x 2 f f 5 Jan  2 10:30 .\r\n"
                                      "-rw-r--r-- 1 f f 5 Jan  2 10:30 a \r\n"
                                      "garbage\r\n"
                                      "-rw-r--r-- 1 f f 5 Jan  2 10:30 b\n"
                                      "-rw-r--r-- 1 f f 5 Jan  2 10:30 c";
    for (std::size_t piece = 1; piece <= text.size(); ++piece)
        EXPECT_THAT(NamesOf(ListingForm::Lines, text, piece),
                    testing::ElementsAre(".", "a ", "b", "c"));
}

TEST(Listings, ALineThatIsTooLongLosesNoOther)
{
    const std::string text = " a\r\n " + std::string(ListingReader::longestLine + 1, 'x') +
                             "\r\n b\r\n " + std::string(ListingReader::longestLine + 1, 'x');
    for (const std::size_t piece : {std::size_t{1000}, text.size()})
        EXPECT_THAT(NamesOf(ListingForm::Facts, text, piece), testing::ElementsAre("a", "b"));
}

TEST(Listings, TakeNoMoreThanTheirBounds)
{
    ListingReader junk(ListingForm::Lines, now);
    const std::string piece(1048576, 'x');
    std::uint64_t taken = 0;
    while (junk.Take(piece))
        taken += piece.size();
    EXPECT_EQ(taken, ListingReader::longestText);

    ListingReader small(ListingForm::Facts, now);
    std::string lines;
    for (int i = 0; i < 100000; ++i)
        lines += " a\n";
    std::uint64_t entries = 0;
    while (small.Take(lines))
        entries += 100000;
    EXPECT_LE(entries * sizeof(ListedEntry), ListingReader::mostKept);
}

} // namespace
} // namespace tarnwell::test::ftplistings
