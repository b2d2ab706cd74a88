// The file system of addresses itself: its host, its mask, its way of joining, what it makes.
#include "unit/fakebackendtest.h"

#include "frame/messages.h"
#include "platform/wide.h"

namespace tarnwell::test
{
namespace
{

class FileSystems : public FakeBackendTest
{
protected:
    std::uint32_t Mask(std::uint32_t kind, ::IUnknown* other = nullptr)
    {
        std::uint32_t mask = 0;
        EXPECT_EQ(system->GetOperationMask(kind, other, &mask), S_OK);
        return mask;
    }
};

TEST_F(FileSystems, HoldTheLastHostThatTheyWereGiven)
{
    const auto init = system.As<IFileSystemInit>();
    const auto other = FakeHost::Make();
    EXPECT_EQ(host->References(), 2U);
    EXPECT_EQ(init->SetHost(other->Unknown()), S_OK);
    EXPECT_EQ(host->References(), 1U);
    EXPECT_EQ(other->References(), 2U);
    EXPECT_EQ(init->SetHost(other->Unknown()), S_OK);
    EXPECT_EQ(other->References(), 2U);
    EXPECT_EQ(init->SetHost(nullptr), S_OK);
    EXPECT_EQ(other->References(), 1U);
}

TEST_F(FileSystems, HoldTheOtherOneWhileTheyAreAsked)
{
    const auto other = FakeHost::Make();
    ULONG during = 0;
    Server().maskAsked = [&] {
        during = other->References();
    };
    EXPECT_EQ(Mask(0, other->Unknown()), 5U);
    EXPECT_EQ(during, 2U);
    EXPECT_EQ(other->References(), 1U);
}

TEST_F(FileSystems, OfferEverythingWhereTheyCannotTell)
{
    Server().maskAsked = [] {
        throw ComException(E_FAIL, u"lost", {u"fake", 1});
    };
    std::uint32_t mask = 0;
    EXPECT_THAT(OutcomeOf([&] { return system->GetOperationMask(0, nullptr, &mask); }),
                Published(E_FAIL, IID_IFileSystem, u"lost [fake@N]"));
    EXPECT_EQ(mask, 65535U);
}

TEST_F(FileSystems, TakeNoPathForAnEmptyOne)
{
    ComPtr<IFile> file;
    ASSERT_EQ(system->GetFile(nullptr, VARIANT_FALSE, file.Out()), S_OK);
    EXPECT_EQ(TextOf(file, &IFileSystemItem::GetPath), u"");
    ComPtr<IFolder> folder;
    ASSERT_EQ(system->GetFolder(nullptr, VARIANT_FALSE, folder.Out()), S_OK);
    EXPECT_EQ(TextOf(folder, &IFileSystemItem::GetPath), u"");
}

TEST_F(FileSystems, WithoutMemoryMakeNoItem)
{
    Server().memory = false;
    const std::u16string text =
        FormatMessageWithStatus(MessageId::SupportObjectFailed, E_OUTOFMEMORY) +
        u" [interfaceimpl@N]";
    auto* file = reinterpret_cast<IFile*>(1);
    EXPECT_THAT(
        OutcomeOf([&] { return system->GetFile(Wide(u"ftp://h/a"), VARIANT_FALSE, &file); }),
        Published(E_OUTOFMEMORY, IID_IFileSystem, text));
    EXPECT_EQ(file, nullptr);
    auto* folder = reinterpret_cast<IFolder*>(1);
    EXPECT_THAT(
        OutcomeOf([&] { return system->GetFolder(Wide(u"ftp://h/a"), VARIANT_FALSE, &folder); }),
        Published(E_OUTOFMEMORY, IID_IFileSystem, text));
    EXPECT_EQ(folder, nullptr);
}

} // namespace
} // namespace tarnwell::test
