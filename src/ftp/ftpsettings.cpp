#include "ftp/ftpsettings.h"

#include "frame/handle.h"
#include "platform/wide.h"

#include <array>

namespace tarnwell
{

namespace
{

// Values of the backend's key. Without the key it has none.
class Settings
{
public:
    Settings()
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, Wide(u"Software\\Dovrin\\Vorel\\7.0\\Vorel7.FTPFS"), 0,
                          KEY_READ, &key) == ERROR_SUCCESS)
            key_ = RegistryKey(key);
    }

    // Text that needs expansion is taken as it stands.
    std::u16string Text(const char16_t* name) const
    {
        std::array<char16_t, 512> units{};
        DWORD size = sizeof units;
        const DWORD type = Query(name, units.data(), size);
        if (type != REG_SZ && type != REG_EXPAND_SZ)
            return {};
        const std::size_t count = size / sizeof(char16_t);
        if (count == 0 || size % sizeof(char16_t) != 0 || units[count - 1] != u'\0')
            return {};
        return units.data();
    }

    DWORD Number(const char16_t* name) const
    {
        DWORD number = 0;
        DWORD size = sizeof number;
        return Query(name, &number, size) == REG_DWORD ? number : 0;
    }

private:
    // The type of what was put into `buffer`, whose size becomes that of the value. REG_NONE if
    // there is no such value or it is too large.
    DWORD Query(const char16_t* name, void* buffer, DWORD& size) const
    {
        DWORD type = REG_NONE;
        if (!key_ || RegQueryValueExW(key_.Get(), Wide(name), nullptr, &type,
                                      static_cast<BYTE*>(buffer), &size) != ERROR_SUCCESS)
            return REG_NONE;
        return type;
    }

    RegistryKey key_;
};

} // namespace

FtpProxy ReadFtpProxy()
{
    const Settings settings;
    FtpProxy proxy{false, settings.Text(u"Proxy"), settings.Text(u"ProxyBypassList")};
    proxy.isUsed = settings.Number(u"UseProxy") != 0 && !proxy.servers.empty();
    return proxy;
}

bool ReadUseActive()
{
    return Settings().Number(u"UseActive") != 0;
}

} // namespace tarnwell
