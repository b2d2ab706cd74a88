// The icon of a local file, which is implemented and not reachable from outside.
#include "frame/messages.h"
#include "frame/status.h"
#include "local/file.h"
#include "support/errorinfo.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

class Icon : public testing::Test
{
protected:
    Icon()
    {
        EXPECT_EQ(MakeObject<CWin32FileObject>(file), S_OK);
        const std::u16string_view name = u"no-such-file";
        name.copy(file->Fill(std::make_shared<const std::u16string>(), {}, {}, name.size()),
                  name.size());
        ClearError();
    }

    ComPtr<ComObject<CWin32FileObject>> file;
    std::int32_t index = 7;
    void* images = this;
};

TEST_F(Icon, NullPointersAreRefused)
{
    for (const auto& call : {std::pair{&index, static_cast<void**>(nullptr)},
                             std::pair{static_cast<std::int32_t*>(nullptr), &images}})
    {
        EXPECT_EQ(file->GetIcon(0, call.first, call.second), E_POINTER);
        EXPECT_EQ(TakeErrorText(), FormatMessageById(MessageId::NullPointer));
    }
}

TEST_F(Icon, OfWhatIsMissingFails)
{
    EXPECT_EQ(file->GetIcon(1234, &index, &images), StatusFromError(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(index, 0);
    EXPECT_EQ(images, nullptr);
    const auto error = TakeError();
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->text.starts_with(u"Can't get an icon for \"no-such-file\". "));
    EXPECT_TRUE(error->interfaceId == IID_IFileSystemItemIcon);
}

} // namespace

} // namespace tarnwell::test
