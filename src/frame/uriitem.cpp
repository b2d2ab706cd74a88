#include "frame/uriitem.h"

#include "frame/interfaceimpl.h"
#include "frame/paths.h"

namespace tarnwell
{

namespace
{

// The root of a file system, whose facts nobody needs to be asked for.
FSItem RootFacts()
{
    FILETIME now{};
    CoFileTimeNow(&now);
    FSItem root;
    root.modifiedTime = (std::uint64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime;
    root.isDirectory = true;
    return root;
}

} // namespace

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

std::u16string UriItem::Name() const
{
    const std::u16string path = uri_->GetPath();
    return NameOf(LeafOf(path));
}

// The marker is looked for in the path alone, so that an address with a user keeps its parent.
std::u16string UriItem::ParentPath() const
{
    const std::u16string path = uri_->GetPath();
    const std::size_t cut = path.size() - CutAtMarker(path).size();
    const std::u16string& text = uri_->GetText();
    return uri_->Create(text.substr(0, text.size() - cut))->GetParent()->GetText();
}

std::u16string UriItem::ComparableName() const
{
    return std::u16string(CutAtMarker(Name()));
}

std::u16string UriItem::ComparableUrl() const
{
    return std::u16string(CutAtMarker(uri_->GetText()));
}

std::u16string_view UriItem::CutAtMarker(std::u16string_view text) const
{
    const std::ptrdiff_t marker = FindRevisionMarker(text);
    return marker < 0 ? text : text.substr(0, static_cast<std::size_t>(marker));
}

// From the last separator in front of the revision up to the end, the revision included.
std::u16string_view UriItem::LeafOf(std::u16string_view path) const
{
    const std::u16string_view withoutRevision = CutAtMarker(path);
    const std::size_t last = withoutRevision.find_last_of(platformPathRules.separators);
    return last == std::u16string_view::npos ? path : path.substr(last + 1);
}

} // namespace tarnwell
