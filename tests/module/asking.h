// What asks a file system for histories in full and for trees of revisions, for the tests of one.
#pragma once

#include "module/objects.h"
#include "module/outcome.h"
#include "module/trees.h"
#include "support/historysink.h"

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

inline std::vector<std::u16string> DescriptionsOf(const std::vector<HistoryEntry>& entries)
{
    std::vector<std::u16string> found;
    for (const HistoryEntry& entry : entries)
        found.push_back(entry.description);
    return found;
}

// `Base` has the file system, as `system`.
template <class Base> class Asking : public Base
{
protected:
    // With it, all of the path is a path.
    using MaybeRevision = std::optional<std::u16string>;

    using Base::Base;

    Outcome Read(const std::u16string& path, HistorySink& sink, HistoryOptions options = Wanted(),
                 const MaybeRevision& revision = {}) const
    {
        const auto histories = this->system.template As<IFileSystemHistory>();
        Outcome outcome = OutcomeOf(
            [&] { return histories->ReadHistory(Ole(path), Units(revision), &options, &sink); });
        EXPECT_EQ(sink.references, 0U);
        return outcome;
    }
    std::vector<HistoryEntry> History(const std::u16string& path, HistoryOptions options = Wanted(),
                                      const MaybeRevision& revision = {}) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options, revision), Succeeded());
        return sink.entries;
    }
    std::vector<std::u16string> Descriptions(const std::u16string& path,
                                             HistoryOptions options = Wanted(),
                                             const MaybeRevision& revision = {}) const
    {
        return DescriptionsOf(History(path, options, revision));
    }
    // That takes nothing.
    Outcome HistoryFailure(const std::u16string& path, const MaybeRevision& revision = {},
                           HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        Outcome outcome = Read(path, sink, options, revision);
        EXPECT_THAT(sink.entries, testing::IsEmpty());
        return outcome;
    }
    HRESULT ReadStatus(const std::u16string& path, const MaybeRevision& revision = {},
                       HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        const HRESULT status = Read(path, sink, options, revision).status;
        EXPECT_TRUE(sink.entries.empty() || status == S_OK);
        return status;
    }

    Outcome OpenTree(const std::u16string& path, ComPtr<ITree>& tree,
                     const MaybeRevision& revision = {}, ICopyProgress* progress = nullptr) const
    {
        const auto trees = this->system.template As<IFileSystemTrees>();
        Outcome outcome = OutcomeOf(
            [&] { return trees->OpenTree(Ole(path), Units(revision), progress, tree.Out()); });
        EXPECT_EQ(outcome.status == S_OK, static_cast<bool>(tree));
        return outcome;
    }
    ComPtr<ITree> Tree(const std::u16string& path, const MaybeRevision& revision = {}) const
    {
        ComPtr<ITree> tree;
        EXPECT_THAT(OpenTree(path, tree, revision), Succeeded());
        return tree;
    }
    Outcome TreeFailure(const std::u16string& path, const MaybeRevision& revision = {}) const
    {
        ComPtr<ITree> tree;
        return OpenTree(path, tree, revision);
    }
    HRESULT TreeStatus(const std::u16string& path, const MaybeRevision& revision = {}) const
    {
        return TreeFailure(path, revision).status;
    }

private:
    static const OLECHAR* Units(const MaybeRevision& revision)
    {
        return revision ? Ole(*revision) : nullptr;
    }
};

} // namespace tarnwell::test
