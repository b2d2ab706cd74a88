#include "comparison.h"

#include "items.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

struct Entry
{
    std::u16string name;
    ComPtr<IFile> file;
    ComPtr<IFolder> folder;
    bool isLink;
};

std::u16string PairingName(const ComPtr<IFileSystemItem>& item)
{
    if (const auto comparable = item.As<IFileSystemItemComparableUrl>())
        return TextFrom(comparable.Get(), &IFileSystemItemComparableUrl::GetComparableName);
    return TextFrom(item.Get(), &IFileSystemItem::GetName);
}

bool IsLink(const ComPtr<IFileSystemItem>& item)
{
    std::uint32_t attributes = 0;
    Call([&] { return item->GetAttributes(&attributes); });
    return (attributes & 0x400) != 0;
}

std::vector<Entry> EntriesOf(const ComPtr<IFolder>& folder)
{
    std::vector<Entry> entries;
    for (const ComPtr<IFileSystemItem>& item : ItemsOf(folder))
        entries.push_back({PairingName(item), item.As<IFile>(), item.As<IFolder>(), IsLink(item)});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return left.name < right.name; });
    return entries;
}

std::optional<std::uint64_t> KnownSize(const Entry& entry)
{
    if (!entry.file)
        return std::nullopt;
    return SizeOf(entry.file);
}

class FolderComparison
{
public:
    explicit FolderComparison(const Tell& tell) : tell_(tell) {}

    void Compare(const std::u16string& prefix, const ComPtr<IFolder>& left,
                 const ComPtr<IFolder>& right)
    {
        const std::vector<Entry> lefts = EntriesOf(left);
        const std::vector<Entry> rights = EntriesOf(right);
        auto a = lefts.begin();
        auto b = rights.begin();
        while (a != lefts.end() || b != rights.end())
        {
            if (b == rights.end() || (a != lefts.end() && a->name < b->name))
                TellSingle(prefix, *a++, Verdict::OnlyLeft);
            else if (a == lefts.end() || b->name < a->name)
                TellSingle(prefix, *b++, Verdict::OnlyRight);
            else
                ComparePair(prefix, *a++, *b++);
        }
    }

private:
    void TellSingle(const std::u16string& prefix, const Entry& entry, Verdict verdict)
    {
        Finding finding{prefix + entry.name, verdict, {}, {}, {}, {}};
        (verdict == Verdict::OnlyLeft ? finding.leftSize : finding.rightSize) = KnownSize(entry);
        tell_(finding);
    }

    void ComparePair(const std::u16string& prefix, const Entry& left, const Entry& right)
    {
        const std::u16string name = prefix + left.name;
        try
        {
            Finding finding = FindingOf(left, right);
            finding.name = name;
            tell_(finding);
            // A link to a folder above would never end.
            if (left.folder && right.folder && !left.isLink && !right.isLink)
                Compare(name + u"/", left.folder, right.folder);
        }
        catch (const Failure& failure)
        {
            tell_({name, Verdict::Failed, {}, {}, {}, failure});
        }
    }

    static Finding FindingOf(const Entry& left, const Entry& right)
    {
        const auto leftSize = KnownSize(left);
        const auto rightSize = KnownSize(right);
        if (!left.file != !right.file)
            return {{}, Verdict::KindDiffers, leftSize, rightSize, {}, {}};
        if (!left.file)
            return {{}, Verdict::Equal, {}, {}, {}, {}};
        // Unequal sizes say enough: no need to read.
        if (leftSize != rightSize)
            return {{}, Verdict::Different, leftSize, rightSize, {}, {}};
        return CompareFiles(left.file, right.file);
    }

    const Tell& tell_;
};

} // namespace

void CompareFolders(const ComPtr<IFolder>& left, const ComPtr<IFolder>& right, const Tell& tell)
{
    FolderComparison(tell).Compare({}, left, right);
}

} // namespace tarnwell::host
