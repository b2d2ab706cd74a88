// What local files and folders have in common: a cached snapshot of one path.
#pragma once

#include "frame/comobject.h"
#include "frame/publish.h"
#include "frame/shorttext.h"
#include "local/findrecord.h"

#include <tarnwell/host.h>
#include <tarnwell/items.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwell
{

// What the paths of the items of one folder begin with: all up to a name, separator included. The
// items of a listing hold it in common.
using PathPrefix = std::shared_ptr<const std::u16string>;

// Set once when the item is made; only SetAttributes changes anything after that. Operations that
// need the disk go to the path afresh.
struct LocalFacts
{
    std::u16string Path() const;

    PathPrefix prefix;
    ShortText<32> name; // without a terminator
    std::uint32_t attributes = 0;
    std::uint32_t sizeLow = 0;
    std::uint32_t sizeHigh = 0;
    std::uint64_t modifiedTime = 0;
    ComPtr<IHostWindow> host;
};

class LocalItem : public IFileSystemItem
{
public:
    // Called once, before the item is handed out. What the caller sets is the item's name, of
    // `nameSize` units.
    char16_t* Fill(const PathPrefix& prefix, const ItemFacts& facts,
                   const ComPtr<IHostWindow>& host, std::size_t nameSize);

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
