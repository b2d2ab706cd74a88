#include "git/gitcommands.h"

#include "frame/paths.h"
#include "git/gitparser.h"
#include "git/gituri.h"
#include "platform/clients.h"
#include "platform/win32.h"
#include "runner/commandline.h"
#include "runner/readstream.h"
#include "workingcopy/workingcopycommands.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// A repository or an index that the host's environment names must not lead the client astray.
constexpr ClientRow gitClient{
    .source = gitAddresses.source,
    .hiddenNames = u"GIT_",
    .decoding = Decoding::Utf8,
    .notFound = MessageId::GitClientNotFound,
    .communication = MessageId::GitCommunicationFailed,
    .reportedFailure = MessageId::GitAccessFailed,
};

std::shared_ptr<OsHandle> RunGit(std::u16string arguments, std::u16string folder,
                                 const std::u16string& address)
{
    return CaptureOutput(gitClient, {clientNames.git, std::move(arguments), std::move(folder)},
                         address);
}

// Outside a repository the client gets the whole path and no folder, and complains.
GitRoot RootOrNone(const std::u16string& path)
{
    return FindGitRoot(path).value_or(GitRoot{{}, path});
}

} // namespace

std::u16string GitLogArguments(const std::u16string& path)
{
    return u"log --pretty=format:%H%n%an%n%at%n%x09%s%n! " + Quoted(path);
}

std::u16string GitShowArguments(std::optional<std::u16string_view> revision,
                                std::u16string relative)
{
    // Inside a repository, names have one separator everywhere.
    std::replace_if(
        relative.begin(), relative.end(), [](char16_t unit) { return IsSeparator(unit); }, u'/');
    const std::u16string commit(revision.value_or(u"HEAD"));
    return u"show " + Quoted(commit + u":" + relative);
}

RevisionList GetGitLog(const std::u16string& text)
{
    const std::u16string path = ToolPath<GITUri>(text);
    RefuseOptions(gitAddresses, text, path, std::nullopt);
    if (IsFolderOnDisk(path))
        return {};
    const auto output = RunGit(GitLogArguments(path), std::u16string(ParentFolderOf(path)), text);
    return ReadGitLog(path, output->Get());
}

ComPtr<IFileStream> GetGitContent(const Uri& uri)
{
    const std::u16string path = uri.GetPath();
    const std::optional<std::u16string_view> revision = workingCopyMarker.RevisionOf(path);
    RefuseOptions(gitAddresses, uri.GetText(), path, revision);
    const GitRoot root = RootOrNone(std::u16string(workingCopyMarker.Strip(path)));
    auto output = RunGit(GitShowArguments(revision, root.relative), root.root, uri.GetText());
    return MakeReadStream(std::move(output), gitClient.source);
}

} // namespace tarnwell
