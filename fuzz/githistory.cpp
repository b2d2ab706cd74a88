// Any bytes as the history that the Git client prints, whole and in pieces, with names and without.
// The first byte says how.
#include "git/githistoryparser.h"
#include "support/target.h"

#include <algorithm>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

struct Read
{
    std::vector<GitCommit> commits;
    bool isComplete = false;
};

Read ReadIn(std::string_view bytes, std::size_t piece, bool hasNames)
{
    GitHistoryParser parser(hasNames, "sub/a.txt");
    Read read;
    const auto take = [&] {
        while (std::optional<GitCommit> commit = parser.Next())
            read.commits.push_back(std::move(*commit));
    };
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        take();
    }
    parser.End();
    take();
    read.isComplete = parser.IsComplete();
    return read;
}

bool Same(const GitCommit& left, const GitCommit& right)
{
    return left.id == right.id && left.author == right.author &&
           left.description == right.description && left.authorTime == right.authorTime &&
           left.commitTime == right.commitTime && left.path == right.path;
}

} // namespace

void Try(std::string_view bytes)
{
    if (bytes.empty())
        return;
    const unsigned way = static_cast<unsigned char>(bytes[0]);
    bytes.remove_prefix(1);
    const bool hasNames = (way & 1) != 0;
    const Read whole = ReadIn(bytes, bytes.size(), hasNames);
    const Read pieces = ReadIn(bytes, 1 + way / 2, hasNames);
    Expect(whole.isComplete == pieces.isComplete, "pieces are as complete as the whole");
    Expect(std::equal(whole.commits.begin(), whole.commits.end(), pieces.commits.begin(),
                      pieces.commits.end(), Same),
           "pieces are read as the whole is");
    for (const GitCommit& commit : whole.commits)
    {
        Expect(commit.id.size() == 40 || commit.id.size() == 64, "an id has one of two sizes");
        Expect(!commit.description.ends_with('\n'), "no line feed ends a description");
        Expect(hasNames || commit.path == "sub/a.txt", "without names there is one");
        Expect((commit.id + commit.author + commit.path).find('\0') == std::string::npos,
               "no text holds what ends it");
    }
}

} // namespace tarnwell::fuzz
