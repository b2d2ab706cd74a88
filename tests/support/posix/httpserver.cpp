#include "support/posix/httpserver.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* modules[] = {"mpm_event",  "authn_core", "authn_file", "auth_basic",
                                   "authz_core", "authz_user", "dav",        "dav_svn"};

// The server gives up the rights of its starter, so what it reads is opened to all.
void OpenToAll(const fs::path& path)
{
    constexpr fs::perms readable = fs::perms::owner_all | fs::perms::group_read |
                                   fs::perms::group_exec | fs::perms::others_read |
                                   fs::perms::others_exec;
    fs::permissions(path, readable);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path))
        fs::permissions(entry, readable);
}

std::string Location(const std::string& path, const SvnRepository& repository,
                     const std::string& require)
{
    return "<Location /" + path + ">\nDAV svn\nSVNPath \"" + repository.Path().string() +
           "\"\nAuthType Basic\nAuthName tests\nAuthUserFile users\nRequire " + require +
           "\n</Location>\n";
}

std::string Settings(const fs::path& folder, const SvnRepository& repository, int port)
{
    std::string text = "ServerRoot \"" + folder.string() +
                       "\"\nServerName 127.0.0.1\nListen 127.0.0.1:" + std::to_string(port) +
                       "\nPidFile pid\nErrorLog errors\nDefaultRuntimeDir run\n"
                       "User www-data\nGroup www-data\nStartServers 1\n";
    for (const std::string module : modules)
        text += "LoadModule " + module + "_module /usr/lib/apache2/modules/mod_" + module + ".so\n";
    return text + Location("r", repository, "valid-user") +
           Location("open", repository, "all granted") +
           Location("forbidden", repository, "user nobody-at-all");
}

std::vector<std::string> Command(const TempFolder& folder, const SvnRepository& repository,
                                 int port)
{
    WriteBytes(folder / u"settings", Settings(folder.Path(), repository, port));
    // "secret".
    WriteBytes(folder / u"users", "ann:{SHA}5en6G6MezRroT3XKqkdPOmY/BfQ=\n");
    fs::create_directory(folder.Path() / "run");
    OpenToAll(folder.Path());
    OpenToAll(repository.Path().parent_path());
    return {"/usr/sbin/apache2", "-D", "FOREGROUND", "-f", (folder.Path() / "settings").string()};
}

} // namespace

HttpServer::HttpServer(const SvnRepository& repository)
    : process_(Command(folder_, repository, port_), port_)
{
}

std::u16string HttpServer::Host() const
{
    const std::string text = "127.0.0.1:" + std::to_string(port_);
    return {text.begin(), text.end()};
}

} // namespace tarnwell::test
