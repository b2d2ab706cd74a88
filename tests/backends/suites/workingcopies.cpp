// What systems have in common whose addresses name files of a working copy, for which the client
// looks for a repository around them.
#include "backends/suites/backendtest.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{
namespace
{

using testing::IsEmpty;

class WorkingCopies : public BackendTest
{
protected:
    std::u16string OnDisk(std::u16string_view name) const
    {
        return TheSample().data->OnDisk(name).u16string();
    }
};

TEST_P(WorkingCopies, PathsAndAddressesAreAskedAlike)
{
    EXPECT_EQ(Revisions(OnDisk(u"text.txt")).size(), 3U);
    EXPECT_EQ(Revisions(Address(u"text.txt", u"abc")).size(), 3U);
}

TEST_P(WorkingCopies, TheLatestCommitIsReadAndNotTheFile)
{
    const auto data = NewData();
    data->Put(u"a.txt", "committed");
    WriteBytes(data->OnDisk(u"a.txt").u16string(), "changed");
    EXPECT_EQ(Content(data->Address(u"a.txt")), "committed");
}

TEST_P(WorkingCopies, AMarkerInAFoldersNameDoesNoHarmInFrontOfARevision)
{
    const auto data = NewData();
    const std::u16string revision = data->Put(u"x#y/a.txt", "bytes");
    const std::u16string address = data->Address(u"x#y/a.txt", revision);
    EXPECT_EQ(Content(address), "bytes");
    const auto list = Revisions(address);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].uri, data->OnDisk(u"x#y/a.txt").u16string());
    EXPECT_EQ(list[1].uri, address);
    EXPECT_THAT(Revisions(data->Address(u"x#y/a.txt")), IsEmpty());
}

TEST_P(WorkingCopies, AFolderHasNoHistory)
{
    const auto data = NewData();
    data->Put(u"sub/a.txt", "1");
    EXPECT_FALSE(HasRevisions(data->Address(u"sub")));
    EXPECT_THAT(Revisions(data->Address(u"sub")), IsEmpty());
}

TEST_P(WorkingCopies, WithoutHistoryThereIsNoWorkingCopyEither)
{
    const auto data = NewData();
    data->Put(u"a.txt", "1");
    WriteBytes(data->OnDisk(u"untracked.txt").u16string(), "x");
    EXPECT_THAT(Revisions(data->Address(u"untracked.txt")), IsEmpty());
    const TempFolder outside;
    WriteBytes(outside / u"a.txt", "x");
    EXPECT_FALSE(HasRevisions(outside / u"a.txt"));
}

// The client doesn't work in the host's folder.
TEST_P(WorkingCopies, RelativePathsDoNotOpenNorList)
{
    const std::u16string address = Address(u"text.txt");
    const std::u16string scheme = address.substr(0, address.find(u"//") + 2);
    const CurrentFolder inside(TheSample().data->OnDisk(u"text.txt").parent_path());
    FailedOpen(scheme + u"text.txt");
    EXPECT_THAT(Revisions(scheme + u"text.txt"), IsEmpty());
    EXPECT_THAT(Revisions(u"text.txt"), IsEmpty());
}

// The client would load what stands in a folder's settings, run an alias, or write a file.
TEST_P(WorkingCopies, WhatTheClientWouldReadAsAnOptionIsRefusedBeforeItStarts)
{
    const std::u16string file = Address(u"text.txt");
    const std::u16string scheme = file.substr(0, file.find(u"//") + 2);
    const EnvironmentValue path("PATH", "nowhere");
    const std::string name = Row().name;
    for (const std::u16string& address :
         {file + u"#--output=x", file + u"#--config=alias.cat=!touch x", file + u"#--",
          file + u"#-p", file + u"#-R/other", file + u"#-", scheme + u"--output=x/a.txt",
          scheme + u"--config=alias.cat=!touch x", scheme + u"-R/other#1"})
    {
        const Outcome outcome = FailedOpen(address);
        EXPECT_EQ(outcome.status, E_INVALIDARG);
        ASSERT_TRUE(outcome.error);
        EXPECT_TRUE(outcome.error->text.starts_with(
            u"Invalid " + std::u16string(name.begin(), name.end()) + u" URI \"" + address + u"\"."))
            << std::filesystem::path(outcome.error->text);
    }
    EXPECT_THAT(Revisions(scheme + u"--output=x/a.txt"), IsEmpty());
    EXPECT_THAT(Revisions(scheme + u"--config=alias.log=!touch x"), IsEmpty());
}

TEST_P(WorkingCopies, ErrorTextFailsTheOpening)
{
    const std::u16string address = Address(u"none.txt");
    const Outcome outcome = FailedOpen(address);
    EXPECT_EQ(outcome.status, E_FAIL);
    ASSERT_TRUE(outcome.error);
    const std::u16string text = WithoutLine(WithLineFeeds(outcome.error->text));
    EXPECT_TRUE(text.starts_with(u"An error occurred while accessing \"" + address + u"\"\n\n"));
    EXPECT_TRUE(text.ends_with(Position()));
    EXPECT_NE(text.find(u"none.txt", address.size() + 36), std::u16string::npos)
        << "the client's own words";
}

bool HasWorkingFolder(const Backend& backend)
{
    return backend.workingCopy == WorkingCopy::Description;
}

TARNWELL_OVER_BACKENDS(WorkingCopies, BackendsThat(HasWorkingFolder));

} // namespace
} // namespace tarnwell::test
