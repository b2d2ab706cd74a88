// Perforce on Windows: the command line as it arrives, text that isn't bytes, and line feeds that
// are no line's end.
#include "module/perforcetest.h"

namespace tarnwell::test
{
namespace
{

using testing::SizeIs;

class PerforceOnWindows : public PerforceClientTest
{
protected:
    PerforceOnWindows() : PerforceClientTest("only the stand-in tells how it was called") {}
};

TEST_F(PerforceOnWindows, TheCommandLineIsWordForWord)
{
    Revisions(address_);
    EXPECT_EQ(depot_.CommandLine(), "\"p4.exe\"  have \"//depot/base/a.txt\"");
    List(folder_);
    EXPECT_EQ(depot_.CommandLine(), "\"p4.exe\" dirs \"//depot/base/*\"");
    List(u"p4://u\"v:p\\@s///depot/x\\");
    EXPECT_EQ(depot_.CommandLine(), "\"p4.exe\" -u \"u\\\"v\" -P \"p\\\\\" -p \"s\" dirs "
                                    "\"//depot/x\\/*\"");
    Content(address_ + u"#1");
    const std::string line = depot_.CommandLine();
    EXPECT_TRUE(line.starts_with("\"p4.exe\" print -o \""));
    EXPECT_TRUE(line.ends_with("\" -q \"//depot/base/a.txt#1\""));
    Fail("have", "silent");
    depot_.Print("filelog", "");
    Revisions(u"p4://u@s///depot/base/a.txt/");
    EXPECT_EQ(depot_.CommandLine(), "\"p4.exe\" -u \"u\" -p \"s\"  have \"//\"");
}

TEST_F(PerforceOnWindows, NamesAreTextAndNotBytes)
{
    FailedOpen(folder_ + u"/\u00c3\u00a4");
    EXPECT_TRUE(depot_.TakeRuns().at(0).ends_with("/\xC3\x83\xC2\xA4"));
}

TEST_F(PerforceOnWindows, ABareLineFeedStopsTheReaders)
{
    depot_.PrintBytes("fstat",
                      "... depotFile //a\r\n\r\n... depotFile //b\r\n\n... depotFile //c\r\n");
    depot_.PrintBytes("dirs", "//d\r\n\n//e\r\n");
    const auto items = List(folder_);
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[1].path, u"p4:////b#0");
    EXPECT_EQ(items[2].path, u"p4:////d");
    const std::string first = "//a\r\n... #2 change 2 edit on 2009/06/01 12:00:00 by a@w (text)\r\n"
                              "\r\n\tx\r\n\n\ty\r\n";
    depot_.PrintBytes("filelog", first +
                                     "... #1 change 1 add on 2009/06/01 12:00:00 by a@w (text)\r\n"
                                     "\n... #0 change 1 add on 2009/06/01 12:00:00 by a@w\r\n");
    const auto list = Revisions(address_);
    ASSERT_FALSE(list.empty());
    EXPECT_EQ(list[0].description, u"2: x") << "a bare line feed ends a description";
}

} // namespace
} // namespace tarnwell::test
