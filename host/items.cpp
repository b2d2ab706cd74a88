#include "items.h"

namespace tarnwell::host
{

namespace
{

// What a lookup gives for an item of the other kind, and for some that don't exist.
inline constexpr HRESULT notFound = static_cast<HRESULT>(0x80070002);
inline constexpr HRESULT parentNotFound = static_cast<HRESULT>(0x80070003);

} // namespace

ComPtr<IFile> FindFile(const Place& place)
{
    const VARIANT_BOOL mustExist = place.address.kind->hasFolders ? VARIANT_TRUE : VARIANT_FALSE;
    ComPtr<IFile> file;
    Call([&] { return place.fileSystem->GetFile(place.Text(), mustExist, file.Out()); });
    return file;
}

ComPtr<IFolder> FindFolder(const Place& place)
{
    ComPtr<IFolder> folder;
    Call([&] { return place.fileSystem->GetFolder(place.Text(), VARIANT_TRUE, folder.Out()); });
    return folder;
}

ComPtr<IFileSystemItem> FindItem(const Place& place)
{
    try
    {
        return Need<IFileSystemItem>(FindFile(place));
    }
    catch (const Failure& failure)
    {
        if (failure.status != notFound)
            throw;
        // It isn't a file. If it isn't a folder either, the first failure tells more.
        ComPtr<IFolder> folder;
        if (FAILED(place.fileSystem->GetFolder(place.Text(), VARIANT_TRUE, folder.Out())))
            throw;
        return Need<IFileSystemItem>(folder);
    }
}

ComPtr<IFolderContents> ContentsOf(const ComPtr<IFolder>& folder)
{
    ComPtr<IFolderContents> contents;
    Call([&] { return folder->GetContents(contents.Out()); });
    return contents;
}

ComPtr<IFileSystemItem> ItemAt(const ComPtr<IFolderContents>& contents, std::uint32_t index)
{
    ComPtr<IFileSystemItem> item;
    Call([&] { return contents->GetItem(static_cast<std::int32_t>(index), item.Out()); });
    return item;
}

void ForEachIndex(const ComPtr<IFolderContents>& contents,
                  const std::function<void(std::uint32_t index)>& use,
                  const std::function<void(const Failure&)>& fail)
{
    std::uint32_t count = 0;
    Call([&] { return contents->GetCount(&count); });
    for (std::uint32_t i = 0; i < count; ++i)
    {
        try
        {
            use(i);
        }
        catch (const Failure& failure)
        {
            fail(failure);
        }
    }
}

void ForEachItem(const ComPtr<IFolder>& folder,
                 const std::function<void(const ComPtr<IFileSystemItem>&)>& use,
                 const std::function<void(const Failure&)>& fail)
{
    const ComPtr<IFolderContents> contents = ContentsOf(folder);
    ForEachIndex(
        contents, [&](std::uint32_t index) { use(ItemAt(contents, index)); }, fail);
}

bool IsMissing(const Failure& failure)
{
    return failure.status == notFound || failure.status == parentNotFound;
}

std::uint64_t SizeOf(const ComPtr<IFile>& file)
{
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    Call([&] { return file->GetSizeLow(&low); });
    Call([&] { return file->GetSizeHigh(&high); });
    return std::uint64_t{high} << 32 | low;
}

} // namespace tarnwell::host
