#include "support/perforce/depot.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarnwell::test::perforce
{

namespace
{

std::vector<std::string> WordsOf(const std::string& line)
{
    std::vector<std::string> words(1);
    for (const char byte : line)
    {
        if (byte == '\t')
            words.emplace_back();
        else
            words.back() += byte;
    }
    return words;
}

// Behind the line's first word.
std::string RestOf(const std::string& line)
{
    const std::size_t tab = line.find('\t');
    return tab == std::string::npos ? std::string() : line.substr(tab + 1);
}

Revision RevisionOf(const std::filesystem::path& folder, const std::vector<std::string>& words)
{
    Revision revision;
    revision.number = std::stoi(words.at(1));
    revision.change = std::stoi(words.at(2));
    revision.action = words.at(3);
    revision.time = std::stoll(words.at(4));
    revision.author = words.at(5);
    revision.type = words.at(6);
    revision.content = folder / words.at(7);
    return revision;
}

// Makes the file the last of the list, to which all lines are added.
void BeginFile(Depot& depot, const std::string& path)
{
    const auto known = std::find_if(depot.files.begin(), depot.files.end(), [&](const File& file) {
        return depot.isServer && file.path == path;
    });
    if (known == depot.files.end())
        depot.files.emplace_back().path = path;
    else
        std::rotate(known, known + 1, depot.files.end());
}

void AddLine(Depot& depot, const std::string& line)
{
    const std::vector<std::string> words = WordsOf(line);
    const std::string& kind = words[0];
    if (kind == "port")
        depot.port = words.at(1);
    else if (kind == "user")
        depot.users[words.at(1)] = words.at(2);
    else if (kind == "server")
        depot.isServer = true;
    else if (kind == "root")
        depot.root = RestOf(line);
    else if (kind == "file")
        BeginFile(depot, RestOf(line));
    else if (kind == "tag")
        depot.files.back().tags.push_back(RestOf(line));
    else if (kind == "have")
        depot.files.back().have = std::stoi(words.at(1));
    else if (kind == "rev")
        depot.files.back().revisions.push_back(RevisionOf(depot.folder, words));
    else if (kind == "desc")
        depot.files.back().revisions.back().description.push_back(RestOf(line));
    else if (kind == "note")
        depot.files.back().revisions.back().notes.push_back(RestOf(line));
    else if (kind == "from")
    {
        depot.files.back().revisions.back().fromFile = words.at(1);
        depot.files.back().revisions.back().fromRevision = std::stoi(words.at(2));
    }
    else if (kind == "labelled")
        depot.files.back().labelled[words.at(1)] = std::stoi(words.at(2));
    else if (kind == "label")
        depot.labels[words.at(1)] = std::stoi(words.at(2));
    else if (kind == "fail")
        depot.failures[words.at(1)] = words.at(2);
    else if (kind == "output")
        depot.outputs[words.at(1)] = depot.folder / words.at(2);
    else if (kind == "bytes")
        depot.bytes[words.at(1)] = depot.folder / words.at(2);
    else
        throw std::runtime_error("the depot's description has a line \"" + line + "\"");
}

} // namespace

Depot LoadDepot(const std::filesystem::path& folder)
{
    Depot depot;
    depot.folder = folder;
    std::ifstream lines(folder / "depot", std::ios::binary);
    if (!lines)
        throw std::runtime_error("there is no depot's description");
    for (std::string line; std::getline(lines, line);)
        AddLine(depot, line);
    if (depot.isServer)
        std::ranges::sort(depot.files, {}, &File::path);
    return depot;
}

Spec ParseSpec(const std::string& text)
{
    const std::size_t mark = text.find_first_of("@#");
    return mark == std::string::npos ? Spec{text, {}}
                                     : Spec{text.substr(0, mark), text.substr(mark)};
}

bool Fits(const std::string& pattern, const std::string& path)
{
    const std::size_t star = pattern.find('*');
    if (star == std::string::npos)
        return pattern == path;
    const std::string end = pattern.substr(star + 1);
    if (path.compare(0, star, pattern, 0, star) != 0 || path.size() < star + end.size())
        return false;
    const std::size_t endAt = path.size() - end.size();
    return path.compare(endAt, end.size(), end) == 0 &&
           path.substr(star, endAt - star).find('/') == std::string::npos;
}

const Revision* RevisionAt(const File& file, const std::string& specifier)
{
    const bool isNumber = specifier.size() > 1 && specifier[1] >= '0' && specifier[1] <= '9';
    const bool isLabel = !specifier.empty() && specifier[0] == '@' && !isNumber;
    const int number = specifier.empty() || isLabel ? 0 : std::stoi(specifier.substr(1));
    const Revision* found = nullptr;
    for (const Revision& revision : file.revisions)
    {
        const bool isIt =
            specifier.empty() || isLabel ||
            (specifier[0] == '#' ? revision.number == number : revision.change <= number);
        if (isIt)
            found = &revision;
    }
    return found;
}

} // namespace tarnwell::test::perforce
