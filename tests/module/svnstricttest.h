// What asks a Subversion repository of the test for its histories in full, and for trees.
#pragma once

#include "backends/suites/stricttest.h"
#include "module/svntest.h"

#include <tarnwell/text.h>

#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

class SvnStrict : public SvnTest
{
protected:
    Outcome Read(const std::u16string& path, HistorySink& sink, HistoryOptions options = Wanted(),
                 const std::optional<std::u16string>& revision = {}) const
    {
        const auto histories = system.As<IFileSystemHistory>();
        return OutcomeOf([&] {
            return histories->ReadHistory(Ole(path), revision ? Ole(*revision) : nullptr, &options,
                                          &sink);
        });
    }
    std::vector<HistoryEntry> History(const std::u16string& path, HistoryOptions options = Wanted(),
                                      const std::optional<std::u16string>& revision = {}) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options, revision), Succeeded());
        return sink.entries;
    }
    std::vector<std::u16string>
    Descriptions(const std::u16string& path, HistoryOptions options = Wanted(),
                 const std::optional<std::u16string>& revision = {}) const
    {
        return DescriptionsOf(History(path, options, revision));
    }
    Outcome HistoryFailure(const std::u16string& path,
                           const std::optional<std::u16string>& revision = {}) const
    {
        HistorySink sink;
        Outcome outcome = Read(path, sink, Wanted(), revision);
        EXPECT_THAT(sink.entries, testing::IsEmpty());
        return outcome;
    }
    Outcome OpenTree(const std::u16string& path, ComPtr<ITree>& tree,
                     const std::optional<std::u16string>& revision = {},
                     ICopyProgress* progress = nullptr) const
    {
        const auto trees = system.As<IFileSystemTrees>();
        return OutcomeOf([&] {
            return trees->OpenTree(Ole(path), revision ? Ole(*revision) : nullptr, progress,
                                   tree.Out());
        });
    }
    ComPtr<ITree> Tree(const std::u16string& path,
                       const std::optional<std::u16string>& revision = {}) const
    {
        ComPtr<ITree> tree;
        EXPECT_THAT(OpenTree(path, tree, revision), Succeeded());
        return tree;
    }
    Outcome TreeFailure(const std::u16string& path,
                        const std::optional<std::u16string>& revision = {}) const
    {
        ComPtr<ITree> tree;
        Outcome outcome = OpenTree(path, tree, revision);
        EXPECT_FALSE(tree);
        return outcome;
    }
    // Both questions fail like this.
    void ExpectBothFail(const std::u16string& path, HRESULT status,
                        const std::optional<std::u16string>& revision = {}) const
    {
        const Outcome history = HistoryFailure(path, revision);
        EXPECT_EQ(history.status, status);
        EXPECT_TRUE(history.error);
        const Outcome tree = TreeFailure(path, revision);
        EXPECT_EQ(tree.status, status);
        EXPECT_TRUE(tree.error);
    }

    static std::u16string Number(int revision)
    {
        return DecodeName(std::to_string(revision));
    }

    const SvnRepository repository;
};

} // namespace tarnwell::test
