// What files and folders of the URI-addressed file systems have in common: an address, and facts
// that are asked for when first wanted.
#pragma once

#include "addressed/fsitem.h"
#include "addressed/uri.h"
#include "frame/boundary.h"
#include "frame/hostuser.h"
#include "frame/text.h"
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
// which begins at `marker` (-1 if there is none), to the end, the revision included.
std::u16string_view LeafOfAddress(std::u16string_view path, std::ptrdiff_t marker,
                                  const PathRules& rules = platformPathRules);

// The part without interfaces. A backend supplies the two virtual operations.
class UriItem : public HostUIUser
{
protected:
    UriItem() = default;
    virtual ~UriItem() = default;

    // Where in `text` (an address, or its path part) the item's revision begins, or -1.
    virtual std::ptrdiff_t FindRevisionMarker(std::u16string_view text) const;
    // Asks the file system. Throws if there is no such item.
    virtual std::shared_ptr<FSItem> ReadItemInfo(const std::shared_ptr<Uri>& uri) = 0;
    // The name that the host sees.
    virtual std::u16string NameOf(std::u16string_view leaf) const;

    // For an item that was named by the host. If it must exist, it is looked for at once, and
    // must be a folder or not as `wantFolder` says.
    void InitializeItem(::IUnknown* host, std::shared_ptr<Uri> uri, bool mustExist,
                        bool wantFolder);
    // For an item out of a listing: what the listing told isn't asked for again.
    void InitializeItem(::IUnknown* host, std::shared_ptr<Uri> uri, const FSItem& item);

    // The facts, asked for at the first call. A failure passes on, and the next call tries again.
    const FSItem& Facts();

    const std::shared_ptr<Uri>& Address() const
    {
        return uri_;
    }
    std::u16string Name();
    std::u16string ParentPath();
    std::u16string ComparableName();
    std::u16string ComparableUrl() const;

private:
    std::u16string_view CutAtMarker(std::u16string_view text) const;
    // With the revision, whatever the host sees of it.
    std::u16string_view Leaf();
    // What the address is made of: taken apart once, however much is asked of a listed item.
    const UriParts& Parts();
    void Load();

    std::shared_ptr<Uri> uri_;
    std::optional<UriParts> parts_;
    FSItem facts_;
    bool loaded_ = false;
    bool exists_ = false;
};

// The interfaces that both kinds answer to. `classId` is the class that a failure names.
template <const GUID& classId>
class IUriFileSystemItemImpl : public IFileSystemItem,
                               public IFileSystemItemComparableUrl,
                               public UriItem
{
public:
    HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) final
    {
        return Give(fileTime, [&] { return Facts().modifiedTime; });
    }
    HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) final
    {
        return Give(attributes, [&] { return AttributesOf(Facts()); });
    }
    HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t) final
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetName(BSTR* name) final
    {
        return GiveText(itemReporter, name, [&] { return Name(); });
    }
    HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) final
    {
        return GiveText(itemReporter, path, [&] { return ParentPath(); });
    }
    HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) final
    {
        return GiveText(itemReporter, path, [&] { return Address()->GetText(); });
    }
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL, VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE GetComparableName(BSTR* name) final
    {
        return GiveText(comparableReporter, name, [&] { return ComparableName(); });
    }
    HRESULT STDMETHODCALLTYPE GetComparableUrl(BSTR* url) final
    {
        return GiveText(comparableReporter, url, [&] { return ComparableUrl(); });
    }

protected:
    ~IUriFileSystemItemImpl() override = default;

private:
    static constexpr Reporter itemReporter{classId, IID_IFileSystemItem};
    static constexpr Reporter comparableReporter{classId, IID_IFileSystemItemComparableUrl};

    static constexpr std::uint32_t AttributesOf(const FSItem& facts)
    {
        return facts.isDirectory ? 16U : facts.isReadOnly ? 129U : 128U;
    }

    template <class Out, class Ask> static HRESULT Give(Out* out, Ask&& ask)
    {
        return AtBoundary(itemReporter, NullPointer::Bare, out, [&] {
            *out = ask();
            return S_OK;
        });
    }
    template <class Ask> static HRESULT GiveText(const Reporter& reporter, BSTR* out, Ask&& ask)
    {
        return AtBoundary(reporter, NullPointer::Bare, out, [&] { return ToHost(ask(), out); });
    }
};

} // namespace tarnwell
