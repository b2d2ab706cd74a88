#include "backends/rows/ftp.h"
#include "support/ftp/scriptedserver.h"
#include "support/wine.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

// A server of its own in a thread of the test, with its files in memory: real ones are programs of
// the other platform.
class FtpData final : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string&) const override
    {
        return u"ftp://" + server_.Host() + u"/n" +
               (name.empty() ? std::u16string() : u"/" + std::u16string(name));
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string&) override
    {
        server_.WriteFile(Path(name), std::string(bytes));
        return {};
    }
    void MakeFolder(std::u16string_view name) override
    {
        server_.MakeFolder(Path(name));
    }
    bool Has(std::u16string_view name) const override
    {
        return HasFolder(name) || server_.File(Path(name)).has_value();
    }
    bool HasFolder(std::u16string_view name) const override
    {
        return server_.HasFolder(Path(name));
    }
    std::string Held(std::u16string_view name) const override
    {
        return server_.File(Path(name)).value();
    }
    CredentialsAnswer Credentials() const override
    {
        return {S_OK, u"ftp", u"secret", server_.Host()};
    }

    FtpData()
    {
        server_.MakeFolder("/n");
    }

private:
    static std::string Path(std::u16string_view name)
    {
        return "/n/" + EncodeName(name).value();
    }

    ScriptedFtpServer server_;
};

} // namespace

std::unique_ptr<BackendData> MakeFtpData()
{
    return std::make_unique<FtpData>();
}

std::vector<std::u16string_view> NamesOnFtp()
{
    return {u"UPPER.TXT", u"dots.in.name", u"a-b_c+d", u"~x"};
}

std::vector<NotShown> NotShownOnFtp()
{
    if (!IsUnderWine())
        return {};
    constexpr const char* emptyFolders = "Wine gives error 0 for an empty FTP folder";
    constexpr const char* lookups = "Wine lists what it is to look for";
    constexpr const char* writing = "Wine writes to a transfer that reads";
    return {{"EmptyFolders.HaveNoItems", emptyFolders},
            {"Writing.GivesFoldersNamesOfAllKinds", lookups},
            {"Writing.MakesFoldersOnTheWayIfItIsTold", lookups},
            {"ReadingStreams.RefuseToWrite", writing},
            {"Contract.FailedCallsClearTheirOutValues/FtpStream", writing}};
}

} // namespace tarnwell::test
