#include "identity.h"

#include "errors.h"
#include "system.h"
#include "words.h"

#include <tarnwell/text.h>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::host
{

namespace
{

std::optional<FileIdentity> IdentityIn(const struct stat& entry)
{
    if (!S_ISREG(entry.st_mode))
        return std::nullopt;
    return FileIdentity{entry.st_dev, entry.st_ino};
}

[[noreturn]] void ThrowUnknown(const std::u16string& what)
{
    throw Failure{E_FAIL, what + u" " + DecodeName(std::strerror(errno))};
}

} // namespace

std::optional<FileIdentity> IdentityOf(const std::u16string& path)
{
    const std::string file = FilePath(path);
    struct stat entry;
    if (stat(file.c_str(), &entry) == 0)
        return IdentityIn(entry);
    if (errno == ENOENT || errno == ENOTDIR)
        return std::nullopt;
    ThrowUnknown(Say(Word::FileUnknown, {path}));
}

std::optional<FileIdentity> IdentityOfInput()
{
    struct stat entry;
    if (fstat(STDIN_FILENO, &entry) == 0)
        return IdentityIn(entry);
    if (errno == EBADF)
        return std::nullopt;
    ThrowUnknown(Say(Word::InputUnknown));
}

} // namespace tarnwell::host
