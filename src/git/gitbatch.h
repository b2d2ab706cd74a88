// One Git client that answers questions for objects for as long as it is wanted.
#pragma once

#include "git/gitstrict.h"
#include "git/gittreeparser.h"
#include "runner/contentfile.h"
#include "runner/runningclient.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
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
    // The client is started by the first question, and again by the next one where one broke off.
    explicit GitBatch(PlacedItem item) : item_(std::move(item)) {}

    // Names of objects hold no line feed.
    std::vector<GitObject> Facts(const std::vector<std::string>& names, Patience& patience);
    GitObject Content(const std::string& name, ContentTaker& taker, Patience& patience);
    // At most so many bytes, else that is a failure.
    GitObject Content(const std::string& name, std::string& bytes, Patience& patience);

private:
    // The client has ended.
    struct Gone
    {
    };

    struct Session
    {
        explicit Session(const ClientCall& call) : client(strictGit, call) {}

        void Tell(const std::string& questions);
        std::string_view ReadSome(Patience& patience);
        std::string ReadLine(Patience& patience);

        RunningClient client;
        // What the client has printed and nobody has read yet.
        std::string bytes;
        std::size_t position = 0;
    };

    // Runs `question` with a client, and once more if that dies.
    void Ask(const std::function<void(Session&)>& question, Patience& patience);
    GitObject ReadFacts(Session& session, Patience& patience) const;

    const PlacedItem item_;
    // None while a question is asked, since the host may ask another one meanwhile.
    std::unique_ptr<Session> session_;
};

} // namespace tarnwell
