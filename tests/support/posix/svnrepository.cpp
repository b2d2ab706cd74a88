#include "support/posix/svnrepository.h"

#include "support/posix/shellrun.h"

namespace tarnwell::test
{

SvnRepository::SvnRepository()
{
    Run("svnadmin create " + ShellQuoted(Path().string()));
}

std::filesystem::path SvnRepository::Path() const
{
    return folder_.Path() / "r";
}

std::string SvnRepository::Url() const
{
    return "file://" + Path().string();
}

std::u16string SvnRepository::Address(std::u16string_view path) const
{
    std::u16string address = u"svnfile://" + Path().u16string();
    if (!path.empty())
        address.append(u"/").append(path);
    return address;
}

int SvnRepository::Commit(const std::string& name, std::string_view bytes,
                          const std::string& message, const std::string& author) const
{
    const std::u16string content = folder_ / u"content";
    WriteBytes(content, bytes);
    const std::string from = ShellQuoted(std::filesystem::path(content).string());
    return Change("put " + from + " " + ShellQuoted(name), author, message);
}

int SvnRepository::MakeFolder(const std::string& name) const
{
    return Change("mkdir " + ShellQuoted(name), "Ann", "folder");
}

int SvnRepository::Remove(const std::string& name) const
{
    return Change("rm " + ShellQuoted(name), "Ann", "removed");
}

std::string SvnRepository::Svn(const std::string& arguments) const
{
    return Run("svn --non-interactive " + arguments);
}

void SvnRepository::ForgetAuthor(int revision) const
{
    Run("svnadmin delrevprop " + ShellQuoted(Path().string()) + " -r " + std::to_string(revision) +
        " svn:author");
}

void SvnRepository::Configure(const std::string& file, std::string_view text) const
{
    WriteBytes((Path() / "conf" / file).u16string(), text);
}

std::string SvnRepository::Run(const std::string& command) const
{
    return ShellRun("export LC_ALL=C.UTF-8 LANGUAGE=en HOME=" +
                    ShellQuoted(folder_.Path().string()) + "; " + command);
}

int SvnRepository::Change(const std::string& action, const std::string& author,
                          const std::string& message) const
{
    Run("svnmucc --non-interactive --username " + ShellQuoted(author) + " -m " +
        ShellQuoted(message) + " -U " + ShellQuoted(Url()) + " " + action);
    return std::stoi(Run("svnlook youngest " + ShellQuoted(Path().string())));
}

} // namespace tarnwell::test
