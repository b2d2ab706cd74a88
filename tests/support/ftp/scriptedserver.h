// An FTP server in a thread of the test, on 127.0.0.1. By itself it behaves well and keeps its
// files in memory; for what real servers don't do on demand, a test tells it how to answer.
#pragma once

#include "support/ftp/memorytree.h"
#include "support/ftp/socket.h"

#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tarnwell::test
{

// How the server meets one command: a reply, perhaps a transfer over the data connection, and what
// it says after that. Replies are whole, with their codes and CR LF; an empty one isn't sent, so
// that an empty answer is silence.
struct FtpAnswer
{
    std::string first = {};
    // Sent over the data connection, `times` times.
    std::optional<std::string> data = std::nullopt;
    std::string last = {};
    std::uint64_t times = 1;
    // The first reply as well, that often.
    std::uint64_t firstTimes = 1;
    // Of an upload, so much is read; `data` must be none.
    std::optional<std::size_t> takes = std::nullopt;
    // The data connection breaks behind the data, and doesn't end.
    bool breaksData = false;
    // The data connection stays open, and nothing more is said.
    bool stalls = false;
    // The control connection ends.
    bool hangsUp = false;
    // Replies go out byte by byte.
    bool inPieces = false;
};

class ScriptedFtpServer
{
public:
    ScriptedFtpServer();
    ScriptedFtpServer(const ScriptedFtpServer&) = delete;
    ScriptedFtpServer& operator=(const ScriptedFtpServer&) = delete;
    // Cuts whatever still stands.
    ~ScriptedFtpServer();

    int Port() const;
    // "127.0.0.1" and the port.
    std::u16string Host() const;

    // All users and passwords are welcome, but for the user "nobody" and the password "wrong".

    // For all commands of a word ("RETR") or one command as it comes ("RETR a.txt"), the latter
    // first; "" is the greeting. Holds until the next for the same.
    void Answer(const std::string& command, FtpAnswer answer);
    void BehaveAgain(const std::string& command);
    // For PASV; with one of these EPSV is refused.
    void ClaimAddress(const std::string& commaSeparated);
    // From now on MLSD lists folders and FEAT says so.
    void OfferFacts();

    // Where those who come from now on are at first.
    void BeginAt(const std::string& folder);

    void MakeFolder(const std::string& path);
    void WriteFile(const std::string& path, std::string bytes);
    // Nothing if there is no such file.
    std::optional<std::string> File(const std::string& path) const;
    bool HasFolder(const std::string& path) const;

    // Without waiting for the clients.
    void DropConnections();
    // The lines that came, in order, of all connections.
    std::vector<std::string> Commands() const;
    // How many of these begin so.
    int Count(const std::string& begin) const;
    int Connections() const;
    int Logins() const;
    // Waits, within reason, until so many connections have ended, whoever ended them.
    bool SeesTheEndOf(int connections) const;

private:
    friend class ScriptedSession;
    struct Visitor
    {
        std::shared_ptr<StopFlag> stop;
        std::thread thread;
    };

    void Serve();
    std::optional<FtpAnswer> AnswerFor(const std::string& line) const;

    mutable std::mutex guard_;
    MemoryTree tree_;
    std::map<std::string, FtpAnswer> answers_;
    std::string claimed_;
    bool offersFacts_ = false;
    std::string entry_ = "/";
    std::vector<std::string> commands_;
    int logins_ = 0;
    int connections_ = 0;
    int ended_ = 0;

    StopFlag stop_ = false;
    Socket listener_;
    std::list<Visitor> visitors_;
    std::thread thread_;
};

} // namespace tarnwell::test
