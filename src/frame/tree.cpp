#include "frame/tree.h"

#include "frame/status.h"
#include "frame/text.h"

namespace tarnwell
{

namespace
{

// Throws message 114 if it can't be made.
ComPtr<ITree> MakeTree(std::unique_ptr<TreeReader> reader, const GUID& classId,
                       const char16_t* source)
{
    ComPtr<ComObject<TreeObject>> tree;
    const HRESULT status = MakeObject<TreeObject>(tree);
    if (FAILED(status))
    {
        throw ComException(status, FormatMessageWithStatus(MessageId::SupportObjectFailed, status),
                           At(source));
    }
    tree->Fill(std::move(reader), classId, source);
    return ComPtr<ITree>::Adopt(tree.Detach());
}

std::uint32_t FlagsOf(const TreeRecord& record)
{
    std::uint32_t flags = 0;
    for (const auto& [isSet, flag] : {std::pair(record.isExecutable, TreeItemExecutable),
                                      std::pair(record.hasKeywords, TreeItemKeywords),
                                      std::pair(record.hasOtherLineEnds, TreeItemLineEnds)})
        flags |= isSet ? std::uint32_t{flag} : 0;
    return flags;
}

} // namespace

void TreeObject::Fill(std::unique_ptr<TreeReader> reader, const GUID& classId,
                      const char16_t* source)
{
    reader_ = std::move(reader);
    classId_ = &classId;
    source_ = source;
}

HRESULT TreeObject::GetRevisionId(BSTR* id)
{
    return AtBoundary(Reports(), NullPointer::Published, id,
                      [&] { return ToHost(reader_->RevisionId(), id); });
}

HRESULT TreeObject::GetRevisionTime(std::uint64_t* fileTime)
{
    return AtBoundary(Reports(), NullPointer::Published, fileTime, [&] {
        *fileTime = reader_->RevisionTime();
        return S_OK;
    });
}

HRESULT TreeObject::Find(const OLECHAR* name, ITreeSink* sink)
{
    if (sink == nullptr)
        return RefuseNull(Reports(), NullPointer::Published);
    return AtBoundary(Reports(), [&] {
        const auto held = ComPtr<ITreeSink>::Share(sink);
        Patience patience(sink, source_);
        const HRESULT answer = Give(sink, reader_->Find(FromHost(name), patience));
        return FAILED(answer) ? answer : S_OK;
    });
}

HRESULT TreeObject::List(const OLECHAR* name, VARIANT_BOOL recursive, ITreeSink* sink)
{
    if (sink == nullptr)
        return RefuseNull(Reports(), NullPointer::Published);
    return AtBoundary(Reports(), [&] {
        const auto held = ComPtr<ITreeSink>::Share(sink);
        Patience patience(sink, source_);
        HRESULT answer = S_OK;
        const auto take = [&](const TreeRecord& record) {
            answer = Give(sink, record);
            return answer == S_OK;
        };
        reader_->List(FromHost(name), IsTrue(recursive), take, patience);
        return FAILED(answer) ? answer : S_OK;
    });
}

HRESULT TreeObject::Open(const OLECHAR* name, ICopyProgress* progress, IFileStream** stream)
{
    return AtBoundary(Reports(), NullPointer::Published, stream, [&] {
        const auto held = ComPtr<ICopyProgress>::Share(progress);
        Patience patience(progress, source_);
        *stream = reader_->Open(FromHost(name), patience).Detach();
        return S_OK;
    });
}

HRESULT TreeObject::GetRecordedId(const OLECHAR* path, ICopyProgress* progress, BSTR* contentId)
{
    return AtBoundary(Reporter{*classId_, IID_ITreeWorkFiles}, NullPointer::Published, contentId,
                      [&] {
                          const auto held = ComPtr<ICopyProgress>::Share(progress);
                          Patience patience(progress, source_);
                          return ToHost(reader_->RecordedId(FromHost(path), patience), contentId);
                      });
}

HRESULT TreeObject::Give(ITreeSink* sink, const TreeRecord& record) const
{
    const TreeItem item{Wide(record.name), Wide(record.contentId), record.kind, FlagsOf(record),
                        record.size,       reader_->RevisionTime()};
    return sink->Take(&item);
}

HRESULT OpenTreeForHost(const Reporter& reporter, const char16_t* source, const OLECHAR* path,
                        const OLECHAR* revision, ICopyProgress* progress, ITree** tree,
                        const TreeOpener& open)
{
    return AtBoundary(reporter, NullPointer::Published, tree, [&] {
        std::optional<std::u16string> wanted;
        if (revision != nullptr)
            wanted = FromHost(revision);
        const auto held = ComPtr<ICopyProgress>::Share(progress);
        Patience patience(progress, source);
        auto reader = open(FromHost(path), wanted, patience);
        *tree = MakeTree(std::move(reader), reporter.classId, source).Detach();
        return S_OK;
    });
}

} // namespace tarnwell
