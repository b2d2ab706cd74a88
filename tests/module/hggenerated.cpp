#include "module/hggenerated.h"

#include "support/clients.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>
#include <stdexcept>

namespace tarnwell::test
{
namespace
{

// Makes all revisions in one run of the client, without a working copy. Each is a line
// "revision PARENT PARENT SECONDS ENCODING TEXT AUTHOR", then "file NAME CONTENT SOURCE" and "gone
// NAME", then "end"; texts are hexadecimal, "-" is none.
constexpr const char* hgMaker = R"(from mercurial import context, encoding, registrar
cmdtable = {}

def text(word):
    return None if word == b'-' else bytes.fromhex(word.decode())

@registrar.command(cmdtable)(b'make', [])
def make(ui, repo):
    made = []
    with repo.lock(), repo.transaction(b'make'):
        for line in ui.fin:
            words = line.split()
            if words[0] == b'revision':
                head, files = words, {}
            elif words[0] == b'file':
                files[text(words[1])] = (text(words[2]), text(words[3]))
            elif words[0] == b'gone':
                files[text(words[1])] = None
            else:
                encoding.encoding = head[4]
                def local(all):
                    return all.decode('utf-8').encode(head[4].decode())
                def content(repo, change, name):
                    if files[name] is None:
                        return None
                    data, source = files[name]
                    return context.memfilectx(repo, change, name, data, copysource=source)
                parents = [None if n == b'-' else made[int(n)] for n in head[1:3]]
                made.append(context.memctx(
                    repo, parents, local(text(head[5]) or b''), list(files), content,
                    user=local(text(head[6])),
                    date=head[3] + b' 0').commit())
)";

std::string HexOf(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes)
    {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text.empty() ? "-" : text;
}

constexpr HgTexts hgTexts[] = {
    {"plain", "Ann", "ascii"},
    {"title\n\nbody\n\n\nmore", "J\xC3\xB6rg <j@example.org>", "utf-8"},
    {"", "A \xF0\x9F\x98\x80", "utf-8"},
    {"x\n\n.\n\n!", "Ann", "utf-8"},
    {"\xE6\x97\xA5\n\n\xF0\x9F\x98\x80", "Ann", "utf-8"},
    {"Gr\xC3\xBC\xC3\x9F\x65\n\n\xC3\xA0", "J\xC3\xB6rg <j@example.org>", "latin-1"},
    // Of which the last bytes are a backslash's in that encoding.
    {"\xE8\xA1\xA8\n\n\xE3\x82\xBD", "\xE8\xA1\xA8", "shift_jis"},
};

class HgGenerator
{
public:
    HgGenerator(const MercurialRepository& repository, std::uint32_t seed)
        : repository_(repository), random_(seed)
    {
    }

    HgGenerated Make(std::size_t count)
    {
        std::vector<std::size_t> tips = {0};
        for (std::size_t i = 0; i < count; ++i)
        {
            const HgTexts& texts = hgTexts[Below(std::size(hgTexts))];
            HgMade made;
            made.texts = &texts;
            made.seconds = 1'000'000'000 + 100 * i;
            std::vector<std::string> parents(2, "-");
            changes_.str({});
            if (i > 0)
            {
                const std::size_t line = Below(tips.size());
                const std::size_t other = Below(tips.size());
                made.parents = {tips[line]};
                made.files = made_[tips[line]].files;
                if (Below(3) == 0 && tips[other] != tips[line])
                {
                    made.parents.push_back(tips[other]);
                    Merge(made);
                }
                for (std::size_t j = 0; j < made.parents.size(); ++j)
                    parents[j] = std::to_string(made.parents[j]);
                tips.size() < 3 && Below(4) == 0 ? tips.push_back(i) : void(tips[line] = i);
            }
            if (made.parents.size() < 2)
                Change(made);
            input_ << "revision " << parents[0] << ' ' << parents[1] << ' ' << made.seconds << ' '
                   << texts.encoding << ' ' << HexOf(texts.description) << ' '
                   << HexOf(texts.author) << '\n'
                   << changes_.str() << "end\n";
            made_.push_back(std::move(made));
        }
        Run();
        return {std::move(made_), std::move(versions_)};
    }

private:
    std::size_t Below(std::size_t bound)
    {
        return static_cast<std::size_t>(random_() % bound);
    }

    void Put(HgMade& made, const std::string& name, std::vector<std::size_t> earlier,
             std::optional<std::size_t> source = {})
    {
        const std::size_t number = versions_.size();
        versions_.push_back(
            {name, made_.size(), std::move(earlier), source, "content " + std::to_string(number)});
        Write(made, number);
    }
    void Write(HgMade& made, std::size_t number)
    {
        const HgVersion& version = versions_[number];
        made.files[version.name] = number;
        const bool isNew = version.revision == made_.size();
        changes_ << "file " << HexOf(version.name) << ' ' << HexOf(version.content) << ' '
                 << (isNew && version.source ? HexOf(versions_[*version.source].name) : "-")
                 << '\n';
    }
    void Remove(HgMade& made, const std::string& name)
    {
        if (made.files.erase(name) > 0)
            changes_ << "gone " << HexOf(name) << '\n';
    }

    void Change(HgMade& made)
    {
        const HgMade before = made;
        for (const std::string& name : hgNames)
        {
            const auto version = before.VersionOf(name);
            // One that has just been made as a copy stays what it is.
            if (version != made.VersionOf(name))
                continue;
            const std::size_t chance = Below(9);
            const std::string& other = hgNames[Below(hgNames.size())];
            const bool isFree = !before.files.contains(other) && !made.files.contains(other);
            if (chance == 0)
                Remove(made, name);
            else if (version && chance < 3 && isFree)
            {
                Put(made, other, {}, version);
                if (chance == 1)
                    Remove(made, name);
            }
            else if (chance < 5)
                Put(made, name,
                    version ? std::vector<std::size_t>{*version} : std::vector<std::size_t>());
        }
    }

    bool IsBehind(std::size_t earlier, std::size_t later) const
    {
        const std::vector<std::size_t>& all = versions_[later].earlier;
        return earlier == later || std::any_of(all.begin(), all.end(), [&](std::size_t each) {
                   return IsBehind(earlier, each);
               });
    }

    // As the client records it: what one side has, or what neither has.
    void Merge(HgMade& made)
    {
        const HgMade& first = made_[made.parents[0]];
        const HgMade& second = made_[made.parents[1]];
        for (const std::string& name : hgNames)
        {
            const auto one = first.VersionOf(name);
            const auto two = second.VersionOf(name);
            const std::size_t chance = Below(4);
            const std::string& other = hgNames[Below(hgNames.size())];
            if (chance == 0 || (!one && !two))
                continue;
            if (one && !two && chance == 1 && second.files.contains(other) &&
                !first.files.contains(other) && !made.files.contains(other))
                // Renamed on one side, and changed on the other.
                Put(made, name, {*one}, second.files.at(other));
            else if (!two && chance == 2)
                Remove(made, name);
            else if (two && (!one || IsBehind(*one, *two)) && chance < 3)
                Write(made, *two);
            else if (one && two)
                Put(made, name,
                    IsBehind(*one, *two)   ? std::vector{*two}
                    : IsBehind(*two, *one) ? std::vector{*one}
                                           : std::vector{*one, *two});
        }
    }

    void Run()
    {
        WriteBytes(repository_ / u".hg/maker.py", hgMaker);
        const ProcessRun run =
            RunClient("hg", {.arguments = {u"--config", u"extensions.maker=.hg/maker.py", u"make"},
                             .input = input_.str(),
                             .folder = repository_.Folder().Path()});
        if (run.exitCode != 0)
            throw std::runtime_error("nothing was made: " + run.errors);
        // A line of words for each revision, behind one of heads.
        std::istringstream index(repository_.Run({"debugindex", "--changelog", "--debug"}));
        std::string line;
        std::getline(index, line);
        for (HgMade& made : made_)
        {
            std::getline(index, line);
            std::istringstream words(line);
            while (words >> made.id && made.id.size() != 40)
                continue;
        }
    }

    const MercurialRepository& repository_;
    std::mt19937 random_;
    std::ostringstream input_;
    std::ostringstream changes_; // of the revision that is being made
    std::vector<HgMade> made_;
    std::vector<HgVersion> versions_;
};

} // namespace

const std::vector<std::string> hgNames = {"a.txt", "b/c.txt", "b/\xC3\xA9 e.txt", "d",
                                          "b/new name.txt"};

std::optional<std::size_t> HgMade::VersionOf(const std::string& name) const
{
    const auto found = files.find(name);
    return found == files.end() ? std::nullopt : std::optional(found->second);
}

HgGenerated GenerateHg(const MercurialRepository& repository, std::uint32_t seed, std::size_t count)
{
    return HgGenerator(repository, seed).Make(count);
}

} // namespace tarnwell::test
