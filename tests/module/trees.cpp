#include "module/trees.h"

#include "module/objects.h"

namespace tarnwell::test
{

std::vector<std::u16string> NamesOf(const std::vector<TreeEntry>& entries)
{
    std::vector<std::u16string> names;
    for (const TreeEntry& entry : entries)
        names.push_back(entry.name);
    return names;
}

std::vector<TreeEntry> ListOf(const ComPtr<ITree>& tree, const std::u16string& name, bool recursive)
{
    TreeSink sink;
    EXPECT_THAT(OutcomeOf([&] {
                    return tree->List(Ole(name), recursive ? VARIANT_TRUE : VARIANT_FALSE, &sink);
                }),
                Succeeded());
    EXPECT_GE(sink.questions, 1);
    EXPECT_EQ(sink.references, 0U);
    return sink.entries;
}

std::vector<std::u16string> FilesIn(const ComPtr<ITree>& tree)
{
    std::vector<std::u16string> files;
    for (const TreeEntry& entry : ListOf(tree, {}, true))
    {
        if (entry.kind == TreeFile)
            files.push_back(entry.name);
    }
    return files;
}

TreeEntry FindIn(const ComPtr<ITree>& tree, const std::u16string& name)
{
    TreeSink sink;
    EXPECT_THAT(OutcomeOf([&] { return tree->Find(Ole(name), &sink); }), Succeeded())
        << testing::PrintToString(name);
    EXPECT_EQ(sink.entries.size(), 1U);
    return sink.entries.empty() ? TreeEntry() : sink.entries[0];
}

std::string ContentOf(const ComPtr<ITree>& tree, const std::u16string& name)
{
    ComPtr<IFileStream> stream;
    EXPECT_THAT(OutcomeOf([&] { return tree->Open(Ole(name), nullptr, stream.Out()); }),
                Succeeded())
        << testing::PrintToString(name);
    return stream ? ReadAll(stream) : "failed";
}

std::u16string IdOf(const ComPtr<ITree>& tree)
{
    Bstr id;
    EXPECT_EQ(tree->GetRevisionId(id.Out()), S_OK);
    return std::u16string(id.View());
}

std::uint64_t TimeOf(const ComPtr<ITree>& tree)
{
    std::uint64_t time = 0;
    EXPECT_EQ(tree->GetRevisionTime(&time), S_OK);
    return time;
}

Outcome FindFailure(const ComPtr<ITree>& tree, const std::u16string& name)
{
    TreeSink sink;
    Outcome outcome = OutcomeOf([&] { return tree->Find(Ole(name), &sink); });
    EXPECT_THAT(sink.entries, testing::IsEmpty());
    return outcome;
}

Outcome ListFailure(const ComPtr<ITree>& tree, const std::u16string& name, bool recursive)
{
    TreeSink sink;
    Outcome outcome = OutcomeOf(
        [&] { return tree->List(Ole(name), recursive ? VARIANT_TRUE : VARIANT_FALSE, &sink); });
    EXPECT_THAT(sink.entries, testing::IsEmpty());
    return outcome;
}

Outcome OpenFailure(const ComPtr<ITree>& tree, const std::u16string& name)
{
    ComPtr<IFileStream> stream;
    Outcome outcome = OutcomeOf([&] { return tree->Open(Ole(name), nullptr, stream.Out()); });
    EXPECT_FALSE(stream);
    return outcome;
}

} // namespace tarnwell::test
