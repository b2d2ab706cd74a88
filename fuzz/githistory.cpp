// Any bytes as the history that the Git client prints, whole and in pieces, with names and without.
// The first byte says how.
#include "git/githistoryparser.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

namespace
{

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
    const auto make = [&] {
        return GitHistoryParser(hasNames, "sub/a.txt");
    };
    for (const GitCommit& commit : ReadTwice(bytes, 1 + way / 2, make, Same))
    {
        Expect(commit.id.size() == 40 || commit.id.size() == 64, "an id has one of two sizes");
        Expect(!commit.description.ends_with('\n'), "no line feed ends a description");
        Expect(hasNames || commit.path == "sub/a.txt", "without names there is one");
        Expect((commit.id + commit.author + commit.path).find('\0') == std::string::npos,
               "no text holds what ends it");
    }
}

} // namespace tarnwell::fuzz
