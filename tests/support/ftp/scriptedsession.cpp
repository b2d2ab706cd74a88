#include "support/ftp/scriptedsession.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <utility>

namespace tarnwell::test
{

const ScriptedSession::Command ScriptedSession::commands[] = {
    {"USER", &ScriptedSession::User},         {"PASS", &ScriptedSession::Pass},
    {"TYPE", &ScriptedSession::Welcome},      {"NOOP", &ScriptedSession::Welcome},
    {"MODE", &ScriptedSession::Welcome},      {"STRU", &ScriptedSession::Welcome},
    {"PWD", &ScriptedSession::WorkingFolder}, {"CWD", &ScriptedSession::Change},
    {"CDUP", &ScriptedSession::ChangeUp},     {"FEAT", &ScriptedSession::Features},
    {"EPSV", &ScriptedSession::Extended},     {"PASV", &ScriptedSession::Passive},
    {"EPRT", &ScriptedSession::ExtendedPort}, {"PORT", &ScriptedSession::PlainPort},
    {"LIST", &ScriptedSession::List},         {"MLSD", &ScriptedSession::ListFacts},
    {"NLST", &ScriptedSession::Names},        {"RETR", &ScriptedSession::Retrieve},
    {"STOR", &ScriptedSession::Store},        {"SIZE", &ScriptedSession::Size},
    {"DELE", &ScriptedSession::Delete},       {"MKD", &ScriptedSession::MakeFolder},
    {"RMD", &ScriptedSession::RemoveFolder},  {"QUIT", &ScriptedSession::Quit},
};

ScriptedSession::ScriptedSession(ScriptedFtpServer& server, Socket control, const StopFlag& stop)
    : server_(server), control_(std::move(control)), stop_(stop)
{
}

void ScriptedSession::Run()
{
    {
        const std::lock_guard lock(server_.guard_);
        folder_ = server_.entry_;
    }
    if (const std::optional<FtpAnswer> greeting = server_.AnswerFor(""))
        Play(*greeting);
    else
        Reply("220 ready\r\n");
    while (!hasEnded_ && !stop_)
    {
        const std::optional<std::string> line = NextLine();
        if (!line)
            return;
        Obey(*line);
    }
}

std::optional<std::string> ScriptedSession::NextLine()
{
    for (;;)
    {
        if (const std::size_t end = received_.find("\r\n"); end != std::string::npos)
        {
            std::string line = received_.substr(0, end);
            received_.erase(0, end + 2);
            return line;
        }
        constexpr std::size_t piece = 4096;
        const std::string more = control_.Receive(piece, stop_);
        if (more.empty())
            return std::nullopt;
        received_ += more;
    }
}

void ScriptedSession::Obey(const std::string& line)
{
    {
        const std::lock_guard lock(server_.guard_);
        server_.commands_.push_back(line);
    }
    if (const std::optional<FtpAnswer> answer = server_.AnswerFor(line))
        return Play(*answer);
    const std::size_t blank = std::min(line.find(' '), line.size());
    std::string word = line.substr(0, blank);
    std::transform(word.begin(), word.end(), word.begin(), [](char letter) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    });
    const std::string argument = line.substr(std::min(blank + 1, line.size()));
    for (const Command& command : commands)
    {
        if (word == command.word)
            return (this->*command.handler)(argument);
    }
    Reply("500 not known\r\n");
}

void ScriptedSession::Reply(const std::string& text, bool inPieces)
{
    const std::size_t piece = inPieces ? 1 : std::max<std::size_t>(text.size(), 1);
    for (std::size_t at = 0; at < text.size(); at += piece)
    {
        if (!control_.Send(std::string_view(text).substr(at, piece), stop_))
            hasEnded_ = true;
    }
}

void ScriptedSession::ReplyIf(bool done, const std::string& success)
{
    Reply(done ? success : "550 refused\r\n");
}

void ScriptedSession::Play(const FtpAnswer& answer)
{
    for (std::uint64_t i = 0; i < answer.firstTimes && !hasEnded_ && !stop_; ++i)
        Reply(answer.first, answer.inPieces);
    if (answer.data || answer.takes || answer.stalls || answer.breaksData)
    {
        Socket data = OpenData();
        for (std::uint64_t i = 0; answer.data && data && i < answer.times; ++i)
        {
            if (!data.Send(*answer.data, stop_))
                break;
        }
        for (std::size_t taken = 0; answer.takes && taken < *answer.takes;)
        {
            const std::string bytes = data.Receive(*answer.takes - taken, stop_);
            if (bytes.empty())
                break;
            taken += bytes.size();
        }
        if (answer.breaksData && data)
            data.Break();
        while (answer.stalls && !stop_)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    Reply(answer.last, answer.inPieces);
    hasEnded_ = hasEnded_ || answer.hangsUp;
}

// ---- The commands ----

void ScriptedSession::User(const std::string& name)
{
    Reply(name == "nobody" ? "530 no such user\r\n" : "331 password, please\r\n");
}

void ScriptedSession::Pass(const std::string& password)
{
    if (password == "wrong")
        return Reply("530 login incorrect\r\n");
    {
        const std::lock_guard lock(server_.guard_);
        ++server_.logins_;
    }
    Reply("230 logged in\r\n");
}

void ScriptedSession::Welcome(const std::string&)
{
    Reply("200 fine\r\n");
}

void ScriptedSession::WorkingFolder(const std::string&)
{
    Reply("257 \"" + folder_ + "\" is where you are\r\n");
}

std::string ScriptedSession::Resolved(const std::string& path) const
{
    return MemoryTree::Resolve(folder_, path);
}

void ScriptedSession::Change(const std::string& path)
{
    const std::string wanted = Resolved(path);
    const bool isThere = server_.HasFolder(wanted);
    if (isThere)
        folder_ = wanted;
    ReplyIf(isThere, "250 there you are\r\n");
}

void ScriptedSession::ChangeUp(const std::string&)
{
    Change("..");
}

void ScriptedSession::Features(const std::string&)
{
    const std::lock_guard lock(server_.guard_);
    Reply(server_.offersFacts_ ? "211-Features:\r\n MLST type*;size*;modify*;perm*;\r\n211 End\r\n"
                               : "211 none\r\n");
}

void ScriptedSession::Extended(const std::string&)
{
    passive_ = Socket::Listening();
    Reply("229 Entering Extended Passive Mode (|||" + std::to_string(passive_.Port()) + "|)\r\n");
}

void ScriptedSession::Passive(const std::string&)
{
    passive_ = Socket::Listening();
    const int port = passive_.Port();
    std::string address = "127,0,0,1";
    {
        const std::lock_guard lock(server_.guard_);
        if (!server_.claimed_.empty())
            address = server_.claimed_;
    }
    Reply("227 Entering Passive Mode (" + address + "," + std::to_string(port / 256) + "," +
          std::to_string(port % 256) + ")\r\n");
}

void ScriptedSession::ExtendedPort(const std::string& address)
{
    // As in |1|127.0.0.1|4711|.
    const std::size_t end = address.rfind('|');
    const std::size_t begin = address.rfind('|', end - 1);
    activePort_ = std::atoi(address.substr(begin + 1, end - begin - 1).c_str());
    Reply("200 fine\r\n");
}

void ScriptedSession::PlainPort(const std::string& address)
{
    const std::size_t low = address.rfind(',');
    const std::size_t high = address.rfind(',', low - 1);
    activePort_ =
        std::atoi(address.c_str() + high + 1) * 256 + std::atoi(address.c_str() + low + 1);
    Reply("200 fine\r\n");
}

Socket ScriptedSession::OpenData()
{
    if (passive_)
        return std::exchange(passive_, Socket()).Accept(stop_);
    return Socket::Connected(std::exchange(activePort_, 0));
}

void ScriptedSession::SendListing(std::string (MemoryTree::*list)(const std::string&) const,
                                  const std::string& path)
{
    const std::string folder = Resolved(path.starts_with('-') ? "" : path);
    std::string text;
    {
        const std::lock_guard lock(server_.guard_);
        if (!server_.tree_.IsFolder(folder))
            return Reply("550 no such folder\r\n");
        text = (server_.tree_.*list)(folder);
    }
    Play({.first = "150 here it comes\r\n", .data = text, .last = "226 done\r\n"});
}

void ScriptedSession::List(const std::string& path)
{
    SendListing(&MemoryTree::List, path);
}

void ScriptedSession::ListFacts(const std::string& path)
{
    bool isOffered = false;
    {
        const std::lock_guard lock(server_.guard_);
        isOffered = server_.offersFacts_;
    }
    if (!isOffered)
        return Reply("500 not known\r\n");
    SendListing(&MemoryTree::ListFacts, path);
}

void ScriptedSession::Names(const std::string&)
{
    Reply("502 not here\r\n");
}

void ScriptedSession::Retrieve(const std::string& path)
{
    const std::optional<std::string> bytes = server_.File(Resolved(path));
    if (!bytes)
        return Reply("550 no such file\r\n");
    Play({.first = "150 here it comes\r\n", .data = *bytes, .last = "226 done\r\n"});
}

void ScriptedSession::Store(const std::string& path)
{
    const std::string target = Resolved(path);
    {
        const std::lock_guard lock(server_.guard_);
        if (!server_.tree_.WriteFile(target, ""))
            return Reply("553 refused\r\n");
    }
    Reply("150 go on\r\n");
    const Socket data = OpenData();
    constexpr std::size_t piece = 65536;
    while (data)
    {
        const std::string bytes = data.Receive(piece, stop_);
        if (bytes.empty())
            break;
        const std::lock_guard lock(server_.guard_);
        server_.tree_.Append(target, bytes);
    }
    Reply("226 stored\r\n");
}

void ScriptedSession::Size(const std::string& path)
{
    const std::optional<std::string> bytes = server_.File(Resolved(path));
    ReplyIf(bytes.has_value(), "213 " + std::to_string(bytes ? bytes->size() : 0) + "\r\n");
}

void ScriptedSession::Delete(const std::string& path)
{
    const std::lock_guard lock(server_.guard_);
    ReplyIf(server_.tree_.DeleteFile(Resolved(path)), "250 gone\r\n");
}

void ScriptedSession::MakeFolder(const std::string& path)
{
    const std::lock_guard lock(server_.guard_);
    ReplyIf(server_.tree_.MakeFolder(Resolved(path)), "257 \"" + path + "\" is made\r\n");
}

void ScriptedSession::RemoveFolder(const std::string& path)
{
    const std::lock_guard lock(server_.guard_);
    ReplyIf(server_.tree_.RemoveFolder(Resolved(path)), "250 gone\r\n");
}

void ScriptedSession::Quit(const std::string&)
{
    Reply("221 bye\r\n");
    hasEnded_ = true;
}

} // namespace tarnwell::test
