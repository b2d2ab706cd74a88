#include "comparison.h"
#include "recordedform.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

// The left side is opened first: of two that can't be, it is the one that is told.
template <class F> Finding CompareContents(F&& open, const Side& leftSide, const Side& rightSide)
{
    auto left = open(leftSide);
    auto right = open(rightSide);
    std::uint64_t leftSize = 0;
    std::uint64_t rightSize = 0;
    std::optional<std::uint64_t> firstDifference;
    for (;;)
    {
        const std::span<const char> a = left.Next();
        const std::span<const char> b = right.Next();
        if (a.empty() && b.empty())
            break;
        const auto apart = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
        if (!firstDifference && (apart.first != a.end() || apart.second != b.end()))
            firstDifference = leftSize + static_cast<std::uint64_t>(apart.first - a.begin());
        leftSize += a.size();
        rightSize += b.size();
    }
    const Verdict verdict = firstDifference ? Verdict::Different : Verdict::Equal;
    return {{}, verdict, leftSize, rightSize, firstDifference, {}};
}

// What the system may have converted on the way from a tree to the other side.
Conversions ConversionsOf(const Side& left, const Side& right)
{
    if (left.IsInTree() == right.IsInTree())
        return {};
    const Side& tree = left.IsInTree() ? left : right;
    return {tree.HasKeywords(), tree.HasOtherLineEnds()};
}

Verdict CompareRecordedForms(const Side& left, const Side& right, const Conversions& conversions)
{
    const auto open = [&](const Side& side) {
        return RecordedForm(side.Open(), conversions);
    };
    return CompareContents(open, left, right).verdict;
}

// A link is one in the other side, too, but for trees on systems without links: there its path
// stands in a file.
bool LinkDiffers(const Side& left, const Side& right)
{
    if (!left.IsInTree() && !right.IsInTree())
        return false;
    const bool mayStandInFile = left.IsLink()
                                    ? left.IsInTree() && !right.IsInTree() && right.IsFile()
                                    : right.IsInTree() && !left.IsInTree() && left.IsFile();
    return left.IsLink() != right.IsLink() && !mayStandInFile;
}

// Where one side knows no more than the path.
bool ComparesPaths(const Side& left, const Side& right)
{
    return left.IsInTree() != right.IsInTree() && left.IsLink() && right.IsLink();
}

bool IsSameContent(const Side& left, const Side& right)
{
    const std::u16string id = left.ContentId();
    return !id.empty() && id == right.ContentId();
}

Finding Judged(Verdict verdict, const Side& left, const Side& right)
{
    return {{}, verdict, left.Size(), right.Size(), {}, {}};
}

Finding CompareRepositories(const Side& left, const Side& right)
{
    if (left.IsFile() || right.IsFile())
        return Judged(Verdict::KindDiffers, left, right);
    // The folder that another repository is checked out into tells no revision.
    const bool isKnown = left.IsRepository() && right.IsRepository();
    return Judged(!isKnown || IsSameContent(left, right) ? Verdict::Equal : Verdict::Different,
                  left, right);
}

// By the sizes where they say enough, or else by all bytes, converted or not.
Finding CompareFiles(const Side& left, const Side& right, bool trustsSizes)
{
    const Conversions conversions = ConversionsOf(left, right);
    if (trustsSizes && !conversions && left.Size() != right.Size())
        return Judged(Verdict::Different, left, right);
    Finding finding = CompareContents([](const Side& side) { return side.Open(); }, left, right);
    if (finding.verdict == Verdict::Different && conversions)
        finding.verdict = CompareRecordedForms(left, right, conversions);
    return finding;
}

// Whether the system itself, by its settings, would record the file on the disk as what the tree
// has. A link is never converted.
bool IsRecorded(const Side& left, const Side& right)
{
    if (left.IsInTree() == right.IsInTree() || left.IsLink() || right.IsLink())
        return false;
    return left.IsInTree() ? left.IsRecordOf(right) : right.IsRecordOf(left);
}

// By what is known of the two.
Finding CompareAsTold(const Side& left, const Side& right, bool trustsSizes)
{
    if (left.IsRepository() || right.IsRepository())
        return CompareRepositories(left, right);
    if (ComparesPaths(left, right))
        return CompareContents([](const Side& side) { return side.OpenPath(); }, left, right);
    if (left.IsFile() != right.IsFile())
        return Judged(Verdict::KindDiffers, left, right);
    if (LinkDiffers(left, right))
        return Judged(Verdict::LinkDiffers, left, right);
    if (!left.IsFile() || IsSameContent(left, right))
        return Judged(Verdict::Equal, left, right);
    Finding finding = CompareFiles(left, right, trustsSizes);
    if (finding.verdict == Verdict::Different && IsRecorded(left, right))
        finding.verdict = Verdict::Equal;
    if (finding.verdict == Verdict::Equal)
        finding.firstDifference.reset();
    return finding;
}

} // namespace

Finding CompareItems(const Side& left, const Side& right, bool trustsSizes)
{
    Finding finding = CompareAsTold(left, right, trustsSizes);
    if (finding.verdict == Verdict::Equal)
        return finding;
    const std::unique_ptr<Side> leftInFull = left.InFull();
    const std::unique_ptr<Side> rightInFull = right.InFull();
    if (leftInFull == nullptr && rightInFull == nullptr)
        return finding;
    return CompareAsTold(leftInFull ? *leftInFull : left, rightInFull ? *rightInFull : right,
                         trustsSizes);
}

} // namespace tarnwell::host
