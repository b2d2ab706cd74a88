#include "perforce/p4historyparser.h"

#include "frame/unixtime.h"
#include "perforce/p4treeparser.h"

#include <algorithm>
#include <iterator>
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

std::string Key(const char* name, std::size_t index)
{
    return name + std::to_string(index);
}

// Nobody promises an order, so all that is needed must be there, and something behind it.
bool HasCome(const P4Record& record, std::size_t index)
{
    constexpr const char* needed[] = {"rev", "change", "user", "client", "desc", "time"};
    return record.Has("depotFile") && record.Has(Key("rev", index + 1)) &&
           std::all_of(std::begin(needed), std::end(needed),
                       [&](const char* name) { return record.Has(Key(name, index)); });
}

} // namespace

std::optional<std::vector<P4Change>> P4FileLogReader::Next(const P4Record& record, bool isWhole)
{
    const std::string& file = record.Text("depotFile");
    // Addresses are made of it.
    const bool isFile = BelowP4Folder(file, "//").has_value();
    if (isWhole && !isFile)
        return std::nullopt;
    std::vector<P4Change> changes;
    while (isWhole ? record.Has(Key("rev", given_)) : HasCome(record, given_))
    {
        P4Change& change = changes.emplace_back();
        change.id = record.Text("change", given_);
        change.author = AuthorOf(record.Text("user", given_), record.Text("client", given_));
        change.description = WithoutLastFeeds(record.Text("desc", given_));
        change.time = FileTimeOfSeconds(record.Text("time", given_));
        change.path = file;
        change.revision = record.Text("rev", given_);
        if (!P4Number(change.id) || !P4Number(change.revision) || !isFile)
            return std::nullopt;
        ++given_;
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
