// Copying files: what links come to.
#include "platform/posix/copyhere.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

TEST_F(CopyHere, LinksAreFollowedAtBothEnds)
{
    WriteBytes(folder_ / u"from", "new");
    WriteBytes(folder_ / u"to", "old");
    fs::create_symlink("from", source_);
    fs::create_symlink("to", target_);
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_TRUE(fs::is_symlink(target_));
    EXPECT_EQ(ReadBytes(folder_ / u"to"), "new");
}

TEST_F(CopyHere, BehindALinkTheHalfFileGoesAndTheLinkStays)
{
    WriteBytes(source_, "new");
    Progress progress;
    progress.answer = [](int n) {
        return n == 1 ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
    };
    fs::create_symlink("to", target_);
    for (const bool wasThere : {true, false})
    {
        if (wasThere)
            WriteBytes(folder_ / u"to", "old");
        progress.questions = 0;
        EXPECT_EQ(Copy(0, &progress), ERROR_REQUEST_ABORTED);
        EXPECT_TRUE(fs::is_symlink(target_));
        EXPECT_FALSE(fs::exists(folder_ / u"to"));
    }
}

TEST_F(CopyHere, ALinkWithoutATargetGetsOne)
{
    WriteBytes(source_, "new");
    fs::create_symlink("to", target_);
    EXPECT_EQ(Copy(COPY_FILE_FAIL_IF_EXISTS), ERROR_FILE_EXISTS);
    EXPECT_EQ(Copy(), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(folder_ / u"to"), "new");
}

TEST_F(CopyHere, ALinkCanBeCopiedAsALink)
{
    fs::create_symlink("nowhere", source_);
    EXPECT_EQ(Copy(), ERROR_FILE_NOT_FOUND);
    for (const bool replaces : {false, true})
    {
        if (replaces)
        {
            fs::remove(target_);
            WriteBytes(target_, "old");
        }
        EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
        EXPECT_EQ(fs::read_symlink(target_), "nowhere");
    }
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS) << "over another link";
    EXPECT_EQ(LinkFacts(target_).st_mtim.tv_sec, LinkFacts(source_).st_mtim.tv_sec);
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK | COPY_FILE_FAIL_IF_EXISTS), ERROR_FILE_EXISTS);
    EXPECT_EQ(ErrorOfCopy(source_, source_, COPY_FILE_COPY_SYMLINK), ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(fs::is_symlink(source_));
    EXPECT_EQ(ErrorOfCopy(source_, folder_.Text(), COPY_FILE_COPY_SYMLINK), ERROR_ACCESS_DENIED);
}

TEST_F(CopyHere, ALinkDoesNotTakeThePlaceOfWhatItLeadsTo)
{
    WriteBytes(target_, "mine");
    fs::create_symlink("target", source_);
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ReadBytes(target_), "mine");
    EXPECT_TRUE(fs::is_symlink(source_));
}

TEST_F(CopyHere, ALinkToAFolderIsAFolderUnlessItIsCopiedAsALink)
{
    fs::create_directory(folder_ / u"sub");
    WriteBytes(Joined(folder_ / u"sub", u"file"), "kept");
    fs::create_symlink("sub", source_);
    EXPECT_EQ(Copy(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
    EXPECT_EQ(fs::read_symlink(target_), "sub");
    EXPECT_EQ(ReadBytes(Joined(folder_ / u"sub", u"file")), "kept");
}

TEST_F(CopyHere, TheFlagForLinksMeansNothingToFiles)
{
    WriteBytes(source_, "a");
    EXPECT_EQ(Copy(COPY_FILE_COPY_SYMLINK), ERROR_SUCCESS);
    EXPECT_EQ(ReadBytes(target_), "a");
}

} // namespace
} // namespace tarnwell::test
