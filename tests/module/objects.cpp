#include "module/objects.h"

#include <utility>

namespace tarnwell::test
{

namespace
{

template <class F> std::u16string TextFrom(F&& getter)
{
    Bstr text;
    EXPECT_EQ(std::forward<F>(getter)(text.Out()), S_OK);
    EXPECT_TRUE(text) << "texts are never null on success";
    return std::u16string(text.View());
}

std::uint64_t SizeOf(const ComPtr<IFile>& file)
{
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    EXPECT_EQ(file->GetSizeLow(&low), S_OK);
    EXPECT_EQ(file->GetSizeHigh(&high), S_OK);
    return (std::uint64_t{high} << 32) | low;
}

} // namespace

const LoadedModule& TheModule()
{
    static const LoadedModule module;
    return module;
}

const OLECHAR* Ole(const std::u16string& text)
{
    return reinterpret_cast<const OLECHAR*>(text.c_str());
}

Facts FactsOf(const ComPtr<IFileSystemItem>& item)
{
    Facts facts;
    if (!item)
    {
        ADD_FAILURE() << "there is no item";
        return facts;
    }
    facts.path = TextFrom([&](BSTR* out) { return item->GetPath(out); });
    facts.name = TextFrom([&](BSTR* out) { return item->GetName(out); });
    facts.parent = TextFrom([&](BSTR* out) { return item->GetParentPath(out); });
    EXPECT_EQ(item->GetAttributes(&facts.attributes), S_OK);
    EXPECT_EQ(item->GetModifiedTime(&facts.time), S_OK);
    if (const auto file = item.As<IFile>())
        facts.size = SizeOf(file);
    return facts;
}

std::vector<ComPtr<IFileSystemItem>> ItemsOf(const ComPtr<IFolderContents>& contents)
{
    std::vector<ComPtr<IFileSystemItem>> items;
    std::uint32_t count = 0;
    if (!contents || contents->GetCount(&count) != S_OK)
    {
        ADD_FAILURE() << "there is no snapshot";
        return items;
    }
    for (std::uint32_t i = 0; i < count; ++i)
    {
        ComPtr<IFileSystemItem> item;
        EXPECT_EQ(contents->GetItem(static_cast<std::int32_t>(i), item.Out()), S_OK);
        items.push_back(std::move(item));
    }
    return items;
}

std::vector<std::u16string> NamesOf(const ComPtr<IFolderContents>& contents)
{
    std::vector<std::u16string> names;
    for (const auto& item : ItemsOf(contents))
        names.push_back(FactsOf(item).name);
    return names;
}

std::string ReadAll(const ComPtr<IFileStream>& stream)
{
    const auto data = stream.As<::ISequentialStream>();
    std::string all;
    char buffer[4096];
    ULONG read = 0;
    while (data->Read(buffer, sizeof buffer, &read) == S_OK && read > 0)
        all.append(buffer, read);
    return all;
}

HRESULT Write(const ComPtr<IFileStream>& stream, std::string_view bytes)
{
    ULONG written = 0;
    const HRESULT status = stream.As<::ISequentialStream>()->Write(
        bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    EXPECT_EQ(written, bytes.size());
    return status;
}

} // namespace tarnwell::test
