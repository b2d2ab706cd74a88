#include "backends/backend.h"
#include "support/tempfolder.h"

#include <ostream>
#include <stdexcept>

namespace tarnwell::test
{

void BackendData::PutAll(const std::vector<std::pair<std::u16string, std::string>>& files)
{
    for (const auto& [name, bytes] : files)
        Put(name, bytes);
}

void BackendData::MakeFolder(std::u16string_view)
{
    throw std::logic_error("a file system without folders");
}

std::filesystem::path BackendData::OnDisk(std::u16string_view) const
{
    throw std::logic_error("a file system that isn't on the disk");
}

bool BackendData::Has(std::u16string_view name) const
{
    return std::filesystem::exists(OnDisk(name));
}

bool BackendData::HasFolder(std::u16string_view name) const
{
    return std::filesystem::is_directory(OnDisk(name));
}

std::string BackendData::Held(std::u16string_view name) const
{
    return ReadBytes(OnDisk(name).u16string());
}

CredentialsAnswer BackendData::Credentials() const
{
    return {E_FAIL, std::nullopt, std::nullopt, std::nullopt};
}

std::vector<const Backend*> Backends()
{
    return {&localBackend,      &ftpBackend,       &perforceBackend,
            &subversionBackend, &mercurialBackend, &gitBackend};
}

void PrintTo(const Backend* backend, std::ostream* out)
{
    *out << backend->name;
}

} // namespace tarnwell::test
