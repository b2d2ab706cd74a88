// What is compared of two items, by what they are.
#include "comparison.h"
#include "support/loadedmodule.h"

#include <gtest/gtest.h>

#include <utility>

namespace tarnwell::host
{

namespace
{

// An item that is what the test wants.
struct Item
{
    bool folder = false;
    bool repository = false;
    bool link = false;
    bool inTree = false;
    // What is read, and for a link outside of trees the path it leads to.
    std::string content{};
    std::string path{};
    std::u16string id{};
    bool unreadable = false;
    // What the tree's system would record it as.
    std::u16string recordedId{};
    // How the system converts it on its way to a disk.
    bool keywords = false;
    bool lineEnds = false;
    // Whether what is above is told only where it is asked for alone: a list shows a plain file.
    bool listed = false;
};

class FakeSide final : public Side
{
public:
    explicit FakeSide(const Item& item)
        : item_(item.listed ? Item{.inTree = item.inTree, .content = item.content} : item),
          inFull_(item)
    {
    }

    std::u16string PairingName() const override
    {
        return u"name";
    }
    std::u16string Name() const override
    {
        return u"name";
    }
    bool IsFile() const override
    {
        return !item_.folder && !item_.repository;
    }
    bool IsFolder() const override
    {
        return item_.folder;
    }
    bool IsRepository() const override
    {
        return item_.repository;
    }
    bool IsLink() const override
    {
        return item_.link;
    }
    bool IsInTree() const override
    {
        return item_.inTree;
    }
    bool HasKeywords() const override
    {
        return item_.keywords;
    }
    bool HasOtherLineEnds() const override
    {
        return item_.lineEnds;
    }
    std::unique_ptr<Side> InFull() const override
    {
        Item item = inFull_;
        if (!std::exchange(item.listed, false))
            return nullptr;
        return std::make_unique<FakeSide>(item);
    }
    std::optional<std::uint64_t> Size() const override
    {
        return IsFile() ? std::optional<std::uint64_t>(item_.content.size()) : std::nullopt;
    }
    std::u16string Path() const override
    {
        return item_.recordedId;
    }
    bool IsRecordOf(const Side& file) const override
    {
        return !item_.id.empty() && item_.id == file.Path();
    }
    std::u16string ContentId() const override
    {
        return item_.id;
    }
    Reader Open() const override
    {
        if (item_.unreadable)
            throw Failure{E_FAIL, u"unreadable"};
        return Reader(item_.content);
    }
    Reader OpenPath() const override
    {
        return Reader(item_.path);
    }
    std::vector<std::unique_ptr<Side>> Inside(const Fail&) const override
    {
        return {};
    }

private:
    const Item item_;
    const Item inFull_;
};

struct Case
{
    const char* what;
    Item left;
    Item right;
    Verdict verdict;
};

// The right one is what lies on the disk, where only one is of a tree.
const Case cases[] = {
    {"files", {.content = "a"}, {.content = "a"}, Verdict::Equal},
    {"other files", {.content = "a"}, {.content = "b"}, Verdict::Different},
    {"a file and a folder", {.content = "a"}, {.folder = true}, Verdict::KindDiffers},
    {"folders", {.folder = true}, {.folder = true, .link = true}, Verdict::Equal},
    {"links to files, followed",
     {.link = true, .content = "a", .path = "x"},
     {.link = true, .content = "a", .path = "y"},
     Verdict::Equal},
    {"a link and a file, followed",
     {.link = true, .content = "a"},
     {.content = "a"},
     Verdict::Equal},
    {"one content by its id",
     {.inTree = true, .content = "a", .id = u"1", .unreadable = true},
     {.inTree = true, .content = "a", .id = u"1", .unreadable = true},
     Verdict::Equal},
    {"one content by two ids",
     {.inTree = true, .content = "a", .id = u"1"},
     {.inTree = true, .content = "a", .id = u"2"},
     Verdict::Equal},
    {"links by their paths",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x"},
     {.link = true, .content = "what is there", .path = "to/x"},
     Verdict::Equal},
    {"links to elsewhere",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x"},
     {.link = true, .content = "to/x", .path = "to/y"},
     Verdict::Different},
    {"a link to a folder by its path",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x"},
     {.folder = true, .link = true, .path = "to/x"},
     Verdict::Equal},
    {"a link whose path stands in a file",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x"},
     {.content = "to/x"},
     Verdict::Equal},
    {"a file that became a link",
     {.inTree = true, .content = "a"},
     {.link = true, .content = "a", .path = "x"},
     Verdict::LinkDiffers},
    {"a folder that became a link to one",
     {.folder = true, .inTree = true},
     {.folder = true, .link = true},
     Verdict::LinkDiffers},
    {"a link and a file of two revisions",
     {.link = true, .inTree = true, .content = "x", .path = "x"},
     {.inTree = true, .content = "x"},
     Verdict::LinkDiffers},
    {"a link and a folder",
     {.link = true, .inTree = true, .content = "x", .path = "x"},
     {.folder = true},
     Verdict::KindDiffers},
    {"repositories",
     {.repository = true, .inTree = true, .id = u"1"},
     {.repository = true, .inTree = true, .id = u"1"},
     Verdict::Equal},
    {"repositories at two revisions",
     {.repository = true, .inTree = true, .id = u"1"},
     {.repository = true, .inTree = true, .id = u"2"},
     Verdict::Different},
    {"a repository and its folder",
     {.repository = true, .inTree = true, .id = u"1"},
     {.folder = true},
     Verdict::Equal},
    {"a repository and a file",
     {.repository = true, .inTree = true, .id = u"1"},
     {.content = "x"},
     Verdict::KindDiffers},
    {"keywords that were filled in",
     {.inTree = true, .content = "$Id$ x", .keywords = true},
     {.content = "$Id: a 5 ann $ x"},
     Verdict::Equal},
    {"keywords and more",
     {.inTree = true, .content = "$Id$ x", .keywords = true},
     {.content = "$Id: a 5 ann $ y"},
     Verdict::Different},
    {"what looks like keywords",
     {.inTree = true, .content = "$Id$ x", .lineEnds = true},
     {.content = "$Id: a 5 ann $ x"},
     Verdict::Different},
    {"keywords of two revisions",
     {.inTree = true, .content = "$Id$ x", .keywords = true},
     {.inTree = true, .content = "$Id: a$ x", .keywords = true},
     Verdict::Different},
    {"ends of lines",
     {.inTree = true, .content = "a\nb\n", .lineEnds = true},
     {.content = "a\r\nb\r\n"},
     Verdict::Equal},
    {"ends of lines that nobody converts",
     {.inTree = true, .content = "a\nb\n", .keywords = true},
     {.content = "a\r\nb\r\n"},
     Verdict::Different},
    {"keywords that a list doesn't tell of",
     {.inTree = true, .content = "$Id$", .keywords = true, .listed = true},
     {.content = "$Id: a $"},
     Verdict::Equal},
    {"a link that a list doesn't tell of",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x", .listed = true},
     {.link = true, .content = "what is there", .path = "to/x"},
     Verdict::Equal},
    {"a link to a folder that a list doesn't tell of",
     {.link = true, .inTree = true, .content = "to/x", .path = "to/x", .listed = true},
     {.folder = true, .link = true, .path = "to/x"},
     Verdict::Equal},
    {"what the system would record as the same",
     {.inTree = true, .content = "a", .id = u"1"},
     {.content = "wide", .recordedId = u"1"},
     Verdict::Equal},
    {"what the system would record as something else",
     {.inTree = true, .content = "a", .id = u"1"},
     {.content = "b", .recordedId = u"2"},
     Verdict::Different},
    {"what the system wouldn't record",
     {.inTree = true, .content = "a"},
     {.content = "b"},
     Verdict::Different},
    {"what would be recorded, of two revisions",
     {.inTree = true, .content = "a", .id = u"1", .recordedId = u"2"},
     {.inTree = true, .content = "b", .id = u"2", .recordedId = u"1"},
     Verdict::Different},
    {"what would be recorded, of two files",
     {.content = "a", .id = u"1", .recordedId = u"2"},
     {.content = "b", .id = u"2", .recordedId = u"1"},
     Verdict::Different},
    {"what would be recorded as a link's path",
     {.link = true, .inTree = true, .content = "x", .path = "x", .id = u"1"},
     {.content = "y", .recordedId = u"1"},
     Verdict::Different},
};

TEST(Comparison, GoesByWhatTheItemsAre)
{
    for (const Case& row : cases)
    {
        for (const bool trustsSizes : {true, false})
        {
            const FakeSide left(row.left);
            const FakeSide right(row.right);
            EXPECT_EQ(CompareItems(left, right, trustsSizes).verdict, row.verdict) << row.what;
            EXPECT_EQ(CompareItems(right, left, trustsSizes).verdict, row.verdict)
                << row.what << ", turned round";
        }
    }
}

TEST(Comparison, ReadsNothingWhereSizesSayEnough)
{
    const FakeSide left({.content = "a", .unreadable = true});
    const FakeSide right({.content = "ab", .unreadable = true});
    EXPECT_EQ(CompareItems(left, right, true).verdict, Verdict::Different);
    EXPECT_THROW(CompareItems(left, right, false), Failure);
}

} // namespace

} // namespace tarnwell::host
