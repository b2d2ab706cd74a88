#include "comparison.h"

#include "content.h"

#include <algorithm>

namespace tarnwell::host
{

Finding CompareFiles(const ComPtr<IFile>& left, const ComPtr<IFile>& right)
{
    Reader leftReader(left);
    Reader rightReader(right);
    std::uint64_t leftSize = 0;
    std::uint64_t rightSize = 0;
    std::optional<std::uint64_t> firstDifference;
    for (;;)
    {
        const std::span<const char> a = leftReader.Next();
        const std::span<const char> b = rightReader.Next();
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

} // namespace tarnwell::host
