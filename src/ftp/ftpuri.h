// Addresses of items on FTP servers.
#pragma once

#include "addressed/uri.h"

namespace tarnwell
{

// The file system's name in positions of failures.
inline constexpr const char16_t* ftpSource = u"ftpobjects";

class FTPUri final : public Uri
{
public:
    // Fails for a scheme other than "ftp" in small letters, with message 126. That speaks of
    // Perforce on purpose: there is no other for this file system.
    explicit FTPUri(std::u16string text);

    std::shared_ptr<Uri> Create(std::u16string text) const override;
};

} // namespace tarnwell
