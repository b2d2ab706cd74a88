#include "support/posix/ownmounts.h"

#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// As the user that it is.
bool HaveOwnUsers()
{
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
    return true;
}

bool PutInto(const fs::path& folder, const fs::directory_entry& entry)
{
    const fs::path copy = folder / entry.path().filename();
    if (entry.is_symlink())
        fs::copy_symlink(entry.path(), copy);
    if (entry.is_symlink() || !entry.is_directory())
        return true;
    fs::create_directory(copy);
    return mount(entry.path().c_str(), copy.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0;
}

} // namespace

bool HaveOwnMounts()
{
    const bool isThere = unshare(CLONE_NEWNS) == 0 || HaveOwnUsers();
    return isThere && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

bool MakeRoot(const char* folder)
{
    if (mount("none", folder, "tmpfs", 0, nullptr) != 0)
        return false;
    bool isWhole = true;
    for (const fs::directory_entry& entry : fs::directory_iterator("/"))
        isWhole = isWhole && PutInto(folder, entry);
    return isWhole && chroot(folder) == 0 && chdir("/") == 0;
}

} // namespace tarnwell::test
