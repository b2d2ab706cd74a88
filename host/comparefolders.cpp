#include "comparison.h"

#include "items.h"

#include <tarnwell/constants.h>

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
    return (attributes & AttributeLink) != 0;
}

// `fail` is called for what is no item.
std::vector<Entry> EntriesOf(const ComPtr<IFolder>& folder,
                             const std::vector<std::u16string>& excluded,
                             const std::function<void(const Failure&)>& fail)
{
    std::vector<Entry> entries;
    const auto add = [&](const ComPtr<IFileSystemItem>& item) {
        std::u16string name = PairingName(item);
        if (std::find(excluded.begin(), excluded.end(), name) == excluded.end())
            entries.push_back(
                {std::move(name), item.As<IFile>(), item.As<IFolder>(), IsLink(item)});
    };
    ForEachItem(folder, add, fail);
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
    FolderComparison(const FolderRules& rules, const Tell& tell) : rules_(rules), tell_(tell) {}

    void Compare(const std::u16string& prefix, const ComPtr<IFolder>& left,
                 const ComPtr<IFolder>& right)
    {
        const auto fail = [&](const Failure& failure) {
            tell_({prefix + u"?", Verdict::Failed, {}, {}, {}, failure});
        };
        const std::vector<Entry> lefts = EntriesOf(left, rules_.excluded, fail);
        const std::vector<Entry> rights = EntriesOf(right, rules_.excluded, fail);
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

    Finding FindingOf(const Entry& left, const Entry& right) const
    {
        const auto leftSize = KnownSize(left);
        const auto rightSize = KnownSize(right);
        if (!left.file != !right.file)
            return {{}, Verdict::KindDiffers, leftSize, rightSize, {}, {}};
        if (!left.file)
            return {{}, Verdict::Equal, {}, {}, {}, {}};
        // Unequal sizes say enough: no need to read.
        if (rules_.trustsSizes && leftSize != rightSize)
            return {{}, Verdict::Different, leftSize, rightSize, {}, {}};
        return CompareFiles(left.file, right.file);
    }

    const FolderRules& rules_;
    const Tell& tell_;
};

} // namespace

void CompareFolders(const ComPtr<IFolder>& left, const ComPtr<IFolder>& right,
                    const FolderRules& rules, const Tell& tell)
{
    FolderComparison(rules, tell).Compare({}, left, right);
}

} // namespace tarnwell::host
