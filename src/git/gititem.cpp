#include "git/gititem.h"

#include "git/gitstrict.h"
#include "git/gituri.h"

namespace tarnwell
{

GitItem GitItemOf(const std::u16string& given, const std::optional<std::u16string>& wanted)
{
    std::u16string path = given;
    std::u16string revision = wanted.value_or(u"");
    if (!IsWholePath(path))
    {
        path = GITUri(path).GetPath();
        const auto marked = workingCopyMarker.RevisionOf(path);
        if (!wanted && marked)
        {
            revision = *marked;
            path = workingCopyMarker.Strip(path);
        }
    }
    std::optional<GitPlace> place = FindGitPlace(path);
    if (!place)
        ThrowHistoryFailure(HistoryNoRepository, MessageId::RepositoryNotFound, given);
    return {std::move(*place), std::move(revision), given};
}

} // namespace tarnwell
