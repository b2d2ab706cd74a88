// The component plumbing: questions for interfaces, counts, objects that are parts of others.
#include "frame/comobject.h"
#include "support/localobject.h"

#include <tarnwell/items.h>

#include <gmock/gmock.h>

#include <new>

namespace tarnwell::test
{

namespace
{

int living = 0;

// Has an interface that is in neither list, as one of the real classes does.
class Sample : public IFileStream,
               public IFileSystemItemExt,
               public ErrorInfoFor<IFileStream, IFolder>
{
public:
    using Interfaces = InterfaceList<IFileStream, ::ISupportErrorInfo>;

    Sample()
    {
        ++living;
    }

    HRESULT STDMETHODCALLTYPE Close() override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetModifiedTime(std::uint64_t) override
    {
        return S_OK;
    }

protected:
    ~Sample()
    {
        --living;
    }
};

// Stands for an outer object: counts what reaches it and answers to IUnknown.
class Outer final : public LocalObject<::IUnknown>
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        lastAsked = iid;
        return LocalObject::QueryInterface(iid, out);
    }

    GUID lastAsked{};
};

// For which there is no memory.
class TooLarge : public Sample
{
public:
    static void* operator new(std::size_t, const std::nothrow_t&) noexcept
    {
        return nullptr;
    }
    static void operator delete(void*) {}
};

class Objects : public testing::Test
{
protected:
    ~Objects() override
    {
        EXPECT_EQ(living, 0);
        EXPECT_EQ(ModuleLockCount(), lockCount);
    }

    const std::int32_t lockCount = ModuleLockCount();
};

TEST_F(Objects, AnswerToTheirListAndToNothingElse)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    EXPECT_TRUE(object.As<IFileStream>());
    EXPECT_TRUE(object.As<::ISupportErrorInfo>());
    EXPECT_TRUE(object.As<::IUnknown>());
    EXPECT_FALSE(object.As<IFolder>()) << "only the error-info list has it";
    void* out = this;
    EXPECT_EQ(object->QueryInterface(IID_IFileSystemItemExt, &out), E_NOINTERFACE)
        << "a base that isn't in the list";
    EXPECT_EQ(out, nullptr);
}

TEST_F(Objects, LookAtEachByteOfAnIdentifier)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    for (std::size_t i = 0; i < sizeof(IID); ++i)
    {
        IID other = IID_IFileStream;
        reinterpret_cast<unsigned char*>(&other)[i] ^= 1;
        void* pointer = nullptr;
        EXPECT_EQ(object->QueryInterface(other, &pointer), E_NOINTERFACE) << i;
        EXPECT_EQ(pointer, nullptr) << i;
    }
}

TEST_F(Objects, RefuseANullPointer)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    EXPECT_EQ(object->QueryInterface(IID_IFileStream, nullptr), E_POINTER);
}

TEST_F(Objects, HaveOneIdentity)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    const auto stream = object.As<IFileStream>();
    const auto support = object.As<::ISupportErrorInfo>();
    EXPECT_EQ(stream.As<::IUnknown>().Get(), support.As<::IUnknown>().Get());
    EXPECT_EQ(static_cast<void*>(stream.As<::IUnknown>().Get()), stream.Get())
        << "the first of the list also serves for IUnknown";
}

TEST_F(Objects, TellAboutErrorInfoByTheirOwnList)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(IID_IFileStream), S_OK);
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(IID_IFolder), S_OK);
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(IID_IFileSystemItemExt), S_FALSE);
    EXPECT_EQ(object->InterfaceSupportsErrorInfo(IidOf<::IUnknown>()), S_FALSE);
}

TEST_F(Objects, CountAndGoWithTheLastReference)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    EXPECT_EQ(living, 1);
    EXPECT_EQ(object->AddRef(), 2U);
    EXPECT_EQ(object->Release(), 1U);
    const auto stream = object.As<IFileStream>();
    object.Reset();
    EXPECT_EQ(living, 1);
}

TEST_F(Objects, HoldTheModuleWhileTheyLive)
{
    ComPtr<ComObject<Sample>> object;
    ASSERT_EQ(MakeObject<Sample>(object), S_OK);
    EXPECT_EQ(ModuleLockCount(), lockCount + 1);
    object.Reset();
    EXPECT_EQ(ModuleLockCount(), lockCount);
}

TEST_F(Objects, AreMadeForAnInterface)
{
    ComPtr<IFileStream> stream;
    EXPECT_EQ(MakeInstance<Sample>(nullptr, IID_IFileStream, stream.OutVoid()), S_OK);
    EXPECT_EQ(living, 1);
}

TEST_F(Objects, GoAgainWhenTheyRefuseTheInterface)
{
    void* out = nullptr;
    EXPECT_EQ(MakeInstance<Sample>(nullptr, IID_IFolder, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(living, 0);
}

TEST_F(Objects, WithoutMemoryAreNotMade)
{
    void* out = nullptr;
    EXPECT_EQ(MakeInstance<TooLarge>(nullptr, IID_IFileStream, &out), E_OUTOFMEMORY);
    EXPECT_EQ(out, nullptr);
    ComPtr<ComObject<TooLarge>> object;
    EXPECT_EQ(MakeObject<TooLarge>(object), E_OUTOFMEMORY);
    EXPECT_FALSE(object);
}

TEST_F(Objects, AsPartsHaveAnIdentityOfTheirOwnForTheOuterObjectOnly)
{
    Outer outer;
    ComPtr<::IUnknown> inner;
    ASSERT_EQ(MakeInstance<Sample>(&outer, IidOf<::IUnknown>(), inner.OutVoid()), S_OK);
    EXPECT_NE(inner.Get(), &outer);
    EXPECT_EQ(outer.references, 0U) << "a part holds no reference to its whole";
    EXPECT_EQ(inner.As<::IUnknown>().Get(), inner.Get());

    const auto stream = inner.As<IFileStream>();
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream.As<::IUnknown>().Get(), &outer);
}

TEST_F(Objects, AsPartsCountAndAskAtTheOuterObject)
{
    Outer outer;
    ComPtr<::IUnknown> inner;
    ASSERT_EQ(MakeInstance<Sample>(&outer, IidOf<::IUnknown>(), inner.OutVoid()), S_OK);
    auto stream = inner.As<IFileStream>();
    EXPECT_EQ(outer.references, 1U);
    EXPECT_EQ(stream->AddRef(), 2U);
    EXPECT_EQ(stream->Release(), 1U);
    EXPECT_FALSE(stream.As<::ISupportErrorInfo>()) << "the outer object doesn't hand it out";
    EXPECT_TRUE(outer.lastAsked == IidOf<::ISupportErrorInfo>());
    stream.Reset();
    EXPECT_EQ(outer.references, 0U);
}

TEST_F(Objects, AsPartsRefuseWhatTheyAreNot)
{
    Outer outer;
    ComPtr<::IUnknown> inner;
    ASSERT_EQ(MakeInstance<Sample>(&outer, IidOf<::IUnknown>(), inner.OutVoid()), S_OK);
    void* out = this;
    EXPECT_EQ(inner->QueryInterface(IID_IFolder, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(inner->QueryInterface(IID_IFileStream, nullptr), E_POINTER);
    EXPECT_EQ(outer.references, 0U);
}

TEST_F(Objects, AsPartsLiveByTheirOwnCount)
{
    Outer outer;
    ComPtr<::IUnknown> inner;
    ASSERT_EQ(MakeInstance<Sample>(&outer, IidOf<::IUnknown>(), inner.OutVoid()), S_OK);
    EXPECT_EQ(ModuleLockCount(), lockCount + 1);
    EXPECT_EQ(inner->AddRef(), 2U);
    EXPECT_EQ(inner->Release(), 1U);
    EXPECT_EQ(living, 1);
    inner.Reset();
    EXPECT_EQ(living, 0);
}

} // namespace

} // namespace tarnwell::test
