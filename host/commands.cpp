#include "commands.h"

#include <limits>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t many = std::numeric_limits<std::size_t>::max();

const OwnOption listOptions[] = {{u"-r", Word::LsRecursive}};
const OwnOption logOptions[] = {
    {u"-n", Word::LogCount},        {u"--skip", Word::LogSkip},
    {u"--since", Word::LogSince},   {u"--until", Word::LogUntil},
    {u"--follow", Word::LogFollow}, {u"--working-copy", Word::LogWorkingCopy},
};
const OwnOption folderOptions[] = {{u"-p", Word::MkdirParents}};
const OwnOption removeOptions[] = {{u"-r", Word::RmRecursive}};

const Example listExamples[] = {
    {u"ls svn://host/repository/trunk@7", Word::LsExample},
    {u"ls git:src#v1.0", Word::LsExampleTag},
    {u"ls -r src \"*.h\"", Word::LsExampleRecursive},
};
const Example findExamples[] = {
    {u"find ftp://host/pub \"*.c\"", Word::FindExample},
    {u"--json find src", Word::FindExampleJson},
};
const Example statExamples[] = {{u"stat svn://host/repository/trunk/a.c@3", Word::StatExample}};
const Example catExamples[] = {{u"cat git:src/a.c#HEAD~1", Word::CatExample}};
const Example logExamples[] = {
    {u"log -n 3 git:README.md", Word::LogExample},
    {u"log -n 20 --skip 20 --since 2026-03-01 hg:src", Word::LogExamplePage},
};
const Example putExamples[] = {
    {u"put disk.img ftp://host/upload/disk.img", Word::PutExample},
    {u"tar c src | tarnwell-host put - src.tar", Word::PutExampleInput},
};
const Example copyExamples[] = {{u"cp a.txt b.txt", Word::CpExample}};
const Example folderExamples[] = {
    {u"mkdir -p ftp://host/a/b/c --user ann --password secret", Word::MkdirExample}};
const Example removeExamples[] = {{u"rm -r --yes ftp://host/a", Word::RmExample}};
const Example tempExamples[] = {{u"temp report.txt", Word::TempExample}};
const Example compareExamples[] = {
    {u"compare hg:a.c#1 hg:a.c#2", Word::CompareExample},
    {u"compare svn://host/repository/trunk work", Word::CompareExampleFolders},
    {u"compare git:src#v1.0 src", Word::CompareExampleRevision},
};
const Example checkExamples[] = {{u"selfcheck", Word::SelfCheckExample}};
const Example helpExamples[] = {{u"help ls", Word::HelpExample}};

const Command commands[] = {
    {u"ls", u"[-r] ADDRESS [PATTERN...]", Word::Ls, Word::LsMore, 1, many, List, listExamples,
     listOptions},
    {u"find", u"ADDRESS [PATTERN...]", Word::Find, Word::FindMore, 1, many, Find, findExamples},
    {u"stat", u"ADDRESS", Word::Stat, Word::None, 1, 1, Stat, statExamples},
    {u"cat", u"ADDRESS", Word::Cat, Word::None, 1, 1, Cat, catExamples},
    {u"log", u"[-n N] [OPTION...] ADDRESS", Word::Log, Word::LogMore, 1, 1, Log, logExamples,
     logOptions},
    {u"put", u"FILE ADDRESS", Word::Put, Word::None, 2, 2, Put, putExamples},
    {u"cp", u"SOURCE TARGET", Word::Cp, Word::None, 2, 2, Copy, copyExamples},
    {u"mkdir", u"[-p] ADDRESS", Word::Mkdir, Word::None, 1, 1, MakeFolder, folderExamples,
     folderOptions},
    {u"rm", u"[-r] ADDRESS...", Word::Rm, Word::RmMore, 1, many, Remove, removeExamples,
     removeOptions},
    {u"temp", u"ADDRESS", Word::Temp, Word::None, 1, 1, MakeTempFile, tempExamples},
    {u"compare", u"LEFT RIGHT", Word::Compare, Word::CompareMore, 2, 2, Compare, compareExamples},
    {u"selfcheck", u"", Word::SelfCheck, Word::None, 0, 0, SelfCheck, checkExamples},
    {u"help", u"[COMMAND]", Word::Help, Word::None, 0, 1, nullptr, helpExamples},
};

} // namespace

std::span<const Command> Commands()
{
    return commands;
}

const Command* FindCommand(std::u16string_view name)
{
    for (const Command& command : commands)
    {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

} // namespace tarnwell::host
