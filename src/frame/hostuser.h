// What the module asks of the host object.
#pragma once

#include "platform/win32.h"

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <cstdint>
#include <string>

namespace tarnwell
{

// What credentials are for, as the host sees it.
inline constexpr std::uint32_t serverCredentials = 0; // FTP and Subversion
inline constexpr std::uint32_t perforceCredentials = 1;

struct Credentials
{
    std::u16string user;
    std::u16string password;
    std::u16string host;
};

// Base of the classes that hold the host object. It may be null.
class HostUIUser
{
public:
    void SetHostObject(::IUnknown* host);
    ::IUnknown* HostObject() const
    {
        return host_.Get();
    }

    // The values to log on with. Those of an address stand if they have a user and the password
    // isn't "*"; otherwise the host is asked. If it has none, that is a failure with message 156,
    // except for Perforce, whose client may have credentials of its own.
    Credentials ResolveCredentials(const Credentials& fromAddress, std::uint32_t kind) const;

    // Tells the host that the server refused what was given, in the server's words.
    void ReportCredentialsRefused(const std::u16string& text) const;

protected:
    HostUIUser() = default;
    ~HostUIUser() = default;

private:
    ComPtr<::IUnknown> host_;
};

// The owner of dialogs; null where the host has none.
HWND OwnerWindow(IHostWindow* host);

// The host's setting `name`; false where the host has no settings.
bool BooleanSetting(::IUnknown* host, const std::u16string& name);

} // namespace tarnwell
