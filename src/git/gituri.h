// Addresses of files in Git working copies, and where their repository is.
#pragma once

#include "platform/pathrules.h"
#include "workingcopy/workingcopyuri.h"

#include <optional>
#include <string>

namespace tarnwell
{

inline constexpr AddressRow gitAddresses{u"git", u"gitobjects", MessageId::InvalidGitUri, false};

using GITUri = WorkingCopyUriOf<gitAddresses>;

struct GitRoot
{
    std::u16string root;
    std::u16string relative; // the file's path below it
};

// Looks for a folder ".git" beside `path` and in each folder above. A file ".git" doesn't count, so
// files in linked working trees and submodules can't be opened.
std::optional<GitRoot> FindGitRoot(const std::u16string& path);

} // namespace tarnwell
