// Git on Windows paths, and what the client's run gets there.
#include "module/gittest.h"
#include "support/windows/recording.h"

#include <tarnwell/text.h>

#include <windows.h>

namespace tarnwell::test
{

namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::StartsWith;

std::vector<std::string> OwnEnvironment()
{
    std::vector<std::string> entries;
    wchar_t* const block = GetEnvironmentStringsW();
    for (std::wstring_view entry(block); !entry.empty();
         entry = std::wstring_view(entry.data() + entry.size() + 1))
        entries.push_back(Bytes(std::u16string(entry.begin(), entry.end())));
    FreeEnvironmentStringsW(block);
    return entries;
}

// A drive whose root is the folder. Only the other side of the relay can make one under Wine.
class Drive
{
public:
    explicit Drive(const TempFolder& folder) : root_(folder.Path())
    {
        RunClient("git", {"-c", "alias.link=!ln -sfn", "link", Bytes(folder.Text()), link_}, root_);
    }
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;
    ~Drive()
    {
        RunClient("git", {"-c", "alias.unlink=!rm -f", "unlink", link_}, root_);
    }

private:
    std::filesystem::path root_;
    std::string link_ = EnvironmentValue::Of("WINEPREFIX").value() + "/dosdevices/r:";
};

TEST_F(Git, TheLogIsAskedInTheFilesFolder)
{
    repository.Commit(u"sub\\a b.txt", "bytes", "first");
    const Recording recording;
    EXPECT_TRUE(HasRevisions(Address(u"sub\\a b.txt")));
    const RecordedRun run = recording.Run();
    EXPECT_EQ(run.commandLine, "\"git\" log --pretty=format:%H%n%an%n%at%n%x09%s%n! \"" +
                                   Bytes(repository / u"sub\\a b.txt") + "\"");
    EXPECT_EQ(run.folder, Bytes(repository / u"sub"));
    EXPECT_EQ(run.inputSize, "0");
}

TEST_F(Git, ContentIsAskedAtTheRootByANameWithSlashes)
{
    const std::string hash = repository.Commit(u"sub\\\u00e4\\a.txt", "bytes", "first");
    const Recording recording;
    EXPECT_EQ(Content(Address(u"sub\\\u00e4/a.txt", hash)), "bytes");
    const RecordedRun run = recording.Run();
    EXPECT_EQ(run.commandLine, "\"git\" show \"" + hash + ":sub/\u00e4/a.txt\"");
    EXPECT_EQ(run.folder, Bytes(repository.Folder().Text()));
    EXPECT_EQ(run.inputSize, "0");
}

TEST_F(Git, OnlyItsOwnVariablesAreKeptFromTheClient)
{
    repository.Commit(u"a.txt", "1", "first");
    std::vector<std::string> expected = OwnEnvironment();
    std::erase_if(expected, [](const std::string& entry) {
        return _strnicmp(entry.c_str(), "GIT_", 4) == 0;
    });
    const Recording recording;
    const EnvironmentValue capitals("GIT_DIR", "nowhere");
    const EnvironmentValue small("git_work_tree", "nowhere");
    const EnvironmentValue mixed("Git_x", "1");
    const EnvironmentValue other("GITX", "stays");
    EXPECT_TRUE(HasRevisions(Address(u"a.txt")));
    const std::vector<std::string> environment = recording.Run().environment;
    EXPECT_THAT(environment, IsSupersetOf(expected));
    EXPECT_THAT(environment, Contains("GITX=stays"));
    for (const std::string& entry : environment)
        EXPECT_NE(_strnicmp(entry.c_str(), "GIT_", 4), 0) << entry;
}

TEST_F(Git, ARepositoryMayBeADrive)
{
    const std::string hash = repository.Commit(u"a.txt", "bytes", "first");
    repository.Commit(u"sub\\b.txt", "below", "second");
    const Drive drive(repository.Folder());
    EXPECT_EQ(Revisions(u"R:\\a.txt").size(), 2U);
    const Recording recording;
    EXPECT_EQ(Content(u"git://R:\\a.txt#" + Widened(hash)), "bytes");
    EXPECT_EQ(recording.Run().folder, "R:\\");
    EXPECT_EQ(Content(u"git://r:/sub/b.txt"), "below");
    EXPECT_EQ(recording.Run().commandLine, "\"git\" show \"HEAD:sub/b.txt\"");
}

TEST_F(Git, AStreamsFileIsThereWhileItIsOpen)
{
    repository.Commit(u"a.txt", "bytes", "first");
    const TempFolder temporary;
    const EnvironmentValue variable(temporaryFolderVariable, temporary.Path().string().c_str());
    ComPtr<IFileStream> stream;
    EXPECT_THAT(Open(Address(u"a.txt"), stream), Succeeded());
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(temporary.Path()))
        names.push_back(entry.path().filename().string());
    EXPECT_THAT(names, ElementsAre(StartsWith("vrl")));
}

} // namespace

} // namespace tarnwell::test
