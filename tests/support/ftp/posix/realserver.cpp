#include "support/ftp/posix/realserver.h"

#include "support/process.h"

#include <algorithm>
#include <grp.h>
#include <ostream>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

struct Place
{
    fs::path folder;
    fs::path root;
    int port;

    std::string In(const char* name) const
    {
        return (folder / name).string();
    }
    void Write(const char* name, const std::string& text) const
    {
        WriteBytes((folder / name).u16string(), text);
    }
};

struct Kind
{
    const char* name;
    // Writes the settings; the result is how the server is started.
    std::vector<std::string> (*prepare)(const Place& place);
    // Stands once in the file "log" for each login.
    const char* login;
};

// Where tests/support/ftp/posix/get-servers puts those that can't be installed.
fs::path Unpacked(const char* path)
{
    const fs::path build = ThisProgram().parent_path().parent_path().parent_path();
    fs::path found = build / "ftpservers" / path;
    if (!fs::exists(found))
        throw std::runtime_error("no FTP servers: run tests/support/ftp/posix/get-servers");
    return found;
}

std::string UserName()
{
    const passwd* const user = getpwuid(geteuid());
    return user == nullptr ? "" : user->pw_name;
}

std::string GroupName()
{
    const group* const found = getgrgid(getegid());
    return found == nullptr ? "" : found->gr_name;
}

void GiveToNobody(const fs::path& folder)
{
    const passwd* const nobody = getpwnam("nobody");
    if (nobody == nullptr)
        throw std::runtime_error("there is no user \"nobody\"");
    const auto give = [&](const fs::path& path) {
        if (chown(path.c_str(), nobody->pw_uid, nobody->pw_gid) != 0)
            throw std::runtime_error("can't give away " + path.string());
    };
    give(folder);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        give(entry.path());
}

std::vector<std::string> PrepareVsftpd(const Place& place)
{
    place.Write("passwords", "secret\n");
    place.Write("log", "");
    fs::create_directory(place.folder / "empty");
    const std::string settings[] = {
        "listen=YES",
        "listen_address=127.0.0.1",
        "listen_port=" + std::to_string(place.port),
        "background=NO",
        // With the rights of a user who owns nothing but the test's folder. It can't be shut in
        // there: its root would have to be read-only.
        "run_as_launching_user=YES",
        "ftp_username=nobody",
        "nopriv_user=nobody",
        "seccomp_sandbox=NO",
        "isolate=NO",
        "isolate_network=NO",
        "secure_chroot_dir=" + place.In("empty"),
        // The one user that is no user of the system; here with a password.
        "anonymous_enable=YES",
        "local_enable=NO",
        "secure_email_list_enable=YES",
        "email_password_file=" + place.In("passwords"),
        "delay_failed_login=0",
        "anon_root=" + place.root.string(),
        "allow_writeable_chroot=YES",
        "write_enable=YES",
        "anon_upload_enable=YES",
        "anon_mkdir_write_enable=YES",
        "anon_other_write_enable=YES",
        "anon_world_readable_only=NO",
        "anon_umask=022",
        "use_localtime=YES",
        "xferlog_enable=YES",
        "vsftpd_log_file=" + place.In("log"),
    };
    std::string text;
    for (const std::string& line : settings)
        text += line + "\n";
    place.Write("settings", text);
    GiveToNobody(place.folder);
    return {"setpriv",           "--reuid=nobody", "--regid=nogroup",
            "--clear-groups",    "--no-new-privs", Unpacked("usr/sbin/vsftpd").string(),
            place.In("settings")};
}

std::vector<std::string> PrepareProftpd(const Place& place)
{
    const std::string user = std::to_string(geteuid()) + ":" + std::to_string(getegid());
    // "secret".
    place.Write("users", "ftp:$5$abc$qsg6EHbUzHQzF1POlD7zUwBINSELQxypPaeDcZe6vH0:" + user +
                             "::" + place.root.string() + ":/bin/sh\n");
    fs::permissions(place.folder / "users", fs::perms::owner_read | fs::perms::owner_write);
    const std::string settings[] = {
        "ServerType standalone",
        "ServerName tests",
        "DefaultAddress 127.0.0.1",
        "Port " + std::to_string(place.port),
        "UseIPv6 off",
        "UseReverseDNS off",
        "ModulePath " + Unpacked("usr/lib/proftpd").string(),
        "User " + UserName(),
        "Group " + GroupName(),
        "RootLogin on",
        "AuthOrder mod_auth_file.c",
        "AuthUserFile " + place.In("users"),
        "RequireValidShell off",
        "DefaultRoot ~",
        "DelayEngine off",
        "ControlsEngine off",
        "WtmpLog off",
        "TransferLog none",
        "SystemLog none",
        "PidFile " + place.In("pid"),
        "ScoreboardFile " + place.In("scoreboard"),
        "AllowOverwrite on",
        "Umask 022",
        "TimesGMT off",
        "UseEncoding off",
        "LogFormat commands \"%r %s\"",
        "ExtendedLog " + place.In("log") + " ALL commands",
    };
    std::string text;
    for (const std::string& line : settings)
        text += line + "\n";
    place.Write("settings", text);
    return {Unpacked("usr/sbin/proftpd").string(), "--nodaemon", "--quiet", "--config",
            place.In("settings")};
}

constexpr const char* pyftpdlibProgram = R"(
import logging, sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.ioloop import AsyncChat
from pyftpdlib.servers import FTPServer
port, root, log = sys.argv[1:]
logging.basicConfig(filename=log, level=logging.INFO)
class Handler(FTPHandler):
    authorizer = DummyAuthorizer()
    auth_failed_timeout = 0
    use_gmt_times = False
    unicode_errors = "surrogateescape"
    # Replies name files as well; the original knows no other bytes there.
    def push(self, text):
        AsyncChat.push(self, text.encode("utf8", self.unicode_errors))
Handler.authorizer.add_user("ftp", "secret", root, perm="elradfmwMT")
FTPServer(("127.0.0.1", int(port)), Handler).serve_forever()
)";

std::vector<std::string> PreparePyftpdlib(const Place& place)
{
    return {"/usr/bin/python3",  "-c",           pyftpdlibProgram, std::to_string(place.port),
            place.root.string(), place.In("log")};
}

const Kind& KindOf(FtpServerKind kind)
{
    static constexpr Kind kinds[] = {
        {"vsftpd", PrepareVsftpd, "OK LOGIN"},
        {"proftpd", PrepareProftpd, "PASS (hidden) 230"},
        {"pyftpdlib", PreparePyftpdlib, "USER 'ftp' logged in"},
    };
    return kinds[static_cast<std::size_t>(kind)];
}

fs::path MadeFolder(const TempFolder& folder)
{
    fs::path root = folder.Path() / "root";
    fs::create_directory(root);
    return root;
}

} // namespace

void PrintTo(FtpServerKind kind, std::ostream* out)
{
    *out << KindOf(kind).name;
}

std::vector<FtpServerKind> ConfinedFtpServers()
{
    if (geteuid() != 0)
        return {FtpServerKind::Pyftpdlib};
    return {FtpServerKind::Vsftpd, FtpServerKind::Proftpd, FtpServerKind::Pyftpdlib};
}

RealFtpServer::RealFtpServer(FtpServerKind kind) : kind_(kind), root_(MadeFolder(folder_))
{
    const std::vector<FtpServerKind> confined = ConfinedFtpServers();
    if (std::find(confined.begin(), confined.end(), kind) == confined.end())
        throw std::runtime_error(std::string("only root can confine ") + KindOf(kind).name);
    const Place place{folder_.Path(), root_, port_};
    process_ = std::make_unique<const ServerProcess>(KindOf(kind).prepare(place), port_);
}

int RealFtpServer::Port() const
{
    return port_;
}

std::u16string RealFtpServer::Host() const
{
    const std::string text = "127.0.0.1:" + std::to_string(port_);
    return {text.begin(), text.end()};
}

const fs::path& RealFtpServer::Folder() const
{
    return root_;
}

int RealFtpServer::Logins() const
{
    const std::string log = ReadBytes(folder_ / u"log");
    const std::string_view login = KindOf(kind_).login;
    int count = 0;
    for (std::size_t at = log.find(login); at != std::string::npos; at = log.find(login, at + 1))
        ++count;
    return count;
}

} // namespace tarnwell::test
