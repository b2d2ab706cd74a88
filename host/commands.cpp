#include "commands.h"

#include <limits>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t many = std::numeric_limits<std::size_t>::max();

const Command commands[] = {
    {u"ls", u"ADDRESS", u"list a folder", 1, 1, List},
    {u"stat", u"ADDRESS", u"one item's facts", 1, 1, Stat},
    {u"cat", u"ADDRESS", u"content to standard output", 1, 1, Cat},
    {u"log", u"ADDRESS", u"revisions, newest first", 1, 1, Log},
    {u"put", u"FILE ADDRESS", u"write a local file (\"-\": standard input) to ADDRESS", 2, 2, Put},
    {u"cp", u"SOURCE TARGET", u"copy a file within one file system", 2, 2, Copy},
    {u"mkdir", u"[-p] ADDRESS", u"make a folder (-p: with its parents)", 1, 1, MakeFolder, true},
    {u"rm", u"[-r] ADDRESS...", u"delete (-r: folders with all that is in them)", 1, many, Remove,
     false, true},
    {u"temp", u"ADDRESS", u"make an empty temporary file beside ADDRESS", 1, 1, MakeTempFile},
    {u"compare", u"LEFT RIGHT", u"files by content, folders by name, kind, size and content", 2, 2,
     Compare},
    {u"selfcheck", u"", u"make all file systems, look for the clients", 0, 0, SelfCheck},
};

} // namespace

std::span<const Command> Commands()
{
    return commands;
}

} // namespace tarnwell::host
