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

std::u16string BackendData::Author() const
{
    return {};
}

CredentialsAnswer BackendData::Credentials() const
{
    return {E_FAIL, std::nullopt, std::nullopt, std::nullopt};
}

std::u16string BackendData::LatestId()
{
    throw std::logic_error("a file system without revisions of the whole");
}

std::u16string BackendData::AddressAt(std::u16string_view name, const std::u16string& id) const
{
    return Address(name, id);
}

std::vector<std::u16string> BackendData::OtherNamesOf(const std::u16string&)
{
    return {};
}

std::u16string BackendData::NameInHistory(std::u16string_view name) const
{
    return std::u16string(name);
}

std::u16string BackendData::NameInTree(std::u16string_view name) const
{
    return std::u16string(name);
}

void BackendData::Remove(std::u16string_view, const std::string&)
{
    throw std::logic_error("a file system whose files stay");
}

void BackendData::Rename(std::u16string_view, std::u16string_view, const std::string&)
{
    throw std::logic_error("a file system whose files keep their names");
}

void BackendData::PutMerge(std::u16string_view)
{
    throw std::logic_error("a file system without merges");
}

void BackendData::PutLink(std::u16string_view, std::string_view)
{
    throw std::logic_error("a file system without links");
}

void BackendData::PutProgram(std::u16string_view, std::string_view)
{
    throw std::logic_error("a file system without programs");
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
