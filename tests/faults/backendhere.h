// The file system of a row of the backends, linked in so that its platform calls can be made to
// fail.
#pragma once

#include "faults/local.h"

#include "backends/backend.h"
#include "support/posix/standinclient.h"

#include <tarnwell/items.h>

#include <memory>
#include <optional>

namespace tarnwell::test
{

// On data of its own: the file "a.txt" and, where there are folders, "sub" with "b.txt".
class BackendHere
{
public:
    explicit BackendHere(const Backend& backend);

    const Backend& Row() const
    {
        return backend_;
    }
    std::u16string Address(std::u16string_view name) const
    {
        return data_->Address(name);
    }
    BackendData& Data() const
    {
        return *data_;
    }
    ComPtr<IFile> File(std::u16string_view name = u"a.txt") const;
    ComPtr<IFolder> Folder(std::u16string_view name) const;
    // A name that nothing has had yet.
    std::u16string NewName() const;
    ComPtr<::IClassFactory> Factory() const;

private:
    const Backend& backend_;
    const std::unique_ptr<BackendData> data_;
    std::optional<StandInClient> client_;
    const ComPtr<FakeHost> host_ = FakeHost::Make();
    mutable int names_ = 0;

public:
    ComPtr<IFileSystem> system;
};

// Whether it holds connections itself, and no client does.
constexpr bool HoldsConnections(const Backend& backend)
{
    return backend.family == Family::Addressed && backend.client.empty();
}

} // namespace tarnwell::test
