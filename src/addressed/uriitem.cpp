#include "addressed/uriitem.h"

#include "addressed/interfaceimpl.h"
#include "frame/boundary.h"
#include "frame/filetimes.h"
#include "frame/text.h"

namespace tarnwell
{

namespace
{

// The root of a file system, whose facts nobody needs to be asked for.
FSItem RootFacts()
{
    FSItem root;
    root.modifiedTime = PresentTime();
    root.isDirectory = true;
    return root;
}

std::uint32_t AttributesOf(const FSItem& facts)
{
    constexpr std::uint32_t folder = 16;
    constexpr std::uint32_t file = 128;
    constexpr std::uint32_t readOnly = 1;
    if (facts.isDirectory)
        return folder;
    return facts.isReadOnly ? file | readOnly : file;
}

template <class Out, class Ask> HRESULT Give(const GUID& classId, Out* out, Ask&& ask)
{
    return AtBoundary({classId, IID_IFileSystemItem}, NullPointer::Bare, out, [&] {
        *out = ask();
        return S_OK;
    });
}

template <class Ask>
HRESULT GiveText(const GUID& classId, const GUID& interfaceId, BSTR* out, Ask&& ask)
{
    return AtBoundary({classId, interfaceId}, NullPointer::Bare, out,
                      [&] { return ToHost(ask(), out); });
}

} // namespace

std::u16string_view LeafOfAddress(std::u16string_view path, std::size_t marker,
                                  const PathRules& rules)
{
    const std::size_t last = path.substr(0, marker).find_last_of(rules.separators);
    return last == std::u16string_view::npos ? path : path.substr(last + 1);
}

HRESULT IUriFileSystemItemImpl::GetModifiedTime(std::uint64_t* fileTime)
{
    return Give(classId_, fileTime, [&] { return Facts().modifiedTime; });
}

HRESULT IUriFileSystemItemImpl::GetAttributes(std::uint32_t* attributes)
{
    return Give(classId_, attributes, [&] { return AttributesOf(Facts()); });
}

HRESULT IUriFileSystemItemImpl::SetAttributes(std::uint32_t)
{
    return E_NOTIMPL;
}

HRESULT IUriFileSystemItemImpl::GetName(BSTR* name)
{
    return GiveText(classId_, IID_IFileSystemItem, name, [&] { return Name(); });
}

// The marker is looked for in the path alone, so that an address with a user keeps its parent.
HRESULT IUriFileSystemItemImpl::GetParentPath(BSTR* path)
{
    return GiveText(classId_, IID_IFileSystemItem, path, [&] {
        return uri_->ComposeParent(addresses_.marker.Strip(Parts()))->GetText();
    });
}

HRESULT IUriFileSystemItemImpl::GetPath(BSTR* path)
{
    return GiveText(classId_, IID_IFileSystemItem, path, [&] { return uri_->GetText(); });
}

HRESULT IUriFileSystemItemImpl::Delete(VARIANT_BOOL, VARIANT_BOOL)
{
    return E_NOTIMPL;
}

// The leaf is cut and not the name: a name may lack the revision already, and would be cut twice.
HRESULT IUriFileSystemItemImpl::GetComparableName(BSTR* name)
{
    return GiveText(classId_, IID_IFileSystemItemComparableUrl, name,
                    [&] { return addresses_.marker.Strip(Leaf()); });
}

// Deliberate: the whole text is cut. Where one character begins both a revision and the end of a
// user, an address with a user and no revision ends at the user.
HRESULT IUriFileSystemItemImpl::GetComparableUrl(BSTR* url)
{
    return GiveText(classId_, IID_IFileSystemItemComparableUrl, url,
                    [&] { return addresses_.marker.Strip(uri_->GetText()); });
}

void IUriFileSystemItemImpl::Initialize(::IUnknown* host, const std::u16string& path,
                                        bool mustExist)
{
    SetHostObject(host);
    uri_ = addresses_.make(path);
    if (!mustExist || Facts().isDirectory == isFolder_)
        return;
    ThrowNotFound(uri_->GetPath(),
                  {u"uri: \"" + uri_->GetText() + u"\"",
                   isFolder_ ? u"FolderObject::Initialize" : u"FileObject::Initialize",
                   u"existed: 1", u"isDirectory: " + Decimal(Facts().isDirectory)});
}

void IUriFileSystemItemImpl::InitializeFromItem(::IUnknown* host, const FSItem& item)
{
    SetHostObject(host);
    uri_ = addresses_.make(item.text);
    facts_ = item;
}

const FSItem& IUriFileSystemItemImpl::Facts()
{
    if (!facts_)
        facts_ = Name().empty() ? RootFacts() : *ReadItemInfo(*uri_);
    return *facts_;
}

std::u16string_view IUriFileSystemItemImpl::Leaf()
{
    const std::u16string_view path = Parts().path;
    return LeafOfAddress(path, addresses_.marker.FindIn(path));
}

std::u16string_view IUriFileSystemItemImpl::Name()
{
    return addresses_.isRevisionInNames ? Leaf() : addresses_.marker.Strip(Leaf());
}

const UriParts& IUriFileSystemItemImpl::Parts()
{
    if (!parts_)
        parts_ = uri_->GetParts();
    return *parts_;
}

} // namespace tarnwell
