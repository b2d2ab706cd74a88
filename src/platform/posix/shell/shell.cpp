// The shell's operations: deleting, for good or to the trash.
#include "platform/posix/errors/lasterror.h"
#include "platform/posix/files/nativepath.h"
#include "platform/posix/shell/confirm.h"
#include "platform/posix/shell/deletetree.h"
#include "platform/posix/shell/trash.h"

#include <cerrno>
#include <new>
#include <sys/stat.h>
#include <vector>

namespace tarnwell::posix
{
namespace
{

constexpr WORD supportedFlags = FOF_NOCONFIRMATION | FOF_NORECURSION | FOF_ALLOWUNDO;

// The texts of a list that an empty one closes.
std::vector<std::u16string_view> TextsOf(LPCWSTR list)
{
    std::vector<std::u16string_view> texts;
    while (list != nullptr && *list != 0)
    {
        texts.emplace_back(list);
        list += texts.back().size() + 1;
    }
    return texts;
}

// A root, the current folder and the one above are never what somebody means to delete.
bool IsRefused(std::string_view path)
{
    const std::string_view leaf = LeafOf(path);
    return leaf.empty() || leaf == "." || leaf == "..";
}

DWORD CheckItem(const std::string& path, WORD flags)
{
    if (IsRefused(path))
        return ERROR_INVALID_PARAMETER;
    struct stat entry;
    const std::string item(WithoutTrailingSeparators(path));
    if (lstat(item.c_str(), &entry) != 0)
        return LookupError(item, errno);
    // The trash would take the folder with all that is in it.
    constexpr WORD emptyToTrash = FOF_ALLOWUNDO | FOF_NORECURSION;
    return (flags & emptyToTrash) == emptyToTrash ? CheckEmptyFolder(item) : ERROR_SUCCESS;
}

DWORD DeleteForGood(const std::vector<std::string>& items, bool recurse)
{
    for (const std::string& item : items)
    {
        if (const DWORD error = DeleteTree(item, recurse); error != ERROR_SUCCESS)
            return error;
    }
    return ERROR_SUCCESS;
}

DWORD Delete(SHFILEOPSTRUCTW& operation)
{
    const std::vector<std::u16string_view> texts = TextsOf(operation.pFrom);
    if (texts.empty())
        return ERROR_INVALID_PARAMETER;

    // Nothing is asked, and nothing touched, before the whole list is seen to make sense.
    std::vector<std::string> items;
    for (const std::u16string_view text : texts)
    {
        std::optional<std::string> path = NativePath(text.data());
        if (!path)
            return GetLastError();
        if (const DWORD error = CheckItem(*path, operation.fFlags); error != ERROR_SUCCESS)
            return error;
        items.push_back(std::move(*path));
    }

    const bool toTrash = (operation.fFlags & FOF_ALLOWUNDO) != 0;
    const bool ask = (operation.fFlags & FOF_NOCONFIRMATION) == 0;
    if (ask && !ConfirmDelete(texts.front(), texts.size(),
                              toTrash ? Deletion::ToTrash : Deletion::ForGood))
    {
        operation.fAnyOperationsAborted = 1;
        return ERROR_CANCELLED;
    }
    return toTrash ? MoveToTrash(items)
                   : DeleteForGood(items, (operation.fFlags & FOF_NORECURSION) == 0);
}

DWORD Run(SHFILEOPSTRUCTW& operation)
{
    operation.fAnyOperationsAborted = 0;
    if (operation.wFunc != FO_DELETE || (operation.fFlags & ~supportedFlags) != 0)
        return ERROR_NOT_SUPPORTED;
    try
    {
        return Delete(operation);
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

} // namespace
} // namespace tarnwell::posix

extern "C" int SHFileOperationW(SHFILEOPSTRUCTW* operation)
{
    const DWORD error = tarnwell::posix::Run(*operation);
    if (error != ERROR_SUCCESS)
        tarnwell::posix::Fail(error);
    return static_cast<int>(error);
}
