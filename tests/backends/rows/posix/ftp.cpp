#include "backends/rows/ftp.h"
#include "support/ftp/posix/realserver.h"

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// One for all data of a process, as long as there is some. Of the servers it is the one that every
// user can confine to its folder.
std::shared_ptr<const RealFtpServer> TheServer()
{
    static std::weak_ptr<const RealFtpServer> running;
    std::shared_ptr<const RealFtpServer> server = running.lock();
    if (!server)
        running = server = std::make_shared<const RealFtpServer>(FtpServerKind::Pyftpdlib);
    return server;
}

// A folder below the server's.
class FtpData final : public BackendData
{
public:
    FtpData()
    {
        static int made = 0;
        folder_ = std::to_string(++made);
        fs::create_directory(server_->Folder() / folder_);
    }
    std::u16string Address(std::u16string_view name, const std::u16string&) const override
    {
        const std::u16string address =
            u"ftp://" + server_->Host() + u"/" + fs::path(folder_).u16string();
        return name.empty() ? address : address + u"/" + std::u16string(name);
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string&) override
    {
        WriteBytes(OnDisk(name).u16string(), bytes);
        return {};
    }
    void MakeFolder(std::u16string_view name) override
    {
        fs::create_directory(OnDisk(name));
    }
    fs::path OnDisk(std::u16string_view name) const override
    {
        return server_->Folder() / folder_ / name;
    }
    // The port in an address tells servers apart; what is connected to is what the host says.
    CredentialsAnswer Credentials() const override
    {
        return {S_OK, u"ftp", u"secret", server_->Host()};
    }

private:
    const std::shared_ptr<const RealFtpServer> server_ = TheServer();
    std::string folder_;
};

} // namespace

std::unique_ptr<BackendData> MakeFtpData()
{
    return std::make_unique<FtpData>();
}

std::vector<std::u16string_view> NamesOnFtp()
{
    return {u"with blank.txt",
            u" leading blank",
            u"trailing blank ",
            u"-l",
            u"#1@2!3~4`5^6$7+8-9_0",
            u"50%41",
            u"a;b,c'd&e=(f)[g]{h}",
            u"what?",
            u"a*b",
            u"a\"b",
            u"back\\slash",
            u".dot",
            u"a -> b",
            u"\u00E9t\u00E9.txt",
            u"\u65E5\u672C\u8A9E.txt",
            u"\U0001F600.txt"};
}

std::vector<NotShown> NotShownOnFtp()
{
    return {};
}

} // namespace tarnwell::test
