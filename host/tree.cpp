#include "tree.h"

#include "asked.h"
#include "words.h"

#include <tarnwell/client/filesystem.hpp>
#include <tarnwell/constants.h>

#include <algorithm>

namespace tarnwell::host
{

namespace
{

std::u16string_view LastPart(std::u16string_view path)
{
    return path.substr(path.rfind(u'/') + 1);
}

std::u16string_view AllButLastPart(std::u16string_view path)
{
    const std::size_t slash = path.rfind(u'/');
    return path.substr(0, slash == std::u16string_view::npos ? 0 : slash);
}

std::uint32_t AttributesOf(const client::TreeEntry& entry)
{
    switch (entry.kind)
    {
    case TreeFolder:
        return AttributeFolder;
    case TreeLink:
        return AttributeLink | AttributeReadOnly;
    default:
        return AttributeNormal | AttributeReadOnly;
    }
}

} // namespace

RevisionTree::RevisionTree(client::Tree tree, const Address& address)
    : tree_(std::move(tree)), kind_(address.kind),
      revisionId_(client::Utf16(Told([&] { return tree_.RevisionId(); })))
{
    const AddressParts parts = PartsOf(address);
    path_ = parts.path;
    // What is the latest may be another one soon.
    revision_ = parts.revision.empty() ? address.kind->markers[0] + revisionId_ : parts.revision;
}

client::TreeEntry RevisionTree::Find(const std::string& name) const
{
    return Asked([&] { return tree_.Find(name, GoesOn); });
}

void RevisionTree::List(bool recursive,
                        const std::function<void(const client::TreeEntry&)>& take) const
{
    std::vector<client::TreeEntry> kept;
    const auto takeOne = [&](const client::TreeEntry& entry) {
        if (recursive)
            take(entry);
        else
            kept.push_back(entry);
        return true;
    };
    Asked([&] { tree_.List("", recursive, takeOne, GoesOn); });
    std::stable_sort(kept.begin(), kept.end(),
                     [](const client::TreeEntry& left, const client::TreeEntry& right) {
                         return left.name < right.name;
                     });
    std::for_each(kept.begin(), kept.end(), take);
}

Reader RevisionTree::Open(const std::string& name) const
{
    return Reader(Asked([&] { return tree_.Open(name, GoesOn).Get(); }));
}

std::u16string RevisionTree::RecordedId(const std::u16string& path) const
{
    return client::Utf16(Asked([&] { return tree_.RecordedId(path, GoesOn); }));
}

std::u16string RevisionTree::NameOf(const client::TreeEntry& entry) const
{
    // The address may have the platform's separators.
    if (entry.name.empty())
        return FromPath(FilePath(path_).filename());
    return std::u16string(LastPart(client::Utf16(entry.name)));
}

ItemFacts RevisionTree::FactsOf(const client::TreeEntry& entry) const
{
    const std::u16string name = client::Utf16(entry.name);
    const bool hasSize = entry.kind == TreeFile || entry.kind == TreeLink;
    ItemFacts facts;
    facts.name = Known(NameOf(entry));
    facts.path = Known(AddressOf(name));
    facts.parent = Known(name.empty() ? FromPath(FilePath(path_).parent_path()) + revision_
                                      : AddressOf(AllButLastPart(name)));
    facts.folder = entry.kind == TreeFolder;
    facts.attributes = Known(AttributesOf(entry));
    if (hasSize)
        facts.size = Known(entry.size);
    facts.modified = Known(entry.modifiedTime);
    facts.recorded =
        RecordedFacts{entry.kind, entry.executable, client::Utf16(entry.contentId), revisionId_};
    return facts;
}

std::u16string RevisionTree::AddressOf(std::u16string_view name) const
{
    std::u16string address = path_;
    if (!name.empty())
        address.append(u"/").append(InAddress(*kind_, name));
    return address + revision_;
}

std::optional<RevisionTree> OpenTree(const Session& session, const Place& place)
{
    const client::FileSystem files(place.fileSystem);
    if (session.line.prescribed || place.address.kind == &FileSystemKinds().front() ||
        !files.HasTrees())
        return std::nullopt;
    client::Tree tree =
        Asked([&] { return files.OpenTree(place.address.text, std::nullopt, GoesOn); });
    return RevisionTree(std::move(tree), place.address);
}

} // namespace tarnwell::host
