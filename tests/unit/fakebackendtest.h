// What tests of the fake file system have in common.
#pragma once

#include "module/outcome.h"
#include "support/fakehost.h"
#include "unit/fakebackend.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

class FakeBackendTest : public testing::Test
{
protected:
    FakeBackendTest();
    // Everything that is made here must be gone by then: the host object is let go of.
    ~FakeBackendTest() override;

    // Items of addresses, which need not be there.
    ComPtr<IFile> File(const std::u16string& address);
    ComPtr<IFolder> Folder(const std::u16string& address);
    // The contents of some folder that has these items.
    ComPtr<IFolderContents> Contents(const std::vector<FSItem>& items);

    ComPtr<FakeHost> host = FakeHost::Make();
    ComPtr<IFileSystem> system;
};

// What a getter gives, which must succeed.
template <class Value, class I, class J>
Value Got(const ComPtr<I>& item, HRESULT (STDMETHODCALLTYPE J::*getter)(Value*))
{
    const auto view = item.template As<J>();
    Value value{};
    EXPECT_TRUE(view && (view.Get()->*getter)(&value) == S_OK);
    return value;
}

// The same for texts, which must not be null.
template <class I, class J>
std::u16string TextOf(const ComPtr<I>& item, HRESULT (STDMETHODCALLTYPE J::*getter)(BSTR*))
{
    const auto view = item.template As<J>();
    Bstr text;
    EXPECT_TRUE(view && (view.Get()->*getter)(text.Out()) == S_OK && text);
    return std::u16string(text.View());
}

// Failed with this status and this text, published for this interface. The line of a position in
// the source is given as "N".
MATCHER_P3(Published, status, interfaceId, text, "")
{
    return arg.status == status && arg.error && arg.error->interfaceId == interfaceId &&
           WithoutLine(arg.error->text) == text;
}

} // namespace tarnwell::test
