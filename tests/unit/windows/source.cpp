// The source of a failure is the class's name in the registry, where somebody has written one.
#include "frame/publish.h"
#include "support/errorinfo.h"

#include <tarnwell/items.h>

#include <gtest/gtest.h>

namespace tarnwell::test
{

namespace
{

constexpr GUID testClass{
    0x5B1E7C40, 0x2D0F, 0x4E0A, {0x9A, 0x51, 0x6C, 0x3B, 0x0D, 0x2F, 0x8E, 0x17}};
constexpr wchar_t testClassKey[] =
    L"Software\\Classes\\CLSID\\{5B1E7C40-2D0F-4E0A-9A51-6C3B0D2F8E17}";
constexpr wchar_t testName[] = L"Tarnwell.Test.1";

// The test class's name, for as long as it lives.
class RegisteredName
{
public:
    RegisteredName()
    {
        const std::wstring key = std::wstring(testClassKey) + L"\\ProgID";
        written_ = RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), nullptr, REG_SZ, testName,
                                   sizeof testName) == ERROR_SUCCESS;
    }
    RegisteredName(const RegisteredName&) = delete;
    RegisteredName& operator=(const RegisteredName&) = delete;
    ~RegisteredName()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, testClassKey);
    }
    bool Written() const
    {
        return written_;
    }

private:
    bool written_ = false;
};

std::u16string PublishedSource()
{
    ClearError();
    PublishError(testClass, u"text", IID_IFile, E_FAIL);
    const auto error = TakeError();
    return error ? error->source : u"(none)";
}

TEST(Source, IsTheRegisteredName)
{
    {
        const RegisteredName name;
        ASSERT_TRUE(name.Written());
        EXPECT_EQ(PublishedSource(), u"Tarnwell.Test.1");
    }
    EXPECT_EQ(PublishedSource(), u"") << "the name is gone again";
}

} // namespace

} // namespace tarnwell::test
