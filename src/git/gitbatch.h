// Questions for objects, to one Git client.
#pragma once

#include "git/gitclient.h"
#include "git/gittreeparser.h"
#include "runner/contentfile.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

struct GitObject
{
    std::string id;
    std::string type; // "commit", "tree", "blob" or "tag"; empty: there is no such object
    std::uint64_t size = 0;
};

class GitBatch
{
public:
    explicit GitBatch(const PlacedItem& item);

    // Names of objects hold no line feed.
    std::vector<GitObject> Facts(const std::vector<std::string>& names, Patience& patience);
    GitObject Content(const std::string& name, ContentTaker& taker, Patience& patience);
    // At most so many bytes, else that is a failure.
    GitObject Content(const std::string& name, std::string& bytes, Patience& patience);

private:
    using Session = GitClient::Session;

    GitObject ReadFacts(Session& session, Patience& patience) const;

    const PlacedItem item_;
    GitClient client_;
};

} // namespace tarnwell
