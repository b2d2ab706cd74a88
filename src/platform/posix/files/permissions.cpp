#include "platform/posix/files/permissions.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

constexpr const char* listName = "system.posix_acl_access";

// As the system gives it: this version in front, then the entries.
constexpr std::uint32_t listVersion = 2;

struct Entry
{
    std::uint16_t tag;
    std::uint16_t bits;
    std::uint32_t id;
};

enum Tag : std::uint16_t
{
    userTag = 0x02,
    owningGroupTag = 0x04,
    groupTag = 0x08,
    maskTag = 0x10
};

std::optional<std::vector<Entry>> EntriesIn(const std::vector<char>& list)
{
    std::uint32_t version = 0;
    if (list.size() < sizeof version || (list.size() - sizeof version) % sizeof(Entry) != 0)
        return std::nullopt;
    std::memcpy(&version, list.data(), sizeof version);
    if (version != listVersion)
        return std::nullopt;
    std::vector<Entry> entries((list.size() - sizeof version) / sizeof(Entry));
    std::memcpy(entries.data(), list.data() + sizeof version, list.size() - sizeof version);
    return entries;
}

// A user who is named may also be in the group; otherwise they are one of the others.
mode_t WithEntries(mode_t mode, const std::vector<Entry>& entries)
{
    mode_t group = S_IRWXO;
    mode_t others = mode & S_IRWXO;
    for (const Entry& entry : entries)
    {
        if (entry.tag == userTag || entry.tag == owningGroupTag || entry.tag == maskTag)
            group &= entry.bits;
        if (entry.tag == userTag || entry.tag == groupTag)
            others &= entry.bits;
    }
    return (mode & ~mode_t{S_IRWXG | S_IRWXO}) | (group << 3) | others;
}

// `read` gives the list as getxattr does.
template <class Read> mode_t WithoutListsGrants(mode_t mode, Read read)
{
    const mode_t ownerOnly = mode & ~mode_t{S_IRWXG | S_IRWXO};
    const ssize_t size = read(nullptr, 0);
    if (size < 0)
        return errno == ENODATA || errno == EOPNOTSUPP ? mode : ownerOnly;
    std::vector<char> list(static_cast<std::size_t>(size));
    if (read(list.data(), list.size()) != size)
        return ownerOnly;
    const std::optional<std::vector<Entry>> entries = EntriesIn(list);
    return entries ? WithEntries(mode, *entries) : ownerOnly;
}

} // namespace

mode_t PlainMode(int descriptor, mode_t mode)
{
    return WithoutListsGrants(mode, [&](char* list, std::size_t size) {
        return fgetxattr(descriptor, listName, list, size);
    });
}

mode_t PlainMode(const std::string& path, mode_t mode)
{
    return WithoutListsGrants(mode, [&](char* list, std::size_t size) {
        return getxattr(path.c_str(), listName, list, size);
    });
}

} // namespace tarnwell::posix
