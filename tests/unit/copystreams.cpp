// Copying through streams, which are made up here.
#include "local/copystreams.h"
#include "frame/status.h"
#include "support/errorinfo.h"
#include "unit/copyends.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

using testing::Each;
using testing::ElementsAre;

constexpr ULONG piece = 0x10000;
constexpr DWORD busy = ERROR_BUSY;

class CopyThroughStreamsTest : public testing::Test
{
protected:
    CopyThroughStreamsTest()
    {
        ClearError();
    }
    ~CopyThroughStreamsTest() override
    {
        EXPECT_EQ(ends.source.streams + ends.target.streams, 0) << "a stream was left open";
        EXPECT_EQ(ends.sourceFile.references + ends.targetFile.references + progress.references,
                  0U);
        EXPECT_EQ(TakeErrorText(), u"(none)") << "the texts are the caller's";
    }

    HRESULT Copy()
    {
        return CopyThroughStreams(ends, u"from:s", u"to:s", &progress);
    }
    void Put(std::size_t size)
    {
        ends.source.bytes.assign(size, 'x');
        if (size > 0)
            ends.source.bytes.back() = 'y';
    }
    bool IsWhole() const
    {
        return ends.target.bytes == ends.source.bytes;
    }

    CopyEnds ends;
    FakeProgress progress;
};

TEST_F(CopyThroughStreamsTest, FindsAndOpensBothEnds)
{
    Put(3);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(ends.source.calls, ElementsAre(u"from:s must exist", u"open 80000000 3"));
    EXPECT_THAT(ends.target.calls, ElementsAre(u"to:s may exist", u"open 40000000 2"));
}

TEST_F(CopyThroughStreamsTest, AShortPieceIsTheLast)
{
    Put(2 * piece + 1);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(ends.source.sizes, ElementsAre(piece, piece, piece));
    EXPECT_THAT(ends.target.sizes, ElementsAre(piece, piece, 1U));
    EXPECT_EQ(progress.Questions(), 3);
}

TEST_F(CopyThroughStreamsTest, BehindAWholeNumberOfPiecesNothingIsRead)
{
    Put(2 * piece);
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_EQ(ends.source.sizes.size(), 3U) << "the last read finds 0 bytes";
    EXPECT_EQ(ends.target.sizes.size(), 2U);
    EXPECT_EQ(progress.Questions(), 2);
}

TEST_F(CopyThroughStreamsTest, WithoutAProgressNobodyIsAskedAndAllIsCopied)
{
    Put(2 * piece + 1);
    EXPECT_EQ(CopyThroughStreams(ends, u"from:s", u"to:s", nullptr), S_OK);
    EXPECT_TRUE(IsWhole());
}

TEST_F(CopyThroughStreamsTest, AnEmptySourceAsksNobody)
{
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(ends.source.sizes.size(), 1U);
    EXPECT_EQ(ends.target.sizes.size(), 0U);
    EXPECT_EQ(progress.Questions(), 0);
    EXPECT_EQ(ends.target.calls.size(), 2U) << "it is made all the same";
}

TEST_F(CopyThroughStreamsTest, ANoIsNoFailureAndKeepsWhatWasWritten)
{
    Put(3 * piece);
    progress.answer = [](int n) {
        return n < 2 ? VARIANT_TRUE : VARIANT_FALSE;
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(progress.Questions(), 2);
    EXPECT_EQ(ends.target.bytes.size(), 2 * piece);
}

TEST_F(CopyThroughStreamsTest, TellsHowFarItIs)
{
    Put(2 * piece + 1);
    ends.source.listedSize = std::uint64_t{5} << 32;
    FakeAmounts amounts;
    EXPECT_EQ(CopyThroughStreams(ends, u"from:s", u"to:s", &amounts), S_OK);
    const std::uint64_t total = std::uint64_t{5} << 32;
    EXPECT_THAT(amounts.told,
                ElementsAre(FakeAmounts::Amount{0, total}, FakeAmounts::Amount{piece, total},
                            FakeAmounts::asked, FakeAmounts::Amount{2 * piece, total},
                            FakeAmounts::asked, FakeAmounts::Amount{2 * piece + 1, total},
                            FakeAmounts::asked));
    EXPECT_EQ(amounts.references, 0U);
}

TEST_F(CopyThroughStreamsTest, TellsHowFarItIsOfAnUnknownAmount)
{
    Put(piece + 1);
    FakeAmounts amounts;
    amounts.last = 1;
    EXPECT_EQ(CopyThroughStreams(ends, u"from:s", u"to:s", &amounts), S_OK);
    EXPECT_THAT(amounts.told,
                ElementsAre(FakeAmounts::Amount{0, AmountUnknown},
                            FakeAmounts::Amount{piece, AmountUnknown}, FakeAmounts::asked));
}

TEST_F(CopyThroughStreamsTest, AHostThatWritesNoAnswerCancels)
{
    Put(3 * piece);
    progress.answer = [](int) {
        return std::nullopt;
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_EQ(ends.target.bytes.size(), piece);
    EXPECT_THAT(progress.presets, ElementsAre(VARIANT_FALSE));
}

TEST_F(CopyThroughStreamsTest, TheAnswerCountsAndNotItsStatus)
{
    Put(3 * piece);
    progress.status = E_FAIL;
    progress.answer = [](int) {
        return VARIANT_BOOL{1};
    };
    EXPECT_EQ(Copy(), S_OK);
    EXPECT_TRUE(IsWhole());
    EXPECT_THAT(progress.presets, Each(VARIANT_FALSE));
}

TEST_F(CopyThroughStreamsTest, ACancelKeepsTheStatusOfAFailedWrite)
{
    Put(3 * piece);
    ends.target.events = {{}, {StatusFromError(busy), piece}};
    progress.answer = [](int n) {
        return n < 2 ? VARIANT_TRUE : VARIANT_FALSE;
    };
    EXPECT_EQ(Copy(), StatusFromError(busy));
    EXPECT_EQ(ends.target.bytes.size(), piece);
}

TEST_F(CopyThroughStreamsTest, AShortWriteThatSucceedsIsAFullDisk)
{
    Put(2 * piece);
    ends.target.events = {{S_OK, 1}};
    EXPECT_EQ(Copy(), StatusFromError(ERROR_DISK_FULL));
    EXPECT_EQ(ends.source.sizes.size(), 1U) << "nothing is read any more";
}

TEST_F(CopyThroughStreamsTest, AFailedWriteEndsIt)
{
    Put(2 * piece);
    for (const CopyEvent event :
         {CopyEvent{StatusFromError(busy), piece}, {StatusFromError(busy), 0}})
    {
        ends.source.sizes.clear();
        ends.target.sizes.clear();
        ends.target.events = {event};
        EXPECT_EQ(Copy(), StatusFromError(busy));
        EXPECT_EQ(ends.source.sizes.size(), 1U);
    }
}

TEST_F(CopyThroughStreamsTest, AFailedReadEndsItWhateverItReadBefore)
{
    Put(2 * piece);
    for (const ULONG missing : {piece, ULONG{10}})
    {
        ends.source.sizes.clear();
        ends.target.sizes.clear();
        ends.source.events = {{}, {StatusFromError(busy), missing}};
        EXPECT_EQ(Copy(), StatusFromError(busy));
        EXPECT_EQ(ends.target.sizes.size(), 1U);
    }
}

TEST_F(CopyThroughStreamsTest, ASuccessOfAnotherKindEndsItAndStands)
{
    Put(2 * piece);
    ends.target.events = {{S_FALSE, 0}};
    EXPECT_EQ(Copy(), S_FALSE);
    EXPECT_EQ(ends.source.sizes.size(), 1U);
}

TEST_F(CopyThroughStreamsTest, AnEndThatIsNotToBeHadEndsIt)
{
    Put(3);
    const HRESULT failed = StatusFromError(busy);
    for (HRESULT CopyEnd::*const step : {&CopyEnd::find, &CopyEnd::open})
    {
        for (CopyEnd* const end : {&ends.source, &ends.target})
        {
            end->*step = failed;
            EXPECT_EQ(Copy(), failed);
            end->*step = S_OK;
        }
    }
    EXPECT_EQ(ends.target.sizes.size(), 0U);
}

TEST_F(CopyThroughStreamsTest, TheTargetStaysClosedUnlessTheSourceOpens)
{
    ends.source.open = E_FAIL;
    EXPECT_EQ(Copy(), E_FAIL);
    EXPECT_THAT(ends.target.calls, ElementsAre(u"to:s may exist"));
    ends.target.calls.clear();
    ends.source.find = E_FAIL;
    EXPECT_EQ(Copy(), E_FAIL);
    EXPECT_THAT(ends.target.calls, ElementsAre());
}

TEST_F(CopyThroughStreamsTest, StreamsWithoutDataAreRefused)
{
    ends.source.hasData = false;
    EXPECT_EQ(Copy(), E_NOINTERFACE);
    ends.source.hasData = true;
    ends.target.hasData = false;
    EXPECT_EQ(Copy(), E_NOINTERFACE);
}

} // namespace

} // namespace tarnwell::test
