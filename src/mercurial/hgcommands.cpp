#include "mercurial/hgcommands.h"

#include "mercurial/hgparser.h"
#include "mercurial/hguri.h"
#include "platform/clients.h"
#include "runner/commandline.h"
#include "runner/readstream.h"
#include "workingcopy/workingcopycommands.h"

namespace tarnwell
{

namespace
{

constexpr ClientRow mercurialClient{
    .source = mercurialAddresses.source,
    .hiddenNames = nullptr,
    .decoding = Decoding::Utf8,
    .notFound = MessageId::MercurialClientNotFound,
    .communication = MessageId::MercurialCommunicationFailed,
    .reportedFailure = MessageId::MercurialAccessFailed,
};

// The client finds the repository from the file's full path, wherever it runs.
std::shared_ptr<OsHandle> RunHg(std::u16string arguments, const std::u16string& address)
{
    return CaptureOutput(mercurialClient,
                         {clientNames.mercurial, std::move(arguments), clientNames.rootFolder},
                         address);
}

} // namespace

std::u16string HgLogArguments(const std::u16string& path)
{
    return u"log --template \"{rev}\n{author}\n{date}\n\t{desc|tabindent}\n!\n\" " + Quoted(path);
}

std::u16string HgCatArguments(std::optional<std::u16string_view> revision,
                              const std::u16string& path)
{
    std::u16string arguments = u"cat ";
    if (revision)
        arguments += u"-r " + Quoted(*revision) + u" ";
    return arguments + Quoted(path);
}

RevisionList GetHgLog(const std::u16string& text)
{
    const std::u16string path = ToolPath<HGUri>(text);
    RefuseOptions(mercurialAddresses, text, path, std::nullopt);
    if (IsFolderOnDisk(path))
        return {};
    const auto output = RunHg(HgLogArguments(path), text);
    return ReadHgLog(path, output->Get());
}

ComPtr<IFileStream> GetHgContent(const Uri& uri)
{
    const std::u16string path = uri.GetPath();
    const std::optional<std::u16string_view> revision = workingCopyMarker.RevisionOf(path);
    RefuseOptions(mercurialAddresses, uri.GetText(), path, revision);
    const std::u16string file(workingCopyMarker.Strip(path));
    auto output = RunHg(HgCatArguments(revision, file), uri.GetText());
    return MakeReadStream(std::move(output), mercurialClient.source);
}

} // namespace tarnwell
