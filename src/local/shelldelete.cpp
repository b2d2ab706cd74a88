#include "local/shelldelete.h"

#include "platform/wide.h"

namespace tarnwell
{

ShellList& ShellList::Add(const std::u16string& path)
{
    text_.insert(text_.size() - 1, path + u'\0');
    return *this;
}

const WCHAR* ShellList::Get() const
{
    return Wide(text_);
}

ShellOutcome ShellDelete(HWND owner, const ShellList& list, bool noConfirm, bool recursive,
                         ShellUndo undo)
{
    SHFILEOPSTRUCTW operation{};
    operation.hwnd = owner;
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.Get();
    operation.fFlags =
        static_cast<WORD>((recursive ? 0 : FOF_NORECURSION) | (noConfirm ? FOF_NOCONFIRMATION : 0) |
                          (undo == ToTrash ? FOF_ALLOWUNDO : 0));
    const int error = SHFileOperationW(&operation);
    return {error, operation.fAnyOperationsAborted != 0};
}

} // namespace tarnwell
