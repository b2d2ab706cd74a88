#include "usage.h"

#include "text16.h"

namespace tarnwell::host
{

namespace
{

const char16_t options[] = u"Options:\n"
                           u"  --module FILE    the module to load (else the one beside the "
                           u"program)\n"
                           u"  --json           one JSON object a line\n"
                           u"  --lang en|ja     language of the module's texts (Linux; Windows "
                           u"has the user's)\n"
                           u"  --user U, --password P, --server HOST[:PORT]\n"
                           u"                   the answer when the module asks for credentials\n"
                           u"  --no-credentials no answer to that\n"
                           u"  --streams        list the named data streams of local files\n"
                           u"  --yes            delete without a question\n"
                           u"  --exclude NAME   in comparisons of folders leave these out, instead "
                           u"of\n"
                           u"                   .svn, .git and .hg (may be given several times)\n";

const char16_t notes[] =
    u"Addresses: git: and hg: with a path and maybe #REVISION, svn:// svnhttp:// svnhttps://\n"
    u"svnfile:// svn+ssh:// p4:// ftp://; anything else is a local path.\n"
    u"Exit code: 0 done, 1 failed, 2 wrong usage, 3 differences (compare).\n";

const Command* Find(const std::u16string& name)
{
    for (const Command& command : Commands())
    {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

} // namespace

std::u16string UsageText()
{
    std::u16string text = u"Usage: tarnwell-host [OPTIONS] COMMAND\n\nCommands:\n";
    for (const Command& command : Commands())
    {
        const std::u16string form = std::u16string(command.name) + u" " + command.operands;
        text += u"  " + LeftAligned(form, 20) + u" " + command.help + u"\n";
    }
    return text + u"\n" + options + u"\n" + notes;
}

const Command& CommandOf(const CommandLine& line)
{
    if (line.command.empty())
        throw UsageError("A command is missing.");
    const Command* const command = Find(line.command);
    if (command == nullptr)
        throw UsageError("There is no command \"" + ToUtf8(line.command) + "\".");
    const std::string name = ToUtf8(line.command);
    if (line.operands.size() < command->fewest)
        throw UsageError("\"" + name + "\" needs " + ToUtf8(command->operands) + ".");
    if (line.operands.size() > command->most)
        throw UsageError("\"" + name + "\" takes no more than " + std::to_string(command->most) +
                         " operands.");
    if (line.parents && !command->takesParents)
        throw UsageError("\"" + name + "\" has no option -p.");
    if (line.recursive && !command->takesRecursive)
        throw UsageError("\"" + name + "\" has no option -r.");
    return *command;
}

} // namespace tarnwell::host
