#include "client/strict.h"

#include "support/files.h"

#include <tarnwell/implements.h>

#include <stdexcept>

namespace tarnwell::bench
{

namespace
{

// Counts what it is given.
class Counter : public Implements<IHistorySink>
{
public:
    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL*) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Take(const HistoryRevision*) override
    {
        ++count;
        return S_OK;
    }
    std::uint32_t count = 0;
};

class FileCounter : public Implements<ITreeSink>
{
public:
    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL*) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Take(const TreeItem* item) override
    {
        count += item->kind == TreeFile ? 1 : 0;
        return S_OK;
    }
    std::uint32_t count = 0;
};

void Expect(bool holds, const char* failure)
{
    if (!holds)
        throw std::runtime_error(failure);
}

ComPtr<ITree> TreeOf(const ComPtr<IFileSystem>& system, const std::string& folder)
{
    ComPtr<ITree> tree;
    const std::u16string path = Widened(folder);
    Expect(system.As<IFileSystemTrees>()->OpenTree(path.c_str(), nullptr, nullptr, tree.Out()) ==
               S_OK,
           "there is no tree");
    return tree;
}

} // namespace

std::function<void()> Telling(const ComPtr<IFileSystem>& system, const std::string& path,
                              std::uint32_t count, std::uint32_t expected, std::uint32_t flags)
{
    return [=, wide = Widened(path)] {
        const auto counter = ComPtr<Counter>::Adopt(new Counter);
        const HistoryOptions options{sizeof(HistoryOptions), flags, 0, count, 0, 0};
        system.As<IFileSystemHistory>()->ReadHistory(wide.c_str(), nullptr, &options,
                                                     counter.Get());
        Expect(counter->count == expected, "the module tells another number of revisions");
    };
}

std::function<void()> ReadingAll(const ComPtr<IFileSystem>& system, const std::string& folder,
                                 const std::function<std::string(std::uint32_t)>& nameOf,
                                 std::uint32_t count, std::size_t size)
{
    return [=] {
        const auto tree = TreeOf(system, folder);
        std::string block(size + 1, '\0');
        for (std::uint32_t i = 0; i < count; ++i)
        {
            ComPtr<IFileStream> stream;
            ULONG read = 0;
            tree->Open(Widened(nameOf(i)).c_str(), nullptr, stream.Out());
            Expect(stream &&
                       stream.As<::ISequentialStream>()->Read(
                           block.data(), static_cast<ULONG>(block.size()), &read) == S_OK &&
                       read == size,
                   "the module reads another size");
        }
    };
}

std::function<void()> ListingAll(const ComPtr<IFileSystem>& system, const std::string& folder,
                                 std::uint32_t count)
{
    return [=] {
        const auto counter = ComPtr<FileCounter>::Adopt(new FileCounter);
        TreeOf(system, folder)->List(u"", VARIANT_TRUE, counter.Get());
        Expect(counter->count == count, "the module lists another number of files");
    };
}

std::function<void()> Bare(const BareRun& run)
{
    return [=] {
        Expect(RunBare(run) > 0, "the client prints nothing");
    };
}

} // namespace tarnwell::bench
