#include "columns.h"
#include "commands.h"
#include "json.h"
#include "output.h"
#include "system.h"
#include "text16.h"

#include <optional>

namespace tarnwell::host
{

namespace
{

struct Client
{
    const char16_t* name;
    const char* program;
    const char* versionArguments;
};

const Client clients[] = {
    {u"git", "git", "--version"},
    {u"hg", "hg", "--version --quiet"},
    {u"svn", "svn", "--version --quiet"},
    {u"p4", "p4", "-V"},
};

// The last line: what stands before it, where there is more, is about the maker.
std::optional<std::u16string> VersionOf(const Client& client)
{
    std::optional<std::string> output = OutputOf(client.program, client.versionArguments);
    if (!output)
        return std::nullopt;
    output->erase(output->find_last_not_of("\r\n ") + 1);
    const std::size_t lineFeed = output->rfind('\n');
    return FromUtf8(lineFeed == std::string::npos ? *output : output->substr(lineFeed + 1));
}

void Tell(bool json, const JsonObject& object, std::u16string_view name, std::u16string_view value)
{
    Print(json ? object.Line() : LeftAligned(name, 18) + std::u16string(value) + u"\n");
}

HRESULT StatusOfMaking(const Session& session, const FileSystemKind& kind)
{
    try
    {
        MakeFileSystem(session, kind);
        return S_OK;
    }
    catch (const Failure& failure)
    {
        return failure.status;
    }
}

bool CheckFileSystem(const Session& session, const FileSystemKind& kind)
{
    const HRESULT status = StatusOfMaking(session, kind);
    const bool made = SUCCEEDED(status);
    const std::u16string code = Hex(static_cast<std::uint32_t>(status));
    JsonObject object;
    object.Text(u"class", kind.className).Text(u"file_system", kind.name);
    object.Boolean(u"made", made).Text(u"status", code);
    Tell(session.line.json, object, kind.className,
         made ? Say(Word::Made) : Say(Word::NotMade, {code}));
    return made;
}

void CheckClient(bool json, const Client& client)
{
    const std::optional<std::u16string> version = VersionOf(client);
    JsonObject object;
    object.Text(u"client", client.name);
    if (version)
        object.Text(u"version", *version);
    else
        object.Null(u"version");
    Tell(json, object, client.name, version.value_or(Say(Word::NotFound)));
}

} // namespace

int SelfCheck(const Session& session)
{
    const std::u16string file = FromPath(session.moduleFile);
    Tell(session.line.json, JsonObject().Text(u"module", file), Say(Word::Module), file);
    bool allMade = true;
    for (const FileSystemKind& kind : FileSystemKinds())
        allMade = CheckFileSystem(session, kind) && allMade;
    for (const Client& client : clients)
        CheckClient(session.line.json, client);
    return allMade ? exitDone : exitFailed;
}

} // namespace tarnwell::host
