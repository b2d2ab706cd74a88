// What files and folders of the file systems of addresses have in common: an address, and facts
// that are asked for when first wanted.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/hostuser.h"
#include "platform/pathrules.h"

#include <tarnwell/items.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// The last component of the path of an address: from the last separator in front of the revision,
// which begins at `marker` (npos if there is none), to the end, the revision included.
std::u16string_view LeafOfAddress(std::u16string_view path, std::size_t marker,
                                  const PathRules& rules = platformPathRules);

// The interfaces that both kinds of item answer to. Deletion is offered by a backend that can.
class IUriFileSystemItemImpl : public IFileSystemItem,
                               public IFileSystemItemComparableUrl,
                               public HostUIUser
{
public:
    HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) final;
    HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) final;
    HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t attributes) final;
    HRESULT STDMETHODCALLTYPE GetName(BSTR* name) final;
    HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) final;
    HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) final;
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive) override;

    HRESULT STDMETHODCALLTYPE GetComparableName(BSTR* name) final;
    HRESULT STDMETHODCALLTYPE GetComparableUrl(BSTR* url) final;

    // Called once, before the object is handed out: for an item that the host named, and for one
    // out of a listing. What must exist is looked for at once, and must be of this object's kind.
    // What the listing told isn't asked for again.
    void Initialize(::IUnknown* host, const std::u16string& path, bool mustExist);
    void InitializeFromItem(::IUnknown* host, const FSItem& item);

protected:
    // `classId` is the class that a failure names.
    IUriFileSystemItemImpl(const GUID& classId, const AddressKind& addresses, bool isFolder)
        : classId_(classId), addresses_(addresses), isFolder_(isFolder)
    {
    }
    virtual ~IUriFileSystemItemImpl() = default;

    // Asks the file system for the item at `uri`. Throws if there is none.
    virtual std::shared_ptr<FSItem> ReadItemInfo(const Uri& uri) = 0;

    // The facts, asked for at the first call. A failure passes on, and the next call tries again.
    const FSItem& Facts();

    const Uri& Address() const
    {
        return *uri_;
    }
    const GUID& ClassId() const
    {
        return classId_;
    }

private:
    // The last component with the revision, and what the host sees of it.
    std::u16string_view Leaf();
    std::u16string_view Name();
    // What the address is made of: taken apart once, however much is asked of a listed item.
    const UriParts& Parts();

    const GUID& classId_;
    const AddressKind& addresses_;
    const bool isFolder_;
    std::shared_ptr<Uri> uri_;
    std::optional<UriParts> parts_;
    std::optional<FSItem> facts_;
};

} // namespace tarnwell
