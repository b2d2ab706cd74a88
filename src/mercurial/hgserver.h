// One Mercurial client that carries out commands for as long as it is wanted.
#pragma once

#include "mercurial/hgchannels.h"
#include "mercurial/hgstrict.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// Takes what a command prints, as it comes. False if no more is wanted.
using HgOutput = std::function<bool(std::string_view bytes)>;

class HgServer
{
public:
    // The client is started by the first command, and again by the next one where one broke off.
    explicit HgServer(HgItem item) : item_(std::move(item)) {}

    const HgItem& Item() const
    {
        return item_;
    }

    // Carries out a command, whose arguments hold no NUL. A client that dies is started again,
    // once, after a call of `restart`; without one that is a failure. Returns how it ended; an exit
    // code of 0 if no more was wanted, which ends the client.
    ClientOutcome Run(const std::vector<std::string>& arguments, const HgOutput& output,
                      const std::function<void()>& restart, Patience& patience);

    // All that a command prints. Throws if it fails.
    std::string Answer(const std::vector<std::string>& arguments, Patience& patience);

private:
    // The client has ended.
    struct Gone
    {
    };
    // A client, and what has come of it.
    struct Session
    {
        explicit Session(const ClientCall& call) : client(strictHg, call) {}

        RunningClient client;
        HgChannels channels;
        std::string bytes; // what `channels` reads
    };

    void ReadGreeting(Session& session, Patience& patience) const;
    HgPiece ReadPiece(Session& session, Patience& patience) const;
    // Ends the session if no more of the output is wanted.
    ClientOutcome RunOnce(std::unique_ptr<Session>& session,
                          const std::vector<std::string>& arguments, const HgOutput& output,
                          Patience& patience) const;
    [[noreturn]] void ThrowBadAnswer() const;

    const HgItem item_;
    // None while a command is carried out, since who takes its output may give another one.
    std::unique_ptr<Session> session_;
};

} // namespace tarnwell
