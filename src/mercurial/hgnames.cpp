#include "mercurial/hgnames.h"

#include "mercurial/hgtreeparser.h"
#include "mercurial/hguri.h"
#include "mercurial/hgwords.h"

#include <algorithm>
#include <deque>

namespace tarnwell
{

namespace
{

constexpr std::size_t listedIdSize = 12;

std::string Listed(std::string_view id)
{
    return std::string(id.substr(0, listedIdSize));
}

std::vector<std::string_view> WordsOf(std::string_view line)
{
    std::vector<std::string_view> words;
    for (std::size_t at = 0;;)
    {
        at = line.find_first_not_of(' ', at);
        if (at == std::string_view::npos)
            return words;
        const std::size_t end = std::min(line.find(' ', at), line.size());
        words.push_back(line.substr(at, end - at));
        at = end;
    }
}

bool IsListedId(std::string_view word)
{
    return word.size() == listedIdSize && IsHexadecimal(word);
}

bool IsNone(std::string_view id)
{
    return id.find_first_not_of('0') == std::string_view::npos;
}

std::optional<HgVersion> VersionIn(std::string_view line)
{
    constexpr std::size_t wordCount = 4;
    const std::vector<std::string_view> all = WordsOf(line);
    if (all.size() < wordCount)
        return std::nullopt;
    const auto words = all.end() - wordCount;
    const auto revision = WholeNumber(words[0]);
    if (!revision || !std::all_of(words + 1, all.end(), IsListedId))
        return std::nullopt;
    HgVersion version{*revision, std::string(words[1]), {}, IsNone(words[2])};
    for (const std::string_view parent : {words[2], words[3]})
    {
        if (!IsNone(parent))
            version.parents.emplace_back(parent);
    }
    return version;
}

} // namespace

std::optional<std::vector<HgVersion>> ReadHgVersions(std::string_view text)
{
    std::vector<HgVersion> versions;
    if (!TakeTo(text, '\n'))
        return std::nullopt;
    while (!text.empty())
    {
        const auto line = TakeTo(text, '\n');
        auto version = line ? VersionIn(*line) : std::nullopt;
        if (!version)
            return std::nullopt;
        versions.push_back(std::move(*version));
    }
    return versions;
}

std::optional<HgOrigin> ReadHgOrigin(std::string_view text, std::size_t nameSize)
{
    constexpr std::string_view copied = " renamed from ";
    if (text.size() <= nameSize || text.back() != '\n')
        return std::nullopt;
    text.remove_prefix(nameSize);
    text.remove_suffix(1);
    if (text == " not renamed")
        return HgOrigin();
    const std::size_t mark = text.rfind(':');
    if (!text.starts_with(copied) || mark == std::string_view::npos || mark < copied.size())
        return std::nullopt;
    const std::string_view name = text.substr(copied.size(), mark - copied.size());
    const std::string_view id = text.substr(mark + 1);
    // It becomes a part of addresses, and the client doesn't look at it.
    if (!IsHgPath(name) || !IsHgId(id))
        return std::nullopt;
    return HgOrigin{std::string(name), Listed(id)};
}

std::string HgNames::NameIn(const HgChange& change, Patience& patience)
{
    if (!isFollowed_)
        Follow(patience);
    isFollowed_ = true;
    const auto found = names_.find(change.number);
    return found != names_.end() ? found->second : NameOfRepeated(change, patience);
}

void HgNames::Follow(Patience& patience)
{
    std::deque<HgOrigin> waiting = {{name_, LatestId(patience)}};
    for (; !waiting.empty(); waiting.pop_front())
    {
        const auto& [name, id] = waiting.front();
        Versions& versions = VersionsOf(name, patience);
        const auto found = versions.all.find(id);
        if (found == versions.all.end())
            ThrowBadAnswer();
        if (!versions.followed.insert(id).second)
            continue;
        const HgVersion& version = found->second;
        names_.try_emplace(version.revision, name);
        if (auto origin = OriginOf(name, version, patience))
            waiting.push_back(std::move(*origin));
        for (const std::string& parent : version.parents)
            waiting.push_back({name, parent});
    }
}

std::string HgNames::LatestId(Patience& patience)
{
    const std::string latest = server_.Answer(
        {"log", "-r",
         HgExpression("max(follow(" + HgQuoted(HgPathPattern(name_)) + ", " + HgQuoted(at_) + "))"),
         "-T", "{rev}"},
        patience);
    const auto& all = VersionsOf(name_, patience).all;
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& each) {
        return std::to_string(each.second.revision) == latest;
    });
    return found != all.end() ? found->first : IdsAt(at_, {name_}, patience)[name_];
}

HgNames::Versions& HgNames::VersionsOf(const std::string& name, Patience& patience)
{
    const auto [found, isNew] = versions_.try_emplace(name);
    if (!isNew)
        return found->second;
    auto all = ReadHgVersions(server_.Answer({"debugindex", "--", name}, patience));
    if (!all)
        ThrowBadAnswer();
    for (HgVersion& version : *all)
    {
        std::string id = version.id;
        found->second.all.emplace(std::move(id), std::move(version));
    }
    return found->second;
}

std::optional<HgOrigin> HgNames::OriginOf(const std::string& name, const HgVersion& version,
                                          Patience& patience)
{
    if (!version.mayBeCopy)
        return std::nullopt;
    // The first revision that had it may be one that is no longer shown.
    auto origin =
        ReadHgOrigin(server_.Answer({"debugrename", "--hidden", "-r",
                                     HgExpression("rev(" + std::to_string(version.revision) + ")"),
                                     "--", HgPathPattern(name)},
                                    patience),
                     name.size());
    if (!origin)
        ThrowBadAnswer();
    return origin->name.empty() ? std::nullopt : origin;
}

std::string HgNames::NameOfRepeated(const HgChange& change, Patience& patience)
{
    std::string files = server_.Answer(
        {"log", "-r", HgExpression(HgQuoted(change.id)), "-T", "{files % \"{file}\\0\"}"},
        patience);
    std::vector<std::string> names;
    std::string_view rest = files;
    while (const auto file = TakeTo(rest, '\0'))
    {
        const auto found = versions_.find(std::string(*file));
        if (found != versions_.end() && !found->second.followed.empty())
            names.emplace_back(*file);
    }
    if (names.size() == 1)
        return names[0];
    for (const auto& [name, id] : IdsAt(change.id, names, patience))
    {
        if (versions_.at(name).followed.contains(id))
            return name;
    }
    ThrowBadAnswer();
}

std::map<std::string, std::string> HgNames::IdsAt(const std::string& revision,
                                                  const std::vector<std::string>& names,
                                                  Patience& patience)
{
    std::map<std::string, std::string> ids;
    HgManifestParser parser;
    parser.Feed(server_.Answer(
        {"manifest", "-r", HgExpression(HgQuoted(revision)), "-T", "{hash} {type}\\0{path}\\0"},
        patience));
    while (const auto entry = parser.Next())
    {
        if (std::find(names.begin(), names.end(), entry->path) != names.end())
            ids[entry->path] = Listed(entry->id);
    }
    if (!parser.IsComplete())
        ThrowBadAnswer();
    return ids;
}

void HgNames::ThrowBadAnswer() const
{
    ThrowStrictFailure(strictHg.source, badAnswer, server_.Item().address);
}

} // namespace tarnwell
