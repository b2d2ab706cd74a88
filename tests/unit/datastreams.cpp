// The walk over a file's named data streams, whose platform calls are made up here.
#include "local/datastreams.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "local/findrecord.h"
#include "support/errorinfo.h"
#include "support/tempfolder.h"
#include "unit/fakebackup.h"

#include <tarnwell/classes.h>
#include <tarnwell/items.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t mainData = 1;
constexpr std::uint32_t securityData = 3;

class DataStreams : public testing::Test
{
protected:
    DataStreams()
    {
        WriteBytes(path_, "main");
        SetNames(record_, u"file.txt");
        record_.dwFileAttributes = 33;
        record_.nFileSizeLow = 4;
        record_.nFileSizeHigh = 77;
        record_.ftLastWriteTime = FileTimeOf(12345);
        ClearError();
    }

    HRESULT Walk(const std::u16string& path)
    {
        return EnumerateDataStreams(path, record_, list_, {CLSID_Win32Folder, IID_IFolder});
    }
    std::vector<std::u16string> Names()
    {
        EXPECT_EQ(Walk(path_), S_OK);
        EXPECT_EQ(TakeErrorText(), u"(none)");
        std::vector<std::u16string> names;
        for (const WIN32_FIND_DATAW& found : list_)
            names.emplace_back(NameOf(found));
        return names;
    }

    TempFolder folder_;
    std::u16string path_ = folder_ / u"file.txt";
    WIN32_FIND_DATAW record_{};
    std::vector<WIN32_FIND_DATAW> list_;
};

// The main data, of 4 bytes, and two named streams.
std::vector<FakeStream> SomeStreams()
{
    return {{mainData, u"", 4, 0, 4}, {4, u":s1:$DATA", 100, 0, 100}, {4, u":ツ:$DATA", 3, 0, 3}};
}

TEST_F(DataStreams, EachHasTheFilesFactsAndItsOwnNameAndSize)
{
    const FakeBackup backup(
        std::vector<FakeStream>{{mainData, u"", 4, 0, 4}, {4, u":s1:$DATA", 100, 0, 100}});
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:s1"));
    ASSERT_EQ(list_.size(), 1U);
    EXPECT_EQ(list_[0].nFileSizeLow, 100U);
    EXPECT_EQ(list_[0].nFileSizeHigh, 0U);
    EXPECT_EQ(list_[0].dwFileAttributes, 33U);
    EXPECT_EQ(TimeOf(list_[0].ftLastWriteTime), 12345U);
    EXPECT_EQ(Units(list_[0].cAlternateFileName), u"file.txt");
}

TEST_F(DataStreams, ComeInThePlatformsOrderBehindWhatIsInTheList)
{
    list_.push_back(record_);
    const FakeBackup backup(SomeStreams());
    EXPECT_THAT(Names(), ElementsAre(u"file.txt", u"file.txt:s1", u"file.txt:ツ"));
}

TEST_F(DataStreams, OnlyNamedDataCounts)
{
    const FakeBackup backup(std::vector<FakeStream>{{securityData, u":odd:$DATA", 8, 0, 8},
                                                    {4, u":s1:$DATA", 0, 0, 0},
                                                    {5, u"", 2, 0, 2},
                                                    {4, u":s2:$DATA", 1, 0, 1}});
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:s1", u"file.txt:s2"));
}

TEST_F(DataStreams, AFileWithoutAnyHasNone)
{
    for (const bool hasMain : {true, false})
    {
        const FakeBackup backup(hasMain ? FakeStream{mainData, u"", 4, 0, 4}.Bytes()
                                        : std::string());
        EXPECT_THAT(Names(), IsEmpty());
        EXPECT_EQ(backup.walks, 1);
    }
}

TEST_F(DataStreams, AnEmptyOneIsListedEvenIfTheWalkEndsThere)
{
    FakeBackup backup(std::vector<FakeStream>{{4, u":empty:$DATA"}, {4, u":next:$DATA"}});
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:empty", u"file.txt:next"));
    list_.clear();
    backup.seeks = 0;
    backup.failingSeek = 1;
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:empty"));
}

TEST_F(DataStreams, SizesBeyondFourGigabytesHaveTwoHalves)
{
    const FakeBackup backup(
        std::vector<FakeStream>{{4, u":big:$DATA", 0x1'2345'6789}, {4, u":next:$DATA"}});
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:big", u"file.txt:next"));
    EXPECT_EQ(list_.at(0).nFileSizeHigh, 1U);
    EXPECT_EQ(list_.at(0).nFileSizeLow, 0x23456789U);
    EXPECT_EQ(list_.at(1).nFileSizeHigh, 0U) << "of one stream only";
}

TEST_F(DataStreams, NoDataIsRead)
{
    const FakeBackup backup(SomeStreams());
    EXPECT_EQ(Names().size(), 2U);
    EXPECT_THAT(backup.sizes, ElementsAre(20U, 0U, 20U, 18U, 20U, 16U, 20U));
    EXPECT_EQ(backup.seeks, 3);
}

TEST_F(DataStreams, NamesLoseTheirTypeAndNothingElse)
{
    const FakeBackup backup(std::vector<FakeStream>{{4, u":a:b:$DATA"},
                                                    {4, u":bare"},
                                                    {4, u"nocolon"},
                                                    {4, u""},
                                                    {4, std::u16string(u":cut\0off:$DATA", 14)}});
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:a:b", u"file.txt:bare", u"file.txtnocolon",
                                     u"file.txt", u"file.txt:cut"));
}

TEST_F(DataStreams, LongNamesAreCutToTheRecord)
{
    const std::u16string name = u":" + std::u16string(250, u'x') + u":$DATA";
    SetNames(record_, std::u16string(100, u'f'));
    const FakeBackup backup(std::vector<FakeStream>{{4, name}});
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_EQ(names[0], (std::u16string(100, u'f') + name).substr(0, 259));
}

TEST_F(DataStreams, ANameMayFillItsRoom)
{
    const std::u16string name = u":" + std::u16string(260, u'x');
    const FakeBackup backup(std::vector<FakeStream>{{4, name}});
    EXPECT_THAT(Names(), ElementsAre((u"file.txt" + name).substr(0, 259)));
}

TEST_F(DataStreams, ANameSizeThatLiesEndsTheWalk)
{
    for (const std::uint32_t claimed : {523U, 524U, 0x7FFFFFFFU, 0xFFFFFFFFU})
    {
        list_.clear();
        const FakeBackup backup(std::vector<FakeStream>{
            {4, u":s1:$DATA"}, {4, std::u16string(400, u'x'), 0, claimed}, {4, u":s2:$DATA"}});
        EXPECT_THAT(Names(), ElementsAre(u"file.txt:s1"));
        EXPECT_EQ(backup.reads, 3) << "it isn't even read";
        EXPECT_EQ(backup.walks, 1);
    }
}

TEST_F(DataStreams, ANameOfAnOddSizeIsTakenAsFarAsItGoes)
{
    const FakeBackup backup(FakeStream{4, u":ab", 0, 7}.Bytes() + "c");
    const auto names = Names();
    ASSERT_EQ(names.size(), 1U);
    EXPECT_TRUE(names[0].starts_with(u"file.txt:ab"));
}

TEST_F(DataStreams, AStreamSizeThatLiesEndsTheWalkQuietly)
{
    FakeBackup backup(
        std::vector<FakeStream>{{4, u":s1:$DATA", 0xFFFFFFFFFFFFFFFF, 0, 5}, {4, u":s2:$DATA"}});
    backup.failingSeek = 1;
    EXPECT_THAT(Names(), ElementsAre(u"file.txt:s1"));
    EXPECT_EQ(list_.at(0).nFileSizeHigh, 0xFFFFFFFFU);
}

TEST_F(DataStreams, AnyFailureEndsTheWalkAndKeepsWhatWasFound)
{
    // Header and name of three streams; the second and the third are named.
    constexpr std::size_t foundBefore[] = {0, 0, 0, 0, 1, 1, 2};
    for (int n = 1; n <= 7; ++n)
    {
        for (int FakeBackup::*const kind : {&FakeBackup::failingRead, &FakeBackup::shortRead})
        {
            list_.clear();
            FakeBackup backup(SomeStreams());
            backup.*kind = n;
            // Nothing is missing from an empty name, nor from the end.
            const bool isHarmless = kind == &FakeBackup::shortRead && (n == 2 || n == 7);
            EXPECT_EQ(Names().size(), isHarmless ? 2U : foundBefore[n - 1]) << n;
            EXPECT_EQ(backup.walks, 1);
        }
    }
    constexpr std::size_t foundBeforeSeek[] = {0, 1, 2};
    for (int n = 1; n <= 3; ++n)
    {
        list_.clear();
        FakeBackup backup(SomeStreams());
        backup.failingSeek = n;
        EXPECT_EQ(Names().size(), foundBeforeSeek[n - 1]) << n;
    }
}

TEST_F(DataStreams, AFileThatCannotBeOpenedFailsAndIsNotWalked)
{
    const FakeBackup backup(SomeStreams());
    const std::u16string missing = folder_ / u"missing";
    EXPECT_EQ(Walk(missing), StatusFromError(ERROR_FILE_NOT_FOUND));
    EXPECT_THAT(list_, IsEmpty());
    EXPECT_EQ(backup.walks, 0);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_TRUE(
        error->text.starts_with(FormatMessageById(MessageId::DataStreamsFailed, {missing}) + u" "));
    EXPECT_TRUE(error->interfaceId == IID_IFolder);
}

TEST_F(DataStreams, PlatformsWithoutThemFindNone)
{
    const BackupCalls* const before = std::exchange(backupCalls, nullptr);
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_EQ(Walk(folder_ / u"missing"), S_OK) << "nothing is opened";
    backupCalls = before;
}

} // namespace

} // namespace tarnwell::test
