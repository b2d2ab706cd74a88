#include "backends/rows/subversion.h"
#include "support/environmentvalue.h"
#include "support/posix/svnserve.h"

namespace tarnwell::test
{
namespace
{

constexpr std::u16string_view refused = u"Access to the repository of ";

std::u16string Served(BackendData& data, const std::string& password)
{
    auto& subversion = static_cast<SubversionData&>(data);
    const auto server = std::make_shared<const SvnServe>(subversion.Repository(), "none", password);
    subversion.Keep(server);
    return u"svn://ann:secret@" + server->Host() + u"/text.txt";
}

std::u16string WithAWrongPassword(BackendData& data)
{
    return Served(data, "other");
}

std::u16string WithoutTheRight(BackendData& data)
{
    std::u16string address = Served(data, "secret");
    const SvnRepository& repository = static_cast<SubversionData&>(data).Repository();
    repository.Configure("svnserve.conf", "[general]\nanon-access = none\nauth-access = read\n"
                                          "password-db = passwd\nauthz-db = authz\n");
    repository.Configure("authz", "[/]\nann = r\n[/text.txt]\nann =\n");
    return address;
}

// Another home, as long as the data is there.
struct Home
{
    TempFolder folder;
    EnvironmentValue variable{"HOME", folder.Path().string().c_str()};
};

std::u16string WithBrokenUserSettings(BackendData& data)
{
    auto home = std::make_shared<const Home>();
    std::filesystem::create_directory(home->folder.Path() / ".subversion");
    WriteBytes(home->folder / u".subversion/config", "[helpers\nbroken");
    static_cast<SubversionData&>(data).Keep(std::move(home));
    return data.Address(u"text.txt");
}

} // namespace

std::vector<MadeFailure> SubversionFailuresHere()
{
    return {{"a wrong password", E_ACCESSDENIED, refused, WithAWrongPassword},
            {"no right to read it", E_ACCESSDENIED, refused, WithoutTheRight},
            {"broken settings of the user's", HistoryBadSettings, u"The settings of ",
             WithBrokenUserSettings}};
}

} // namespace tarnwell::test
