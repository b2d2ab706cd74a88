#include "support/posix/repository.h"

#include "support/posix/shellrun.h"

namespace tarnwell::test
{

Repository::Repository()
{
    Git("init -q -b main");
}

std::string Repository::Git(const std::string& arguments) const
{
    const std::string folder = ShellQuoted(folder_.Path().string());
    return ShellRun("cd " + folder + " && HOME=" + folder +
                    " GIT_CONFIG_NOSYSTEM=1 LC_ALL=C.UTF-8 git -c user.name=Ann"
                    " -c user.email=ann@example.org " +
                    arguments);
}

std::string Repository::Commit(std::u16string_view name, std::string_view bytes,
                               const std::string& subject, const std::string& author) const
{
    const std::u16string path = folder_ / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, bytes);
    Git("add -A");
    Git("commit -q --allow-empty-message --allow-empty --author=" +
        ShellQuoted(author + " <a@example.org>") + " -m " + ShellQuoted(subject));
    return Git("rev-parse HEAD");
}

} // namespace tarnwell::test
