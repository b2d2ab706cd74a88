// A Git client that answers one question after the other for as long as it is wanted.
#pragma once

#include "git/gitstrict.h"
#include "runner/runningclient.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tarnwell
{

class GitClient
{
public:
    // How it is started, which may take questions to others.
    using MakeCall = std::function<ClientCall(Patience& patience)>;

    // `item` is what failures name. The client is started by the first question, and again by the
    // next one where one broke off.
    GitClient(PlacedItem item, MakeCall makeCall)
        : item_(std::move(item)), makeCall_(std::move(makeCall))
    {
    }

    class Session
    {
    public:
        explicit Session(const ClientCall& call) : client_(strictGit, call) {}

        void Tell(const std::string& questions);
        // What has come, without taking it; never empty.
        std::string_view ReadSome(Patience& patience);
        void Take(std::size_t bytes)
        {
            position_ += bytes;
        }
        // Without its line feed.
        std::string ReadLine(Patience& patience);

        RunningClient& Client()
        {
            return client_;
        }

    private:
        RunningClient client_;
        // What the client has printed and nobody has read yet.
        std::string bytes_;
        std::size_t position_ = 0;
    };

    // Runs `question` with a client, and once more if that dies.
    void Ask(const std::function<void(Session&)>& question, Patience& patience);

private:
    const PlacedItem item_;
    const MakeCall makeCall_;
    // None while a question is asked, since the host may ask another one meanwhile.
    std::unique_ptr<Session> session_;
};

} // namespace tarnwell
