#include "addressed/uriitem.h"

#include "addressed/interfaceimpl.h"
#include "frame/filetimes.h"

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

std::u16string_view UpToMarker(std::u16string_view text, std::ptrdiff_t marker)
{
    return marker < 0 ? text : text.substr(0, static_cast<std::size_t>(marker));
}

} // namespace

std::u16string_view LeafOfAddress(std::u16string_view path, std::ptrdiff_t marker,
                                  const PathRules& rules)
{
    const std::size_t last = UpToMarker(path, marker).find_last_of(rules.separators);
    return last == std::u16string_view::npos ? path : path.substr(last + 1);
}

std::ptrdiff_t UriItem::FindRevisionMarker(std::u16string_view) const
{
    return -1;
}

std::u16string UriItem::NameOf(std::u16string_view leaf) const
{
    return std::u16string(leaf);
}

void UriItem::InitializeItem(::IUnknown* host, std::shared_ptr<Uri> uri, bool mustExist,
                             bool wantFolder)
{
    SetHostObject(host);
    uri_ = std::move(uri);
    if (!mustExist)
        return;
    Load();
    if (!exists_ || facts_.isDirectory != wantFolder)
        ThrowNotFound(*uri_, wantFolder, exists_, facts_.isDirectory);
}

void UriItem::InitializeItem(::IUnknown* host, std::shared_ptr<Uri> uri, const FSItem& item)
{
    SetHostObject(host);
    uri_ = std::move(uri);
    facts_ = item;
    loaded_ = true;
    exists_ = true;
}

const FSItem& UriItem::Facts()
{
    Load();
    return facts_;
}

void UriItem::Load()
{
    if (loaded_)
        return;
    facts_ = Name().empty() ? RootFacts() : *ReadItemInfo(uri_);
    exists_ = true;
    loaded_ = true;
}

std::u16string_view UriItem::Leaf()
{
    const std::u16string_view path = Parts().path;
    return LeafOfAddress(path, FindRevisionMarker(path));
}

std::u16string UriItem::Name()
{
    return NameOf(Leaf());
}

// The marker is looked for in the path alone, so that an address with a user keeps its parent.
std::u16string UriItem::ParentPath()
{
    UriParts parts = Parts();
    parts.path.resize(CutAtMarker(parts.path).size());
    return uri_->ComposeParent(std::move(parts))->GetText();
}

// Not of the name: that may lack the revision already, and would be cut twice.
std::u16string UriItem::ComparableName()
{
    return std::u16string(CutAtMarker(Leaf()));
}

std::u16string UriItem::ComparableUrl() const
{
    return std::u16string(CutAtMarker(uri_->GetText()));
}

std::u16string_view UriItem::CutAtMarker(std::u16string_view text) const
{
    return UpToMarker(text, FindRevisionMarker(text));
}

const UriParts& UriItem::Parts()
{
    if (!parts_)
        parts_ = uri_->GetParts();
    return *parts_;
}

} // namespace tarnwell
