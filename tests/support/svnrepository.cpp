#include "support/svnrepository.h"

#include "support/clients.h"

#include <tarnwell/text.h>

#include <stdexcept>

namespace tarnwell::test
{

namespace
{

// In addresses, a path with a drive has a slash in front.
std::u16string AddressPath(const std::filesystem::path& path)
{
    const std::u16string text = path.generic_u16string();
    return text.starts_with(u'/') ? text : u"/" + text;
}

std::u16string Below(std::u16string address, std::u16string_view path)
{
    if (!path.empty())
        address.append(u"/").append(path);
    return address;
}

// The program has no end of its options.
std::string Named(const std::string& name)
{
    return name.starts_with('-') ? "./" + name : name;
}

} // namespace

SvnRepository::SvnRepository()
{
    if (WhyNoClients().empty())
        Run("svnadmin", {"create", Path().string()});
}

std::filesystem::path SvnRepository::Path() const
{
    return folder_.Path() / "r";
}

std::string SvnRepository::Url() const
{
    return EncodeName(u"file://" + AddressPath(Path())).value();
}

std::u16string SvnRepository::Address(std::u16string_view path) const
{
    return Below(u"svnfile://" + AddressPath(Path()), path);
}

std::u16string SvnRepository::ListedAddress(std::u16string_view path) const
{
    return Below(u"svn" + DecodeName(Svn({"info", "--show-item", "url", Url()})), path);
}

int SvnRepository::Commit(const std::string& name, std::string_view bytes,
                          const std::string& message, const std::string& author) const
{
    WriteBytes(folder_ / u"content", bytes);
    return Change({"put", (folder_.Path() / "content").string(), Named(name)}, author, message);
}

int SvnRepository::MakeFolder(const std::string& name) const
{
    return Change({"mkdir", name}, "Ann", "folder");
}

int SvnRepository::Remove(const std::string& name, const std::string& message) const
{
    return Change({"rm", name}, "Ann", message);
}

int SvnRepository::Rename(const std::string& from, const std::string& to,
                          const std::string& message) const
{
    return Change({"mv", from, to}, "Ann", message);
}

int SvnRepository::CommitMarked(const std::string& name, std::string_view bytes,
                                const std::string& property) const
{
    WriteBytes(folder_ / u"content", bytes);
    return Change(
        {"put", (folder_.Path() / "content").string(), name, "propset", property, "*", name});
}

int SvnRepository::Latest() const
{
    return std::stoi(Svn({"info", "--show-item", "revision", Url()}));
}

std::string SvnRepository::Look(std::vector<std::string> arguments, const std::string& path) const
{
    arguments.push_back(Path().string());
    if (!path.empty())
        arguments.push_back(path);
    return Run("svnlook", arguments);
}

void SvnRepository::CheckOut(const std::filesystem::path& folder) const
{
    Svn({"checkout", "-q", Url(), folder.string()});
}

std::string SvnRepository::Svn(const std::vector<std::string>& arguments) const
{
    return Run("svn", arguments);
}

void SvnRepository::ForgetAuthor(int revision) const
{
    Run("svnadmin", {"delrevprop", Path().string(), "-r", std::to_string(revision), "svn:author"});
}

void SvnRepository::Configure(const std::string& file, std::string_view text) const
{
    WriteBytes((Path() / "conf" / file).u16string(), text);
}

std::string SvnRepository::Run(const std::string& program,
                               const std::vector<std::string>& arguments) const
{
    ProcessCall call{.environment = {{"LC_ALL", "C.UTF-8"}, {"LANGUAGE", "en"}},
                     .folder = folder_.Path()};
    for (const std::string& argument : arguments)
        call.arguments.push_back(DecodeName(argument));
    ProcessRun run = RunClient(program, call);
    if (run.exitCode != 0)
        throw std::runtime_error(program + " " + arguments[0] + ": " + run.output + run.errors);
    while (run.output.ends_with('\n') || run.output.ends_with('\r'))
        run.output.pop_back();
    return run.output;
}

// The client tells "r12 committed by Ann at ...".
int SvnRepository::Change(const std::vector<std::string>& action, const std::string& author,
                          const std::string& message) const
{
    std::vector<std::string> arguments{
        "--non-interactive", "--username", author, "-m", message, "-U", Url()};
    arguments.insert(arguments.end(), action.begin(), action.end());
    return std::stoi(Run("svnmucc", arguments).substr(1));
}

} // namespace tarnwell::test
