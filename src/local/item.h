// What local files and folders have in common: a cached snapshot of one path.
#pragma once

#include "frame/comobject.h"
#include "frame/publish.h"

#include <tarnwell/host.h>
#include <tarnwell/items.h>

#include <cstdint>
#include <string>

namespace tarnwell
{

// Set once when the item is made; only SetAttributes changes anything after that. Operations that
// need the disk go to `path` afresh.
struct LocalFacts
{
    std::u16string path;
    std::uint32_t nameOffset = 0; // where the leaf begins in `path`
    std::uint32_t attributes = 0;
    std::uint32_t sizeLow = 0;
    std::uint32_t sizeHigh = 0;
    std::uint64_t modifiedTime = 0;
    ComPtr<IHostWindow> host;
};

class LocalItem : public IFileSystemItem
{
public:
    // Called once, before the item is handed out.
    void Fill(LocalFacts facts)
    {
        facts_ = std::move(facts);
    }

    HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) final;
    HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) final;
    HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t attributes) final;
    HRESULT STDMETHODCALLTYPE GetName(BSTR* name) final;
    HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) final;
    HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) final;
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) final;

protected:
    // `classId` is the class that a failure names.
    explicit LocalItem(const GUID& classId) : reporter_{classId, IID_IFileSystemItem} {}
    ~LocalItem() = default;

    LocalFacts facts_;

private:
    const Reporter reporter_;
};

} // namespace tarnwell
