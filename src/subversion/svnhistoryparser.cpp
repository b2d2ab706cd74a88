#include "subversion/svnhistoryparser.h"

#include "subversion/svntreeparser.h"
#include "subversion/svnvalues.h"

namespace tarnwell
{

namespace
{

constexpr std::size_t mostDigits = 18;

bool IsAtOrBelow(std::string_view path, std::string_view folder)
{
    return path.starts_with(folder) &&
           (path.size() == folder.size() || folder.ends_with('/') || path[folder.size()] == '/');
}

std::string_view WithoutLastFeeds(std::string_view text)
{
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

// Whether this can be an item's path. Addresses are made of it: another would lead behind a
// server's name, or out of the repository.
bool IsPath(std::string_view path)
{
    return path == "/" || (path.starts_with('/') && IsSvnName(path.substr(1)));
}

// Nothing for what is no change.
std::optional<SvnChange> ReadChange(const SvnElement& element)
{
    const std::string* const action = element.Attribute("action");
    const std::string* const copiedFrom = element.Attribute("copyfrom-path");
    if (action == nullptr || action->size() != 1 || !IsPath(element.text))
        return std::nullopt;
    SvnChange change{action->front(), element.text, {}};
    if (copiedFrom == nullptr)
        return change;
    // The root comes from nowhere.
    if (!IsPath(*copiedFrom) || element.text == "/")
        return std::nullopt;
    change.copiedFrom = *copiedFrom;
    return change;
}

std::optional<SvnRevision> ReadRevision(const SvnElement& entry)
{
    const std::string* const number = entry.Attribute("revision");
    if (number == nullptr || !IsSvnNumber(*number))
        return std::nullopt;
    SvnRevision revision;
    revision.number = *number;
    if (const std::string* const author = entry.ChildText("author"))
        revision.author = *author;
    if (const std::string* const message = entry.ChildText("msg"))
        revision.description = WithoutLastFeeds(*message);
    if (const std::string* const date = entry.ChildText("date"))
        revision.time = ParseSvnDate(std::u16string(date->begin(), date->end()));
    if (const SvnElement* const paths = entry.Child("paths"))
    {
        for (const SvnElement& path : paths->children)
        {
            auto change = ReadChange(path);
            if (!change)
                return std::nullopt;
            revision.changes.push_back(std::move(*change));
        }
    }
    return revision;
}

} // namespace

std::optional<SvnRevision> SvnHistoryParser::Next()
{
    const std::optional<SvnElement> entry = isBad_ ? std::nullopt : reader_.Next();
    if (!entry)
        return std::nullopt;
    std::optional<SvnRevision> revision = ReadRevision(*entry);
    isBad_ = !revision;
    return revision;
}

std::string SvnPathBefore(const SvnRevision& revision, std::string path)
{
    const SvnChange* nearest = nullptr;
    for (const SvnChange& change : revision.changes)
    {
        const bool isNew = change.action == 'A' || change.action == 'R';
        if (isNew && IsAtOrBelow(path, change.path) &&
            (nearest == nullptr || change.path.size() > nearest->path.size()))
            nearest = &change;
    }
    if (nearest == nullptr || nearest->copiedFrom.empty())
        return path;
    const bool isRoot = nearest->copiedFrom == "/" && path.size() > nearest->path.size();
    return path.replace(0, nearest->path.size(), isRoot ? "" : nearest->copiedFrom);
}

bool RemovesPath(const SvnRevision& revision, std::string_view path)
{
    for (const SvnChange& change : revision.changes)
    {
        if ((change.action == 'D' || change.action == 'R') && IsAtOrBelow(path, change.path))
            return true;
    }
    return false;
}

bool IsSvnNumber(std::string_view text)
{
    return !text.empty() && text.size() <= mostDigits &&
           text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace tarnwell
