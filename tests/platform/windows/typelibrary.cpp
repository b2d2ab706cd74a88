// Registration of the type library that is built into the running program.
#include "platform/typelibrary.h"

#include <tarnwell/classes.h>
#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

HRESULT LoadRegistered()
{
    ComPtr<ITypeLib> library;
    return LoadRegTypeLib(LIBID_tarnwell, 1, 0, 0, library.Out());
}

class TypeLibraryRegistration : public testing::TestWithParam<bool>
{
protected:
    ~TypeLibraryRegistration() override
    {
        UnregisterModuleTypeLibrary(GetParam());
    }
};

TEST_P(TypeLibraryRegistration, LastsUntilItIsTakenBack)
{
    ASSERT_EQ(RegisterModuleTypeLibrary(GetParam()), S_OK);
    EXPECT_EQ(LoadRegistered(), S_OK);
    ASSERT_EQ(UnregisterModuleTypeLibrary(GetParam()), S_OK);
    EXPECT_TRUE(FAILED(LoadRegistered()));
}

TEST_P(TypeLibraryRegistration, CannotBeTakenBackTwice)
{
    ASSERT_EQ(RegisterModuleTypeLibrary(GetParam()), S_OK);
    ASSERT_EQ(UnregisterModuleTypeLibrary(GetParam()), S_OK);
    EXPECT_TRUE(FAILED(UnregisterModuleTypeLibrary(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(ForAllOrOneUser, TypeLibraryRegistration, testing::Bool());

} // namespace

} // namespace tarnwell::test
