// What Mercurial prints of a history, in any pieces.
#include "mercurial/hghistoryparser.h"

#include "mercurial/hghistory.h"
#include "mercurial/hgnames.h"
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
    const std::string bytes =
        idA + " 7 1000000000 -7200 3 12 1\nAnntitle\n\0\n!\n\0x"s + idB + " 0 -100 0 0 0 0\n";
    for (const std::size_t piece : {1U, 2U, 5U, 33U, 1000U})
    {
        const auto [changes, isComplete] = ChangesInPieces(bytes, piece);
        ASSERT_EQ(changes.size(), 2U) << piece;
        EXPECT_TRUE(isComplete);
        EXPECT_EQ(changes[0].id, idA);
        EXPECT_EQ(changes[0].time, 126444736000000000U);
        EXPECT_EQ(changes[0].author, "Ann");
        EXPECT_EQ(changes[0].description, "title\n\0\n!\n\0x"s);
        EXPECT_EQ(changes[0].number, 7U);
        EXPECT_TRUE(changes[0].hasPath);
        EXPECT_FALSE(changes[1].hasPath);
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
         {idA + " 5 1 0 0 0\n", idA + " 5 1 0 0 0 0 0\n", idA + " 5 1 0 -1 0 0\n",
          idA + " 5 1 0 x 0 0\n", idA + " 5 1 0  0 0\n", "x" + idA.substr(1) + " 5 1 0 0 0 0\n",
          idA.substr(1) + " 5 1 0 0 0 0\n", "\n"s, idA + " 5 1 0 99999999999999999999 0 0\n",
          idA + " 5 1 0 0 0 2\n", idA + " 5 1 0 0 0 \n", idA + " -5 1 0 0 0 1\n"})
    {
        const auto [changes, isComplete] = ChangesInPieces(bad + idA + " 5 1 0 0 0 0\n", 1000);
        EXPECT_TRUE(changes.empty()) << bad;
        EXPECT_FALSE(isComplete) << bad;
    }
}

TEST(HgHistoryParser, ReadsNoChangeBeyondItsBound)
{
    const std::string bytes = idA + " 5 1 0 3 100 1\nAnn" + std::string(100, 'x');
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

TEST(HgNames, VersionsAreRead)
{
    const std::string a(12, 'a');
    const std::string b(12, 'b');
    const std::string none(12, '0');
    const auto versions =
        ReadHgVersions("   rev linkrev       nodeid    p1-nodeid    p2-nodeid\n     0       3 " +
                       a + " " + none + " " + none + "\n 1 0 17 2 4 " + b + " " + a + " " + none +
                       "\n2 5 " + a + " " + none + " " + b + "\n");
    ASSERT_TRUE(versions);
    ASSERT_EQ(versions->size(), 3U);
    EXPECT_EQ((*versions)[0].revision, 3U);
    EXPECT_EQ((*versions)[0].id, a);
    EXPECT_TRUE((*versions)[0].mayBeCopy);
    EXPECT_THAT((*versions)[0].parents, testing::IsEmpty());
    EXPECT_EQ((*versions)[1].revision, 4U);
    EXPECT_FALSE((*versions)[1].mayBeCopy);
    EXPECT_THAT((*versions)[1].parents, ElementsAre(a));
    EXPECT_TRUE((*versions)[2].mayBeCopy);
    EXPECT_THAT((*versions)[2].parents, ElementsAre(b));
    EXPECT_TRUE(ReadHgVersions("headings\n")->empty());
    for (const std::string& bad :
         {""s, "headings"s, "h\n\n"s, "h\n0 3 " + a + " " + none + " " + none,
          "h\n0 3 " + a + " " + none + "\n", "h\n0 -3 " + a + " " + none + " " + none + "\n",
          "h\n0 3 " + a + " " + none + " " + none + "0\n",
          "h\n0 3 x" + a.substr(1) + " " + none + " " + none + "\n"})
        EXPECT_FALSE(ReadHgVersions(bad)) << bad;
}

TEST(HgNames, OriginsAreRead)
{
    const auto origin = ReadHgOrigin("b: c renamed from d: e renamed from f:" + idA + "\n", 4);
    ASSERT_TRUE(origin);
    EXPECT_EQ(origin->name, "d: e renamed from f");
    EXPECT_EQ(origin->id, idA.substr(0, 12));
    EXPECT_EQ(ReadHgOrigin("b: c not renamed\n", 4)->name, "");
    for (const std::string& bad :
         {""s, "b: c"s, "b: c\n"s, "b: c not renamed"s, "b: c renamed from a:" + idA,
          "b: c renamed from a:" + idA.substr(1) + "\n", "b: c renamed from :" + idA + "\n",
          "b: c renamed from ../a:" + idA + "\n", "b: c renamed from /a:" + idA + "\n",
          "b: cd renamed from a:" + idA + "\n", "b: c renamed from:" + idA + "\n"})
        EXPECT_FALSE(ReadHgOrigin(bad, 4)) << bad;
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
