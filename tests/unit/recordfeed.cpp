// The parts of a running client's records, as they come.
#include "runner/feed.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

TEST(RecordFeed, GivesTextsAndBytesOnceTheyAreWhole)
{
    RecordFeed feed;
    EXPECT_FALSE(feed.TakeTo(';'));
    feed.Add("ab");
    EXPECT_FALSE(feed.TakeTo(';'));
    EXPECT_FALSE(feed.TakeTo(';'));
    feed.Add("c;d;;12");
    EXPECT_EQ(feed.TakeTo(';'), "abc");
    EXPECT_EQ(feed.First(), 'd');
    EXPECT_EQ(feed.TakeTo(';'), "d");
    EXPECT_EQ(feed.TakeTo(';'), "");
    EXPECT_FALSE(feed.Take(3));
    EXPECT_EQ(feed.Take(0), "");
    feed.Add("3");
    EXPECT_EQ(feed.Take(3), "123");
    EXPECT_FALSE(feed.First());
    EXPECT_FALSE(feed.Take(UINT64_MAX));
}

TEST(RecordFeed, IsCompleteBetweenRecords)
{
    RecordFeed feed;
    EXPECT_TRUE(feed.IsComplete());
    feed.Add("a;b;");
    EXPECT_FALSE(feed.IsComplete());
    feed.TakeTo(';');
    feed.TakeTo(';');
    EXPECT_FALSE(feed.IsComplete());
    feed.EndRecord();
    EXPECT_TRUE(feed.IsComplete());
}

TEST(RecordFeed, ReadsNothingBehindWhatIsNone)
{
    RecordFeed feed;
    feed.Add("a;b;c;");
    EXPECT_EQ(feed.TakeTo(';'), "a");
    feed.Break();
    feed.EndRecord();
    feed.Add("d;");
    EXPECT_FALSE(feed.TakeTo(';'));
    EXPECT_FALSE(feed.Take(0));
    EXPECT_FALSE(feed.First());
    EXPECT_FALSE(feed.IsComplete());
}

// A record is too large as soon as that is seen, in how many pieces it comes, and in how many
// parts.
TEST(RecordFeed, ReadsNoRecordBeyondItsBound)
{
    for (const std::size_t piece : {1U, 3U, 100U})
    {
        for (const std::string record : {"1234567;", "123;567;", ";;;;;;;;"})
        {
            for (const std::size_t most : {7U, 8U})
            {
                RecordFeed feed(most);
                std::size_t taken = 0;
                const std::string bytes = record + record;
                for (std::size_t at = 0; at < bytes.size(); at += piece)
                {
                    feed.Add(std::string_view(bytes).substr(at, piece));
                    while (const auto text = feed.TakeTo(';'))
                    {
                        taken += text->size() + 1;
                        if (taken % record.size() == 0)
                            feed.EndRecord();
                    }
                }
                EXPECT_EQ(feed.IsComplete(), most == 8) << record << piece;
                EXPECT_EQ(taken == bytes.size(), most == 8) << record << piece;
                EXPECT_EQ(feed.IsBroken(), most == 7);
            }
        }
    }
}

// Were all that waits looked at again with each byte, this would take minutes.
TEST(RecordFeed, LooksAtNothingTwice)
{
    RecordFeed feed;
    constexpr std::size_t size = std::size_t{1024} * 1024;
    for (std::size_t i = 0; i < size; ++i)
    {
        feed.Add("x");
        ASSERT_FALSE(feed.TakeTo('\0'));
    }
    feed.Add(std::string(1, '\0'));
    EXPECT_EQ(feed.TakeTo('\0')->size(), size);
}

} // namespace
} // namespace tarnwell::test
