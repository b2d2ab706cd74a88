#include "mercurial/hgrevision.h"

#include "frame/unixtime.h"
#include "mercurial/hgwords.h"

#include <tarnwell/text.h>

namespace tarnwell
{

namespace
{

// The path is asked for where there is one.
std::string RevisionTemplate(const std::string& path)
{
    const std::string facts = "{node} {date|hgdate} ";
    if (path.empty())
        return facts + "0 0\\n";
    const std::string found = "files(" + HgQuoted(HgPathPattern(path)) + ")";
    return facts + "{ifcontains(" + HgQuoted(path) + ", " + found + ", \"1\", \"0\")} {if(" +
           found + ", \"1\", \"0\")}\\n";
}

// Not that of no revision, nor that of the working copy.
bool IsOfRevision(std::string_view id)
{
    return id.find_first_not_of('0') != std::string_view::npos &&
           id.find_first_not_of('f') != std::string_view::npos;
}

} // namespace

HgRevision FindHgRevision(HgServer& server, const std::string& path, Patience& patience)
{
    const HgItem& item = server.Item();
    const auto name = EncodeName(item.RevisionText());
    const auto found = name ? AskForHgRevisions(server, HgQuoted(*name), path, patience)
                            : std::vector<HgRevision>();
    if (found.size() != 1 || !IsOfRevision(found[0].id))
        ThrowStrictFailure(strictHg.source, noRevision, item.RevisionText());
    return found[0];
}

std::vector<HgRevision> AskForHgRevisions(HgServer& server, const std::string& expression,
                                          const std::string& path, Patience& patience)
{
    const auto revisions = ReadHgRevisions(server.Answer(
        {"log", "-r", HgExpression(expression), "-T", RevisionTemplate(path)}, patience));
    if (!revisions)
        ThrowStrictFailure(strictHg.source, badAnswer, server.Item().address);
    return *revisions;
}

std::optional<std::vector<HgRevision>> ReadHgRevisions(std::string_view text)
{
    std::vector<HgRevision> revisions;
    while (!text.empty())
    {
        auto line = TakeTo(text, '\n');
        if (!line)
            return std::nullopt;
        const auto id = TakeTo(*line, ' ');
        const auto seconds = TakeTo(*line, ' ');
        const auto zone = TakeTo(*line, ' ');
        const auto isFile = TakeTo(*line, ' ');
        if (!zone || !isFile || !IsHgId(*id))
            return std::nullopt;
        revisions.push_back(
            {std::string(*id), FileTimeOfSeconds(*seconds), *isFile == "1", *line == "1"});
    }
    return revisions;
}

} // namespace tarnwell
