#include "local/item.h"

#include "frame/boundary.h"
#include "frame/hostuser.h"
#include "frame/paths.h"
#include "frame/text.h"
#include "local/shelldelete.h"

namespace tarnwell
{

namespace
{

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
    const std::u16string path = facts.Path();
    const ShellList list = ShellList().Add(path);
    const ShellOutcome outcome =
        ShellDelete(OwnerWindow(facts.host.Get()), list, noConfirm, recursive, ForGood);
    if (outcome.error == 0)
        return S_OK;
    return PublishFailure(reporter, MessageId::DeleteFailed, E_FAIL, {path});
}

} // namespace

std::u16string LocalFacts::Path() const
{
    const std::u16string_view leaf = name.View();
    std::u16string path;
    path.reserve(prefix->size() + leaf.size());
    path += *prefix;
    path += leaf;
    return path;
}

char16_t* LocalItem::Fill(const PathPrefix& prefix, const ItemFacts& facts,
                          const ComPtr<IHostWindow>& host, std::size_t nameSize)
{
    facts_.prefix = prefix;
    facts_.attributes = facts.attributes;
    facts_.sizeLow = facts.sizeLow;
    facts_.sizeHigh = facts.sizeHigh;
    facts_.modifiedTime = TimeOf(facts.written);
    facts_.host = host;
    return facts_.name.Make(nameSize);
}

HRESULT LocalItem::GetModifiedTime(std::uint64_t* fileTime)
{
    return AtBoundary(reporter_, NullPointer::Published, fileTime, [&] {
        *fileTime = facts_.modifiedTime;
        return S_OK;
    });
}

HRESULT LocalItem::GetAttributes(std::uint32_t* attributes)
{
    return AtBoundary(reporter_, NullPointer::Published, attributes, [&] {
        *attributes = facts_.attributes;
        return S_OK;
    });
}

HRESULT LocalItem::SetAttributes(std::uint32_t attributes)
{
    return AtBoundary(reporter_, [&] {
        const std::u16string path = facts_.Path();
        if (!SetFileAttributesW(Wide(path), attributes))
        {
            const HRESULT status = StatusFromLastError();
            return PublishFailure(reporter_, MessageId::AttributesFailed, status, {path});
        }
        facts_.attributes = attributes;
        return S_OK;
    });
}

HRESULT LocalItem::GetName(BSTR* name)
{
    return AtBoundary(reporter_, NullPointer::Published, name,
                      [&] { return ToHostWhole(facts_.name.View(), name); });
}

HRESULT LocalItem::GetParentPath(BSTR* path)
{
    return AtBoundary(reporter_, NullPointer::Published, path,
                      [&] { return ToHost(DropLastSeparator(*facts_.prefix), path); });
}

HRESULT LocalItem::GetPath(BSTR* path)
{
    return AtBoundary(reporter_, NullPointer::Published, path,
                      [&] { return ToHost(facts_.Path(), path); });
}

HRESULT LocalItem::Delete(VARIANT_BOOL noConfirm, VARIANT_BOOL recursive)
{
    return AtBoundary(reporter_, [&] {
        if (IsTrue(noConfirm) && !IsTrue(recursive))
            return DeleteForGood(facts_.Path(), reporter_);
        return DeleteByShell(facts_, IsTrue(noConfirm), IsTrue(recursive), reporter_);
    });
}

} // namespace tarnwell
