// One visit to the scripted server.
#pragma once

#include "support/ftp/scriptedserver.h"

namespace tarnwell::test
{

class ScriptedSession
{
public:
    ScriptedSession(ScriptedFtpServer& server, Socket control, const StopFlag& stop);

    // To its end.
    void Run();

private:
    using Handler = void (ScriptedSession::*)(const std::string& argument);
    struct Command
    {
        const char* word;
        Handler handler;
    };
    static const Command commands[];

    std::optional<std::string> NextLine();
    void Obey(const std::string& line);
    void Play(const FtpAnswer& answer);
    void Reply(const std::string& text, bool inPieces = false);
    void ReplyIf(bool done, const std::string& success);

    void User(const std::string& name);
    void Pass(const std::string& password);
    void Welcome(const std::string&);
    void WorkingFolder(const std::string&);
    void Change(const std::string& path);
    void ChangeUp(const std::string&);
    void Features(const std::string&);
    void Extended(const std::string&);
    void Passive(const std::string&);
    void ExtendedPort(const std::string& address);
    void PlainPort(const std::string& address);
    void List(const std::string& path);
    void ListFacts(const std::string& path);
    void Names(const std::string& path);
    void Retrieve(const std::string& path);
    void Store(const std::string& path);
    void Size(const std::string& path);
    void Delete(const std::string& path);
    void MakeFolder(const std::string& path);
    void RemoveFolder(const std::string& path);
    void Quit(const std::string&);

    std::string Resolved(const std::string& path) const;
    Socket OpenData();
    void SendListing(std::string (MemoryTree::*list)(const std::string&) const,
                     const std::string& path);

    ScriptedFtpServer& server_;
    Socket control_;
    const StopFlag& stop_;
    std::string received_;
    std::string folder_;
    Socket passive_;
    int activePort_ = 0;
    bool hasEnded_ = false;
};

} // namespace tarnwell::test
