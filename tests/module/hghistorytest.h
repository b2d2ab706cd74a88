// What asks a Mercurial repository of the test for its histories in full and its trees.
#pragma once

#include "module/mercurialtest.h"
#include "support/historysink.h"
#include "support/treesink.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class HgHistories : public Mercurial
{
protected:
    Outcome Read(const std::u16string& path, HistorySink& sink,
                 HistoryOptions options = Wanted()) const
    {
        const auto histories = system.As<IFileSystemHistory>();
        return OutcomeOf(
            [&] { return histories->ReadHistory(Ole(path), nullptr, &options, &sink); });
    }
    std::vector<HistoryEntry> History(const std::u16string& path,
                                      HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options), Succeeded());
        return sink.entries;
    }
    std::vector<std::u16string> ToldOf(const std::u16string& path,
                                       HistoryOptions options = Wanted()) const
    {
        std::vector<std::u16string> found;
        for (const HistoryEntry& entry : History(path, options))
            found.push_back(entry.description);
        return found;
    }
    std::vector<std::u16string> PathsOf(const std::u16string& path) const
    {
        std::vector<std::u16string> found;
        for (const HistoryEntry& entry : History(path, Wanted(HistoryFollow)))
            found.push_back(entry.description + u": " + entry.path);
        return found;
    }
    HRESULT Status(const std::u16string& path, HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        return Read(path, sink, options).status;
    }

    Outcome OpenTree(const std::u16string& path, ComPtr<ITree>& tree) const
    {
        const auto trees = system.As<IFileSystemTrees>();
        return OutcomeOf([&] { return trees->OpenTree(Ole(path), nullptr, nullptr, tree.Out()); });
    }
    ComPtr<ITree> TreeAt(const std::string& revision = {}) const
    {
        ComPtr<ITree> tree;
        EXPECT_THAT(OpenTree(Address(u"", revision), tree), Succeeded());
        return tree;
    }
    static std::vector<TreeEntry> All(const ComPtr<ITree>& tree, const std::u16string& name = {},
                                      bool recursive = true)
    {
        TreeSink sink;
        EXPECT_EQ(tree->List(Ole(name), recursive ? VARIANT_TRUE : VARIANT_FALSE, &sink), S_OK);
        return sink.entries;
    }
    static std::string ContentIn(const ComPtr<ITree>& tree, const std::u16string& name)
    {
        ComPtr<IFileStream> stream;
        EXPECT_EQ(tree->Open(Ole(name), nullptr, stream.Out()), S_OK);
        std::string bytes;
        char block[4096];
        ULONG count = 0;
        while (stream &&
               stream.As<::ISequentialStream>()->Read(block, sizeof block, &count) == S_OK &&
               count > 0)
            bytes.append(block, count);
        return bytes;
    }

    void Record(const std::string& description, const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> arguments = {"commit", "-q", "-A", "-u", "Ann", "-m", description};
        arguments.insert(arguments.end(), options.begin(), options.end());
        repository.Run(arguments);
    }
};

} // namespace tarnwell::test
