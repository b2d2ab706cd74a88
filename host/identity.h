// Which file a path leads to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarnwell::host
{

// Equal for all names of one file, links included.
struct FileIdentity
{
    std::uint64_t volume;
    std::uint64_t number;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

// Nothing if there is no such file, or if it is none that holds bytes. Both throw Failure if the
// system doesn't tell.
std::optional<FileIdentity> IdentityOf(const std::u16string& path);
std::optional<FileIdentity> IdentityOfInput();

} // namespace tarnwell::host
