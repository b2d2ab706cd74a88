#include "support/posix/mercurialrepository.h"

#include "support/posix/shellrun.h"

namespace tarnwell::test
{

MercurialRepository::MercurialRepository()
{
    Hg("init");
}

std::string MercurialRepository::Hg(const std::string& arguments) const
{
    const std::string folder = ShellQuoted(folder_.Path().string());
    return ShellRun("cd " + folder + " && HGRCPATH= HGPLAIN=1 HGENCODING=utf-8 hg " + arguments);
}

std::string MercurialRepository::Commit(std::u16string_view name, std::string_view bytes,
                                        const std::string& description,
                                        const std::string& options) const
{
    const std::u16string path = folder_ / name;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    WriteBytes(path, bytes);
    Hg("commit -q -A -u 'Ann <ann@example.org>' " + options + " -m " + ShellQuoted(description));
    return Hg("log -r . -T '{rev}'");
}

} // namespace tarnwell::test
