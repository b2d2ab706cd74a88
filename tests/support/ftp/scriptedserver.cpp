#include "support/ftp/scriptedserver.h"

#include "support/ftp/scriptedsession.h"

#include <algorithm>
#include <chrono>

namespace tarnwell::test
{

ScriptedFtpServer::ScriptedFtpServer()
    : listener_(Socket::Listening()), thread_([this] { Serve(); })
{
}

ScriptedFtpServer::~ScriptedFtpServer()
{
    stop_ = true;
    thread_.join();
    DropConnections();
    for (Visitor& visitor : visitors_)
        visitor.thread.join();
}

void ScriptedFtpServer::Serve()
{
    while (Socket control = listener_.Accept(stop_))
    {
        const std::lock_guard lock(guard_);
        ++connections_;
        const auto stop = std::make_shared<StopFlag>(false);
        visitors_.push_back({stop, std::thread([this, stop, taken = std::move(control)]() mutable {
                                 ScriptedSession(*this, std::move(taken), *stop).Run();
                                 const std::lock_guard counting(guard_);
                                 ++ended_;
                             })});
    }
}

int ScriptedFtpServer::Port() const
{
    return listener_.Port();
}

std::u16string ScriptedFtpServer::Host() const
{
    const std::string text = "127.0.0.1:" + std::to_string(Port());
    return {text.begin(), text.end()};
}

void ScriptedFtpServer::Answer(const std::string& command, FtpAnswer answer)
{
    const std::lock_guard lock(guard_);
    answers_[command] = std::move(answer);
}

void ScriptedFtpServer::BehaveAgain(const std::string& command)
{
    const std::lock_guard lock(guard_);
    answers_.erase(command);
}

void ScriptedFtpServer::ClaimAddress(const std::string& commaSeparated)
{
    Answer("EPSV", {"502 not here\r\n"});
    const std::lock_guard lock(guard_);
    claimed_ = commaSeparated;
}

void ScriptedFtpServer::OfferFacts()
{
    const std::lock_guard lock(guard_);
    offersFacts_ = true;
}

void ScriptedFtpServer::BeginAt(const std::string& folder)
{
    const std::lock_guard lock(guard_);
    entry_ = folder;
}

void ScriptedFtpServer::MakeFolder(const std::string& path)
{
    const std::lock_guard lock(guard_);
    tree_.MakeFolder(path);
}

void ScriptedFtpServer::WriteFile(const std::string& path, std::string bytes)
{
    const std::lock_guard lock(guard_);
    tree_.WriteFile(path, std::move(bytes));
}

std::optional<std::string> ScriptedFtpServer::File(const std::string& path) const
{
    const std::lock_guard lock(guard_);
    const MemoryTree::Entry* const entry = tree_.Find(path);
    return entry == nullptr || entry->isFolder ? std::nullopt : std::optional(entry->bytes);
}

bool ScriptedFtpServer::HasFolder(const std::string& path) const
{
    const std::lock_guard lock(guard_);
    return tree_.IsFolder(path);
}

void ScriptedFtpServer::DropConnections()
{
    const std::lock_guard lock(guard_);
    for (const Visitor& visitor : visitors_)
        *visitor.stop = true;
}

std::vector<std::string> ScriptedFtpServer::Commands() const
{
    const std::lock_guard lock(guard_);
    return commands_;
}

int ScriptedFtpServer::Count(const std::string& begin) const
{
    const std::lock_guard lock(guard_);
    return static_cast<int>(
        std::count_if(commands_.begin(), commands_.end(),
                      [&](const std::string& line) { return line.starts_with(begin); }));
}

int ScriptedFtpServer::Connections() const
{
    const std::lock_guard lock(guard_);
    return connections_;
}

int ScriptedFtpServer::Logins() const
{
    const std::lock_guard lock(guard_);
    return logins_;
}

bool ScriptedFtpServer::SeesTheEndOf(int connections) const
{
    constexpr int tries = 8000;
    constexpr std::chrono::milliseconds pause(5);
    for (int i = 0; i < tries; ++i)
    {
        {
            const std::lock_guard lock(guard_);
            if (ended_ >= connections)
                return true;
        }
        std::this_thread::sleep_for(pause);
    }
    return false;
}

std::optional<FtpAnswer> ScriptedFtpServer::AnswerFor(const std::string& line) const
{
    const std::lock_guard lock(guard_);
    for (const std::string& key : {line, line.substr(0, line.find(' '))})
    {
        if (const auto found = answers_.find(key); found != answers_.end())
            return found->second;
    }
    return std::nullopt;
}

} // namespace tarnwell::test
