// What Mercurial prints of a history, in any pieces.
#include "mercurial/hghistoryparser.h"

#include "mercurial/hghistory.h"
#include "mercurial/hgrevision.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{
namespace
{

using namespace std::literals;
using testing::ElementsAre;

const std::string idA(40, 'a');
const std::string idB(40, 'b');

struct ParsedChanges
{
    std::vector<HgChange> changes;
    bool isComplete;
};

ParsedChanges ChangesInPieces(const std::string& bytes, std::size_t piece)
{
    HgHistoryParser parser;
    ParsedChanges parsed{};
    for (std::size_t at = 0; at < bytes.size(); at += piece)
    {
        parser.Feed(std::string_view(bytes).substr(at, piece));
        while (std::optional<HgChange> change = parser.Next())
            parsed.changes.push_back(std::move(*change));
    }
    parsed.isComplete = parser.IsComplete();
    return parsed;
}

TEST(HgHistoryParser, ReadsChangesInPiecesOfAnySize)
{
    const std::string bytes = idA + " 1000000000 -7200 3 12 2 1\nAnntitle\n\0\n!\n\0x"s +
                              "a.txt\0b/c d\0b/c d\0a.txt\0"s + idB + " -100 0 0 0 0 0\n";
    for (const std::size_t piece : {1U, 2U, 5U, 33U, 1000U})
    {
        const auto [changes, isComplete] = ChangesInPieces(bytes, piece);
        ASSERT_EQ(changes.size(), 2U) << piece;
        EXPECT_TRUE(isComplete);
        EXPECT_EQ(changes[0].id, idA);
        EXPECT_EQ(changes[0].time, 126444736000000000U);
        EXPECT_EQ(changes[0].author, "Ann");
        EXPECT_EQ(changes[0].description, "title\n\0\n!\n\0x"s);
        EXPECT_THAT(changes[0].files, ElementsAre("a.txt", "b/c d"));
        EXPECT_THAT(changes[0].copies, ElementsAre(std::pair{"b/c d"s, "a.txt"s}));
        EXPECT_EQ(changes[1].id, idB);
        EXPECT_EQ(changes[1].time, 116444736000000000U - 1'000'000'000U);
        EXPECT_EQ(changes[1].description, "");
    }
    for (std::size_t size = 1; size < bytes.size(); ++size)
        EXPECT_EQ(ChangesInPieces(bytes.substr(0, size), 7).isComplete,
                  size == bytes.size() - idB.size() - 16)
            << size;
}

TEST(HgHistoryParser, StopsAtWhatIsNone)
{
    for (const std::string& bad :
         {idA + " 1 0 0 0 0\n", idA + " 1 0 0 0 0 0 0\n", idA + " 1 0 -1 0 0 0\n",
          idA + " 1 0 x 0 0 0\n", idA + " 1 0  0 0 0\n", "x" + idA.substr(1) + " 1 0 0 0 0 0\n",
          idA.substr(1) + " 1 0 0 0 0 0\n", "\n"s, idA + " 1 0 99999999999999999999 0 0 0\n",
          idA + " 1 0 0 18446744073709551615 0 0\nx", idA + " 1 0 0 0 0 1\np\0../a\0"s,
          idA + " 1 0 0 0 0 1\np\0/a\0"s})
    {
        const auto [changes, isComplete] = ChangesInPieces(bad + idA + " 1 0 0 0 0 0\n", 1000);
        EXPECT_TRUE(changes.empty()) << bad;
        EXPECT_FALSE(isComplete) << bad;
    }
}

TEST(HgHistoryParser, ReadsNoChangeBeyondItsBound)
{
    const std::string bytes = idA + " 1 0 3 100 1 1\nAnn" + std::string(100, 'x') + "a\0b\0c\0"s;
    for (const std::size_t most : {bytes.size() - 1, bytes.size()})
    {
        for (const std::size_t piece : {std::size_t{1}, bytes.size(), 2 * bytes.size()})
        {
            HgHistoryParser parser(most);
            std::size_t found = 0;
            const std::string all = bytes + bytes;
            for (std::size_t at = 0; at < all.size(); at += piece)
            {
                parser.Feed(std::string_view(all).substr(at, piece));
                while (parser.Next())
                    ++found;
            }
            EXPECT_EQ(found, most == bytes.size() ? 2U : 0U);
            EXPECT_EQ(parser.IsComplete(), most == bytes.size());
        }
    }
}

HgChange Changing(std::vector<std::string> files,
                  std::vector<std::pair<std::string, std::string>> copies = {})
{
    HgChange change;
    change.files = std::move(files);
    change.copies = std::move(copies);
    return change;
}

TEST(HgNames, AreLearntFromCopies)
{
    HgNames names("c");
    EXPECT_EQ(names.NameIn(Changing({"c", "x"})), "c");
    EXPECT_EQ(names.NameIn(Changing({"b", "x"})), std::nullopt);
    EXPECT_EQ(names.NameIn(Changing({"b", "c"}, {{"x", "y"}, {"c", "b"}})), "c");
    EXPECT_EQ(names.NameIn(Changing({"b", "x"})), "b");
    EXPECT_EQ(names.NameIn(Changing({"a", "b"}, {{"b", "a"}})), "b");
    EXPECT_EQ(names.NameIn(Changing({"a", "b", "c"})), "a");
    // On another line the later name may still be the one.
    EXPECT_EQ(names.NameIn(Changing({"c"})), "c");
    EXPECT_EQ(names.Latest(), "c");
}

TEST(HgHistory, AsksForWhatIsWanted)
{
    HistoryOptions options{};
    const std::string all = "reverse(ancestors(\"ab\"))";
    EXPECT_EQ(HgRevisions({"ab", "", ""}, options), all);
    EXPECT_EQ(HgRevisions({"ab", "a.b", ""}, options), all + " and file(\"path\\x3aa\\x2eb\")");
    EXPECT_EQ(HgRevisions({"ab", "x", "cd"}, options),
              all + " and (file(\"path\\x3ax\") or follow(\"path\\x3ax\", \"cd\"))");
    options.skip = 7;
    EXPECT_EQ(HgRevisions({"ab", "", ""}, options), all);
    options.count = UINT32_MAX;
    options.since = 126444736000000000U;
    options.until = 126444736019999999U;
    EXPECT_EQ(HgRevisions({"ab", "", ""}, options),
              "limit(" + all + " and date(\">1000000000 0\") and date(\"<1000000001 0\"), " +
                  "2147483647, 7)");
    options = {};
    options.since = 1;
    options.until = UINT64_MAX;
    EXPECT_EQ(HgRevisions({"ab", "", ""}, options),
              all + " and date(\">-2147483647 0\") and date(\"<2147483647 0\")");
    options.since = UINT64_MAX;
    options.until = 1;
    EXPECT_EQ(HgRevisions({"ab", "", ""}, options), all + " and none() and none()");
}

TEST(HgRevision, IsRead)
{
    const auto revisions = ReadHgRevisions(idA + " 1000000000 0 1 1\n" + idB + " 0 0 0 1\n");
    ASSERT_TRUE(revisions);
    ASSERT_EQ(revisions->size(), 2U);
    EXPECT_EQ((*revisions)[0].id, idA);
    EXPECT_EQ((*revisions)[0].time, 126444736000000000U);
    EXPECT_TRUE((*revisions)[0].isFile);
    EXPECT_FALSE((*revisions)[1].isFile);
    EXPECT_TRUE((*revisions)[1].isThere);
    EXPECT_TRUE(ReadHgRevisions("")->empty());
    for (const std::string& bad : {idA + " 1 0 1 1", idA + " 1 0 1\n", "x 1 0 1 1\n"s, "\n"s})
        EXPECT_FALSE(ReadHgRevisions(bad)) << bad;
}

} // namespace
} // namespace tarnwell::test
