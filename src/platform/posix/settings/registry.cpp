// The registry's one key, out of the user's settings file.
#include "platform/posix/errors/errnotable.h"
#include "platform/posix/files/filehandle.h"
#include "platform/posix/settings/settingsfile.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <new>
#include <optional>
#include <unistd.h>

// What a key handle points to.
struct OpenedKey
{
    std::vector<tarnwell::posix::Setting> settings;
};

namespace tarnwell::posix
{
namespace
{

constexpr std::u16string_view keyName = u"Software\\Dovrin\\Vorel\\7.0\\Vorel7.FTPFS";
constexpr const char* fileName = "/tarnwell/ftp.conf";
// In bytes. What stands behind that in the file isn't read.
constexpr std::size_t longestFile = 65536;

char16_t Lower(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool SameName(std::u16string_view left, std::u16string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return Lower(a) == Lower(b); });
}

std::string FilePath()
{
    const char* const settings = std::getenv("XDG_CONFIG_HOME");
    if (settings != nullptr && *settings == '/')
        return std::string(settings) + fileName;
    const char* const home = std::getenv("HOME");
    return std::string(home == nullptr ? "" : home) + "/.config" + fileName;
}

// Nothing, and errno set, if there is no such file or it can't be read.
std::optional<std::string> FileText()
{
    const FileDescriptor file(open(FilePath().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return std::nullopt;
    std::string text(longestFile, '\0');
    std::size_t size = 0;
    while (size < text.size())
    {
        const ssize_t got = read(file.Get(), text.data() + size, text.size() - size);
        if (got == 0)
            break;
        if (got < 0 && errno != EINTR)
            return std::nullopt;
        size += got < 0 ? 0 : static_cast<std::size_t>(got);
    }
    text.resize(size);
    return text;
}

LSTATUS OpenKey(HKEY* opened)
{
    const std::optional<std::string> text = FileText();
    if (!text)
        return static_cast<LSTATUS>(ErrorFromErrno(errno));
    *opened = new OpenedKey{ParseSettings(*text)};
    return ERROR_SUCCESS;
}

} // namespace
} // namespace tarnwell::posix

using namespace tarnwell::posix;

extern "C" LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access,
                                 HKEY* opened)
{
    *opened = nullptr;
    if (options != 0 || access != KEY_READ)
        return ERROR_NOT_SUPPORTED;
    if (key != HKEY_CURRENT_USER || !SameName(subkey, keyName))
        return ERROR_FILE_NOT_FOUND;
    try
    {
        return OpenKey(opened);
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

extern "C" LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type,
                                    BYTE* data, DWORD* size)
{
    if (key == nullptr)
        return ERROR_INVALID_HANDLE;
    if (reserved != nullptr || (data != nullptr && size == nullptr))
        return ERROR_INVALID_PARAMETER;
    const auto found = std::find_if(key->settings.begin(), key->settings.end(),
                                    [&](const Setting& it) { return SameName(it.name, name); });
    if (found == key->settings.end())
        return ERROR_FILE_NOT_FOUND;
    if (type != nullptr)
        *type = found->type;
    const DWORD room = size == nullptr ? 0 : *size;
    if (size != nullptr)
        *size = static_cast<DWORD>(found->data.size());
    if (data == nullptr)
        return ERROR_SUCCESS;
    if (found->data.size() > room)
        return ERROR_MORE_DATA;
    std::copy(found->data.begin(), found->data.end(), data);
    return ERROR_SUCCESS;
}

extern "C" LSTATUS RegCloseKey(HKEY key)
{
    if (key == nullptr)
        return ERROR_INVALID_HANDLE;
    const std::unique_ptr<OpenedKey> owned(key);
    return ERROR_SUCCESS;
}
