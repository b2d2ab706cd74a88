// Files and folders, found by address.
#pragma once

#include "session.h"

#include <functional>

namespace tarnwell::host
{

// Whatever stands at the address, which must exist. Of a Git or Mercurial address a file, which
// may or may not exist.
ComPtr<IFileSystemItem> FindItem(const Place& place);

// The file at the address; it must exist where the file system can tell.
ComPtr<IFile> FindFile(const Place& place);

ComPtr<IFolder> FindFolder(const Place& place);

ComPtr<IFolderContents> ContentsOf(const ComPtr<IFolder>& folder);

ComPtr<IFileSystemItem> ItemAt(const ComPtr<IFolderContents>& contents, std::uint32_t index);

// Calls `use` with each index, in the file system's order. A server may list a name that makes no
// item: for that, and wherever else `use` throws Failure, `fail` is called, and the rest goes on.
void ForEachIndex(const ComPtr<IFolderContents>& contents,
                  const std::function<void(std::uint32_t index)>& use,
                  const std::function<void(const Failure&)>& fail);

// The same with the items of a folder.
void ForEachItem(const ComPtr<IFolder>& folder,
                 const std::function<void(const ComPtr<IFileSystemItem>&)>& use,
                 const std::function<void(const Failure&)>& fail);

// A text that an item gives through one of its methods.
template <class I> std::u16string TextFrom(I* item, HRESULT (STDMETHODCALLTYPE I::*method)(BSTR*))
{
    Bstr text;
    Call([&] { return (item->*method)(text.Out()); });
    return std::u16string(text.View());
}

// Whether a lookup failed as there is no such item, or none of that kind.
bool IsMissing(const Failure& failure);

std::uint64_t SizeOf(const ComPtr<IFile>& file);

} // namespace tarnwell::host
