#include "local/item.h"

#include "frame/boundary.h"
#include "frame/hostuser.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "local/shelldelete.h"

#include <tarnwell/classes.h>

namespace tarnwell
{

namespace
{

template <const GUID& classId> constexpr Reporter reporter{classId, IID_IFileSystemItem};

std::u16string_view ParentPathOf(const LocalFacts& facts)
{
    return DropLastSeparator(std::u16string_view(facts.path).substr(0, facts.nameOffset));
}

HRESULT DeleteForGood(const std::u16string& path, const Reporter& reporter)
{
    if (DeleteFileW(Wide(path)))
        return S_OK;
    const HRESULT status = StatusFromLastError();
    return PublishFailure(reporter, MessageId::DeleteFailed, status, {path});
}

// The shell gets no undo flag here, in contrast to the deletion of a list: one item is deleted
// for good. Its abort flag isn't looked at, so that a "no" passes as success if the shell says 0.
HRESULT DeleteByShell(const LocalFacts& facts, bool noConfirm, bool recursive,
                      const Reporter& reporter)
{
    const ShellList list = ShellList().Add(facts.path);
    const ShellOutcome outcome =
        ShellDelete(OwnerWindow(facts.host.Get()), list, noConfirm, recursive, ForGood);
    if (outcome.error == 0)
        return S_OK;
    return PublishFailure(reporter, MessageId::DeleteFailed, E_FAIL, {facts.path});
}

} // namespace

template <const GUID& classId> HRESULT LocalItem<classId>::GetModifiedTime(std::uint64_t* fileTime)
{
    return AtBoundary(reporter<classId>, NullPointer::Published, fileTime, [&] {
        *fileTime = facts_.modifiedTime;
        return S_OK;
    });
}

template <const GUID& classId> HRESULT LocalItem<classId>::GetAttributes(std::uint32_t* attributes)
{
    return AtBoundary(reporter<classId>, NullPointer::Published, attributes, [&] {
        *attributes = facts_.attributes;
        return S_OK;
    });
}

template <const GUID& classId> HRESULT LocalItem<classId>::SetAttributes(std::uint32_t attributes)
{
    return AtBoundary(reporter<classId>, [&] {
        if (!SetFileAttributesW(Wide(facts_.path), attributes))
        {
            const HRESULT status = StatusFromLastError();
            return PublishFailure(reporter<classId>, MessageId::AttributesFailed, status,
                                  {facts_.path});
        }
        facts_.attributes = attributes;
        return S_OK;
    });
}

template <const GUID& classId> HRESULT LocalItem<classId>::GetName(BSTR* name)
{
    return AtBoundary(reporter<classId>, NullPointer::Published, name, [&] {
        const std::u16string_view path = facts_.path;
        return ToHost(path.substr(facts_.nameOffset), name);
    });
}

template <const GUID& classId> HRESULT LocalItem<classId>::GetParentPath(BSTR* path)
{
    return AtBoundary(reporter<classId>, NullPointer::Published, path,
                      [&] { return ToHost(ParentPathOf(facts_), path); });
}

template <const GUID& classId> HRESULT LocalItem<classId>::GetPath(BSTR* path)
{
    return AtBoundary(reporter<classId>, NullPointer::Published, path,
                      [&] { return ToHost(facts_.path, path); });
}

template <const GUID& classId>
HRESULT LocalItem<classId>::Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    return AtBoundary(reporter<classId>, [&] {
        if (IsTrue(noConfirm) && !IsTrue(recursive))
            return DeleteForGood(facts_.path, reporter<classId>);
        return DeleteByShell(facts_, IsTrue(noConfirm), IsTrue(recursive), reporter<classId>);
    });
}

template class LocalItem<CLSID_Win32File>;
template class LocalItem<CLSID_Win32Folder>;

} // namespace tarnwell
