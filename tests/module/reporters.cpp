// The interface that the error information names is the one that was called.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

class Reporters : public LocalTest
{
};

TEST_F(Reporters, OfAFolderThatWouldReplaceAFile)
{
    const std::u16string path = folder / u"later";
    const auto item = NewFolder(path);
    Put(u"later");
    const Outcome outcome = OutcomeOf([&] { return item->Create(VARIANT_TRUE); });
    EXPECT_THAT(outcome,
                Failed(Win32Status(183),
                       u"Unable to replace an existing file with a new folder \"" + path + u"\"."));
    EXPECT_THAT(outcome, NamesInterface(IID_IFolder));
}

TEST_F(Reporters, OfATimeThatIsNotSet)
{
    const auto item = NewFile(folder / u"missing").As<IFileSystemItemExt>();
    EXPECT_THAT(OutcomeOf([&] { return item->SetModifiedTime(1000000000); }),
                NamesInterface(IID_IFileSystemItemExt));
}

TEST_F(Reporters, OfNullPointers)
{
    const auto revisions = system.As<IFileSystemRevisions>();
    EXPECT_THAT(OutcomeOf([&] { return revisions->HasRevisions(Ole(u"a"), 0, nullptr); }),
                NamesInterface(IID_IFileSystemRevisions));
    EXPECT_THAT(OutcomeOf([&] { return revisions->GetRevisions(Ole(u"a"), 0, nullptr); }),
                NamesInterface(IID_IFileSystemRevisions));
    const auto archive = Open(Put(u"a.txt")).As<ILib7zInStream>();
    EXPECT_THAT(OutcomeOf([&] { return archive->Read(nullptr, 0, nullptr); }),
                NamesInterface(IID_ISequentialStream))
        << "deliberate: the archive's views claim no error information of their own";
}

} // namespace

} // namespace tarnwell::test
