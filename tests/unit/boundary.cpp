// The boundary: what becomes of exceptions and of null pointers.
#include "frame/boundary.h"
#include "support/errorinfo.h"

#include <tarnwell/classes.h>
#include <tarnwell/items.h>

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

namespace tarnwell::test
{

namespace
{

constexpr Reporter reporter{CLSID_Win32File, IID_IFile};

class Boundary : public testing::Test
{
protected:
    Boundary()
    {
        ClearError();
    }
};

TEST_F(Boundary, TheBodysStatusGoesThrough)
{
    EXPECT_EQ(AtBoundary(reporter, [] { return S_OK; }), S_OK);
    EXPECT_EQ(AtBoundary(reporter, [] { return S_FALSE; }), S_FALSE);
    EXPECT_EQ(AtBoundary(reporter, [] { return E_NOTIMPL; }), E_NOTIMPL);
    EXPECT_FALSE(TakeError()) << "a status that is returned is bare";
}

TEST_F(Boundary, OurExceptionIsPublished)
{
    const HRESULT status = AtBoundary(reporter, []() -> HRESULT {
        throw ComException(E_ACCESSDENIED, u"text", {u"misc", 5});
    });
    EXPECT_EQ(status, E_ACCESSDENIED);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, u"text [misc@5]");
    EXPECT_TRUE(error->interfaceId == IID_IFile);
}

TEST_F(Boundary, OurExceptionWithACodeOfSuccessIsAFailureAllTheSame)
{
    for (const HRESULT code : {S_OK, S_FALSE})
    {
        EXPECT_EQ(AtBoundary(reporter,
                             [code]() -> HRESULT {
                                 throw ComException(code, u"text", {nullptr, 0});
                             }),
                  DISP_E_EXCEPTION);
        EXPECT_EQ(TakeErrorText(), u"text");
    }
}

TEST_F(Boundary, ShortMemoryIsToldSo)
{
    EXPECT_EQ(AtBoundary(reporter, []() -> HRESULT { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_FALSE(TakeError());
}

TEST_F(Boundary, NoOtherExceptionGetsOut)
{
    EXPECT_EQ(AtBoundary(reporter, []() -> HRESULT { throw std::runtime_error("odd"); }),
              E_UNEXPECTED);
    EXPECT_EQ(AtBoundary(reporter, []() -> HRESULT { throw 42; }), E_UNEXPECTED);
    EXPECT_FALSE(TakeError());
}

TEST_F(Boundary, OutValuesAreClearedBeforeTheBodyRuns)
{
    int value = 7;
    int seen = -1;
    EXPECT_EQ(AtBoundary(reporter, NullPointer::Bare, &value,
                         [&] {
                             seen = value;
                             return E_FAIL;
                         }),
              E_FAIL);
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(value, 0);
}

TEST_F(Boundary, OutValuesAreClearedWhereTheBodyThrows)
{
    void* value = this;
    EXPECT_EQ(AtBoundary(reporter, NullPointer::Published, &value,
                         []() -> HRESULT { throw std::bad_alloc(); }),
              E_OUTOFMEMORY);
    EXPECT_EQ(value, nullptr);
}

TEST_F(Boundary, ANullPointerIsRefusedBare)
{
    bool ran = false;
    EXPECT_EQ(AtBoundary(reporter, NullPointer::Bare, static_cast<int*>(nullptr),
                         [&] {
                             ran = true;
                             return S_OK;
                         }),
              E_POINTER);
    EXPECT_FALSE(ran);
    EXPECT_FALSE(TakeError());
}

TEST_F(Boundary, ANullPointerIsRefusedWithItsMessage)
{
    bool ran = false;
    EXPECT_EQ(AtBoundary(reporter, NullPointer::Published, static_cast<int*>(nullptr),
                         [&] {
                             ran = true;
                             return S_OK;
                         }),
              E_POINTER);
    EXPECT_FALSE(ran);
    EXPECT_EQ(TakeErrorText(), u"Internal error (null pointer argument).");
}

} // namespace

} // namespace tarnwell::test
