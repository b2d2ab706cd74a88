#include "facts.h"

#include "items.h"
#include "readable.h"

namespace tarnwell::host
{

namespace
{

std::uint64_t ModifiedOf(const ComPtr<IFileSystemItem>& item)
{
    std::uint64_t time = 0;
    Call([&] { return item->GetModifiedTime(&time); });
    return time;
}

std::uint32_t AttributesOf(const ComPtr<IFileSystemItem>& item)
{
    std::uint32_t attributes = 0;
    Call([&] { return item->GetAttributes(&attributes); });
    return attributes;
}

const char16_t* NameOf(TreeItemKind kind)
{
    switch (kind)
    {
    case TreeFolder:
        return u"folder";
    case TreeLink:
        return u"link";
    case TreeRepository:
        return u"repository";
    default:
        return u"file";
    }
}

void AddRecorded(JsonObject& object, const RecordedFacts& recorded)
{
    object.Text(u"kind", NameOf(recorded.kind))
        .Boolean(u"executable", recorded.executable)
        .Text(u"content_id", recorded.contentId)
        .Text(u"revision", recorded.revision);
}

} // namespace

Fact<std::u16string> NameOf(const ComPtr<IFileSystemItem>& item)
{
    return FactOf([&] { return TextFrom(item.Get(), &IFileSystemItem::GetName); });
}

ItemFacts FactsOf(const ComPtr<IFileSystemItem>& item)
{
    const auto text = [](auto* object, auto method) {
        return FactOf([&] { return TextFrom(object, method); });
    };
    ItemFacts facts;
    facts.name = NameOf(item);
    facts.path = text(item.Get(), &IFileSystemItem::GetPath);
    facts.parent = text(item.Get(), &IFileSystemItem::GetParentPath);
    facts.attributes = FactOf([&] { return AttributesOf(item); });
    facts.modified = FactOf([&] { return ModifiedOf(item); });
    const ComPtr<IFile> file = item.As<IFile>();
    facts.folder = !file;
    if (file)
        facts.size = FactOf([&] { return SizeOf(file); });
    if (const auto comparable = item.As<IFileSystemItemComparableUrl>())
    {
        facts.comparableName =
            text(comparable.Get(), &IFileSystemItemComparableUrl::GetComparableName);
        facts.comparableUrl =
            text(comparable.Get(), &IFileSystemItemComparableUrl::GetComparableUrl);
    }
    return facts;
}

JsonObject ToJson(const ItemFacts& facts)
{
    const Fact<std::uint64_t> attributes{facts.attributes.value, facts.attributes.error,
                                         facts.attributes.isNotOffered};
    FactWriter writer;
    writer.Text(u"name", facts.name);
    writer.Text(u"path", facts.path);
    writer.Text(u"parent", facts.parent);
    writer.object.Boolean(u"folder", facts.folder);
    writer.Number(u"attributes", attributes);
    writer.Number(u"size", facts.size);
    writer.Time(u"modified", facts.modified);
    writer.Number(u"filetime", facts.modified);
    writer.Text(u"comparable_name", facts.comparableName);
    writer.Text(u"comparable_url", facts.comparableUrl);
    if (facts.recorded)
        AddRecorded(writer.object, *facts.recorded);
    return writer.Finish();
}

void FactWriter::Text(std::u16string_view name, const Fact<std::u16string>& fact)
{
    if (fact.value)
        object.Text(name, *fact.value);
    else
        Missing(name, fact.error);
}

void FactWriter::Number(std::u16string_view name, const Fact<std::uint64_t>& fact)
{
    if (fact.value)
        object.Number(name, *fact.value);
    else
        Missing(name, fact.error);
}

void FactWriter::Time(std::u16string_view name, const Fact<std::uint64_t>& fact)
{
    if (fact.value && *fact.value != 0)
        object.Text(name, IsoTime(*fact.value));
    else
        Missing(name, fact.error);
}

JsonObject FactWriter::Finish()
{
    if (!errors_.Empty())
        object.Object(u"errors", errors_);
    return object;
}

void FactWriter::Missing(std::u16string_view name, const std::u16string& error)
{
    object.Null(name);
    if (!error.empty())
        errors_.Text(name, error);
}

} // namespace tarnwell::host
