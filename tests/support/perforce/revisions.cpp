#include "support/perforce/revisions.h"

#include <algorithm>
#include <ctime>

namespace tarnwell::test::perforce
{

namespace
{

bool IsNumber(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

bool IsDay(const std::string& text)
{
    return text.size() >= 10 && text[4] == '/' && text[7] == '/';
}

// In the time zone of the server, which is UTC.
long long SecondsOf(const std::string& day)
{
    std::tm parts{};
    const auto number = [&](std::size_t at, std::size_t size) {
        return at + size <= day.size() ? std::stoi(day.substr(at, size)) : 0;
    };
    parts.tm_year = number(0, 4) - 1900;
    parts.tm_mon = number(5, 2) - 1;
    parts.tm_mday = number(8, 2);
    parts.tm_hour = number(11, 2);
    parts.tm_min = number(14, 2);
    parts.tm_sec = number(17, 2);
    const long long years = parts.tm_year + 1900 - (parts.tm_mon < 2 ? 1 : 0);
    const long long shifted = (parts.tm_mon + 10) % 12;
    const long long days = years * 365 + years / 4 - years / 100 + years / 400 +
                           (153 * shifted + 2) / 5 + parts.tm_mday - 719469;
    return days * 86400 + parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec;
}

[[noreturn]] void ComplainOfLabel(const std::string& name)
{
    throw Complained{3, 2, "Invalid changelist/client/label/date '@" + name + "'.\n"};
}

// Whether the revision is at or before what the specifier, which has its mark, means.
bool IsWithin(const Depot& depot, const File& file, const Revision& revision,
              const std::string& specifier)
{
    const std::string name = specifier.substr(1);
    if (specifier == "#head" || specifier == "@now")
        return true;
    if (specifier == "#have")
        return revision.number <= file.have;
    if (specifier[0] == '#')
        return revision.number <= std::stoi(name);
    if (IsNumber(name))
        return revision.change <= std::stoll(name);
    if (IsDay(name))
        return revision.time <= SecondsOf(name);
    if (const auto label = depot.labels.find(name); label != depot.labels.end())
        return revision.change <= label->second;
    const bool isLabel = std::any_of(depot.files.begin(), depot.files.end(), [&](const File& any) {
        return any.labelled.find(name) != any.labelled.end();
    });
    if (!isLabel)
        ComplainOfLabel(name);
    const auto labelled = file.labelled.find(name);
    return labelled != file.labelled.end() && revision.number <= labelled->second;
}

} // namespace

bool Names(const std::string& pattern, const std::string& path)
{
    if (!pattern.ends_with("..."))
        return Fits(pattern, path);
    return path.starts_with(pattern.substr(0, pattern.size() - 3));
}

std::vector<const Revision*> RevisionsUpTo(const Depot& depot, const File& file,
                                           const std::string& specifier)
{
    const std::size_t comma = specifier.find(',');
    const std::string first = specifier.substr(0, comma);
    const std::string last = comma == std::string::npos ? first : specifier.substr(comma + 1);
    const bool isExact = first.starts_with("@=");
    std::vector<const Revision*> found;
    for (const Revision& revision : file.revisions)
    {
        const bool isIn = isExact ? revision.change == std::stoi(first.substr(2))
                                  : last.empty() || IsWithin(depot, file, revision, last);
        const bool isTooEarly =
            comma != std::string::npos && revision.change < std::stoll(first.substr(1));
        if (isIn && !isTooEarly)
            found.push_back(&revision);
    }
    return found;
}

const Revision* RevisionOf(const Depot& depot, const File& file, const std::string& specifier)
{
    const std::vector<const Revision*> found = RevisionsUpTo(depot, file, specifier);
    if (found.empty())
        return nullptr;
    const bool isNumber = specifier.starts_with("#") && IsNumber(specifier.substr(1));
    return isNumber && found.back()->number != std::stoi(specifier.substr(1)) ? nullptr
                                                                              : found.back();
}

} // namespace tarnwell::test::perforce
