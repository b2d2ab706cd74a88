// Trees that no disk has.
#include "walk.h"
#include "support/loadedmodule.h"

#include <tarnwell/implements.h>

#include <gtest/gtest.h>

namespace tarnwell::host
{
namespace
{

// A server shows this folder inside itself, and doesn't call it a link.
class Endless final : public Implements<IFileSystemItem, IFolder, IFolderContents>
{
public:
    HRESULT STDMETHODCALLTYPE GetModifiedTime(std::uint64_t* fileTime) override
    {
        *fileTime = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAttributes(std::uint32_t* attributes) override
    {
        *attributes = 0x10;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetAttributes(std::uint32_t) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetName(BSTR* name) override
    {
        *name = Bstr(u"in").Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetParentPath(BSTR* path) override
    {
        return GetName(path);
    }
    HRESULT STDMETHODCALLTYPE GetPath(BSTR* path) override
    {
        return GetName(path);
    }
    HRESULT STDMETHODCALLTYPE Delete(VARIANT_BOOL, VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetContents(IFolderContents** contents) override
    {
        AddRef();
        *contents = this;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Create(VARIANT_BOOL) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetCount(std::uint32_t* count) override
    {
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t, IFileSystemItem** item) override
    {
        AddRef();
        *item = this;
        return S_OK;
    }
};

class WalkTest : public testing::Test
{
protected:
    // Texts come from the module.
    const test::LoadedModule module_;
    const ComPtr<IFolder> folder_ = ComPtr<IFolder>::Adopt(new Endless);
};

TEST_F(WalkTest, EndsInATreeThatDoesNot)
{
    int visited = 0;
    std::vector<std::u16string> failures;
    WalkFolder(folder_, {true,
                         {},
                         [&](const ItemFacts&, const std::u16string&) { ++visited; },
                         [&](const Failure& failure) {
                             failures.push_back(failure.message);
                         }});
    EXPECT_EQ(visited, 1001);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].substr(0, 7), u"\"in/in/");
    EXPECT_NE(failures[0].find(u"lies too deep"), std::u16string::npos);
}

TEST_F(WalkTest, StaysInTheFirstFolderIfNotRecursive)
{
    std::vector<std::u16string> names;
    WalkFolder(folder_,
               {false,
                {},
                [&](const ItemFacts&, const std::u16string& name) { names.push_back(name); },
                [](const Failure&) {
                    FAIL();
                }});
    EXPECT_EQ(names, (std::vector<std::u16string>{u"in"}));
}

} // namespace
} // namespace tarnwell::host
