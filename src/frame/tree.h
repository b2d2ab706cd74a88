// Trees of revisions on their way to the host, common to all file systems that show them.
#pragma once

#include "frame/boundary.h"
#include "frame/comobject.h"
#include "frame/patience.h"

#include <tarnwell/pointers.h>
#include <tarnwell/trees.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tarnwell
{

struct TreeRecord
{
    std::u16string name; // from the top on
    std::u16string contentId;
    TreeItemKind kind = TreeFolder;
    bool isExecutable = false;
    bool hasKeywords = false;
    bool hasOtherLineEnds = false; // may have, in work trees
    std::uint64_t size = 0;        // in bytes
};

// Takes a record. False if no more are wanted.
using TreeTaker = std::function<bool(const TreeRecord& record)>;

// What a file system knows of one revision. What fails throws; names are the host's.
class TreeReader
{
public:
    TreeReader() = default;
    TreeReader(const TreeReader&) = delete;
    TreeReader& operator=(const TreeReader&) = delete;
    virtual ~TreeReader() = default;

    virtual const std::u16string& RevisionId() const = 0;
    virtual std::uint64_t RevisionTime() const = 0;
    virtual TreeRecord Find(const std::u16string& name, Patience& patience) = 0;
    virtual void List(const std::u16string& name, bool recursive, const TreeTaker& take,
                      Patience& patience) = 0;
    virtual ComPtr<IFileStream> Open(const std::u16string& name, Patience& patience) = 0;
    // The `contentId` that a file on the disk would be recorded with. Empty where it isn't in a
    // work tree of the repository, or where there are no such names.
    virtual std::u16string RecordedId(const std::u16string& /*path*/, Patience& /*patience*/)
    {
        return {};
    }
};

class TreeObject : public ITree, public ITreeWorkFiles, public ErrorInfoFor<ITree, ITreeWorkFiles>
{
public:
    using Interfaces = InterfaceList<ITree, ITreeWorkFiles, ::ISupportErrorInfo>;

    // Called once, before the object is handed out. `classId` is the class that a failure names.
    void Fill(std::unique_ptr<TreeReader> reader, const GUID& classId, const char16_t* source);

    HRESULT STDMETHODCALLTYPE GetRevisionId(BSTR* id) override;
    HRESULT STDMETHODCALLTYPE GetRevisionTime(std::uint64_t* fileTime) override;
    HRESULT STDMETHODCALLTYPE Find(const OLECHAR* name, ITreeSink* sink) override;
    HRESULT STDMETHODCALLTYPE List(const OLECHAR* name, VARIANT_BOOL recursive,
                                   ITreeSink* sink) override;
    HRESULT STDMETHODCALLTYPE Open(const OLECHAR* name, ICopyProgress* progress,
                                   IFileStream** stream) override;
    HRESULT STDMETHODCALLTYPE GetRecordedId(const OLECHAR* path, ICopyProgress* progress,
                                            BSTR* contentId) override;

protected:
    ~TreeObject() = default;

private:
    Reporter Reports() const
    {
        return {*classId_, IID_ITree};
    }
    HRESULT Give(ITreeSink* sink, const TreeRecord& record) const;

    std::unique_ptr<TreeReader> reader_;
    const GUID* classId_ = nullptr;
    const char16_t* source_ = nullptr;
};

// Opens what `path` was in `revision`, or in that which the path tells. Throws when it fails.
using TreeOpener = std::function<std::unique_ptr<TreeReader>(
    const std::u16string& path, const std::optional<std::u16string>& revision, Patience& patience)>;

// A call of IFileSystemTrees::OpenTree: what is given to it, and `open`. `reporter` names a class
// identifier that stays; `source` names the file system in failures.
HRESULT OpenTreeForHost(const Reporter& reporter, const char16_t* source, const OLECHAR* path,
                        const OLECHAR* revision, ICopyProgress* progress, ITree** tree,
                        const TreeOpener& open);

} // namespace tarnwell
