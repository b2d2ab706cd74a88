#include "comparison.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

struct Entry
{
    std::u16string name;
    std::unique_ptr<Side> side;
};

// `fail` is called for what is no item.
std::vector<Entry> EntriesOf(const Side& folder, const std::vector<std::u16string>& excluded,
                             const Side::Fail& fail)
{
    std::vector<Entry> entries;
    const auto add = [&](std::unique_ptr<Side>& side) {
        std::u16string name = side->PairingName();
        if (std::find(excluded.begin(), excluded.end(), name) == excluded.end())
            entries.push_back({std::move(name), std::move(side)});
    };
    for (std::unique_ptr<Side>& side : folder.Inside(fail))
    {
        try
        {
            add(side);
        }
        catch (const Failure& failure)
        {
            fail(failure);
        }
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return left.name < right.name; });
    return entries;
}

// A link to a folder above would never end.
bool IsEntered(const Side& side)
{
    return side.IsFolder() && !side.IsLink();
}

class FolderComparison
{
public:
    FolderComparison(const FolderRules& rules, const TellFinding& tell) : rules_(rules), tell_(tell)
    {
    }

    void Compare(const std::u16string& prefix, const Side& left, const Side& right)
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
        (verdict == Verdict::OnlyLeft ? finding.leftSize : finding.rightSize) = entry.side->Size();
        tell_(finding);
    }

    void ComparePair(const std::u16string& prefix, const Entry& left, const Entry& right)
    {
        const std::u16string name = prefix + left.name;
        try
        {
            Finding finding = CompareItems(*left.side, *right.side, rules_.trustsSizes);
            finding.name = name;
            tell_(finding);
            if (IsEntered(*left.side) && IsEntered(*right.side))
                Compare(name + u"/", *left.side, *right.side);
        }
        catch (const Failure& failure)
        {
            // The user's wish ends all of it.
            if (failure.status == E_ABORT)
                throw;
            tell_({name, Verdict::Failed, {}, {}, {}, failure});
        }
    }

    const FolderRules& rules_;
    const TellFinding& tell_;
};

} // namespace

void CompareFolders(const Side& left, const Side& right, const FolderRules& rules,
                    const TellFinding& tell)
{
    FolderComparison(rules, tell).Compare({}, left, right);
}

} // namespace tarnwell::host
