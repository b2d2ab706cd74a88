// The classes of a file system of working copies. They offer files only: the content of a
// revision, and the list of revisions.
#pragma once

#include "addressed/fileobject.h"
#include "addressed/filesystemobject.h"
#include "addressed/interfaceimpl.h"
#include "addressed/revisioncalls.h"
#include "workingcopy/workingcopyuri.h"

namespace tarnwell
{

// `Tool` has the address class `Address`, the class identifiers `systemClass` and `fileClass`, the
// name `source` for positions of failures, and the questions `GetLog(text)` and `GetContent(uri)`,
// which throw.

template <class Tool>
class WorkingCopyFileObject : public FileObject<typename Tool::Address, Tool::fileClass>
{
public:
    HRESULT STDMETHODCALLTYPE Open(std::uint32_t access, std::uint32_t disposition,
                                   IFileStream** stream) final
    {
        return AtBoundary(this->fileReporter, NullPointer::Bare, stream, [&] {
            const std::shared_ptr<Uri>& uri = this->Address();
            if (access != GENERIC_READ || disposition != OPEN_EXISTING)
                throw ComException(E_INVALIDARG,
                                   FormatMessageById(MessageId::OpenFailed, {uri->GetText()}),
                                   At(Tool::source));
            *stream = Tool::GetContent(*uri).Detach();
            return S_OK;
        });
    }

protected:
    ~WorkingCopyFileObject() override = default;

    std::ptrdiff_t FindRevisionMarker(std::u16string_view text) const final
    {
        return RevisionMarkerOf(text);
    }
    // The clients are never asked for facts.
    std::shared_ptr<FSItem> ReadItemInfo(const std::shared_ptr<Uri>&) final
    {
        ThrowIfNotMade(E_NOTIMPL);
        return nullptr;
    }
};

template <class Tool>
class WorkingCopyFileSystemObject : public FileSystemObject<Tool::systemClass>,
                                    public IFileSystemRevisions
{
public:
    using Interfaces =
        InterfaceList<IFileSystemRevisions, IFileSystemInit, IFileSystem, ::ISupportErrorInfo>;

    HRESULT STDMETHODCALLTYPE HasRevisions(const OLECHAR* path, std::uint32_t,
                                           VARIANT_BOOL* has) final
    {
        return HasRevisionsHidingFailures(Tool::systemClass, has,
                                          [&] { return Tool::GetLog(FromHost(path)); });
    }
    HRESULT STDMETHODCALLTYPE GetRevisions(const OLECHAR* path, std::uint32_t,
                                           IRevisions** revisions) final
    {
        return GetRevisionsHidingFailures(Tool::systemClass, revisions,
                                          [&] { return Tool::GetLog(FromHost(path)); });
    }

protected:
    ~WorkingCopyFileSystemObject() = default;

    ComPtr<IFile> CreateFileObject(const std::u16string& path, bool mustExist) final
    {
        return this->template MakeItem<WorkingCopyFileObject<Tool>, IFile>(path, mustExist);
    }
    ComPtr<IFolder> CreateFolderObject(const std::u16string&, bool) final
    {
        ThrowIfNotMade(E_NOTIMPL);
        return {};
    }
};

} // namespace tarnwell
