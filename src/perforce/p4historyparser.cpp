#include "perforce/p4historyparser.h"

#include "frame/unixtime.h"

#include <string_view>

namespace tarnwell
{

namespace
{

std::string_view WithoutLastFeeds(std::string_view text)
{
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

// As the client names who made a change.
std::string AuthorOf(const std::string& user, const std::string& workspace)
{
    return workspace.empty() ? user : user + "@" + workspace;
}

} // namespace

std::optional<std::vector<P4Change>> ReadP4FileLog(const P4Record& record)
{
    const std::string& file = record.Text("depotFile");
    if (!file.starts_with("//"))
        return std::nullopt;
    std::vector<P4Change> changes;
    for (std::size_t i = 0; record.Has("rev" + std::to_string(i)); ++i)
    {
        P4Change& change = changes.emplace_back();
        change.id = record.Text("change", i);
        change.author = AuthorOf(record.Text("user", i), record.Text("client", i));
        change.description = WithoutLastFeeds(record.Text("desc", i));
        change.time = FileTimeOfSeconds(record.Text("time", i));
        change.path = file;
        change.revision = record.Text("rev", i);
        if (!P4Number(change.id) || !P4Number(change.revision))
            return std::nullopt;
    }
    return changes;
}

std::optional<P4Change> ReadP4Change(const P4Record& record)
{
    P4Change change;
    change.id = record.Text("change");
    change.author = AuthorOf(record.Text("user"), record.Text("client"));
    change.description = WithoutLastFeeds(record.Text("desc"));
    change.time = FileTimeOfSeconds(record.Text("time"));
    if (!P4Number(change.id))
        return std::nullopt;
    return change;
}

} // namespace tarnwell
