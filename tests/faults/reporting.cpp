// Failures while a failure is being reported: the status comes out all the same.
#include "faults/local.h"

#include "frame/messages.h"
#include "local/filesystem.h"

#include <tarnwell/items.h>

namespace tarnwell::test
{

namespace
{

constexpr std::u16string_view nothing = u"(none)";
constexpr HRESULT notFound = StatusFromError(ERROR_FILE_NOT_FOUND);

class Reporting : public testing::Test
{
protected:
    HRESULT LookUpMissing()
    {
        ComPtr<IFile> file;
        return local.system->GetFile(Wide(local.Path(u"missing")), VARIANT_TRUE, file.Out());
    }

    Local local;
};

TEST_F(Reporting, NoFailureOnTheWayChangesTheStatus)
{
    int calls = 0;
    {
        const Faults faults;
        EXPECT_EQ(LookUpMissing(), notFound);
        calls = faults.Calls();
    }
    const Held before = Held::Now();
    // The first call is the one that finds nothing.
    for (int n = 2; n <= calls; ++n)
    {
        Faults faults;
        faults.FailNth(n, ERROR_BUSY);
        EXPECT_EQ(LookUpMissing(), notFound) << faults.Trace()[static_cast<std::size_t>(n - 1)];
        EXPECT_EQ(faults.Failures(), 1);
    }
    ClearError();
    EXPECT_EQ(Held::Now(), before);
}

TEST_F(Reporting, WithoutAnErrorObjectNothingIsPublished)
{
    Faults faults;
    faults.Fail("CreateErrorInfo", 1, static_cast<DWORD>(E_OUTOFMEMORY));
    EXPECT_THAT(ResultOf([&] { return LookUpMissing(); }), FailsWith(notFound, nothing));
}

TEST_F(Reporting, AnUnknownClassNameLeavesTheTextWhole)
{
    Faults faults;
    faults.Fail("ProgIDFromCLSID", 1, ERROR_BUSY);
    EXPECT_THAT(ResultOf([&] { return LookUpMissing(); }),
                FailsWith(notFound, u"Failed to open \"" + local.Path(u"missing") + u"\". "));
}

TEST_F(Reporting, WithoutSystemTextTheBlankStays)
{
    Faults faults;
    faults.Fail("FindSystemText", 1, ERROR_BUSY);
    EXPECT_EQ(FormatMessageWithStatus(MessageId::ItemFailed, notFound, {u"x"}),
              u"Failed to open \"x\". ");
}

TEST_F(Reporting, AMessageThatCannotBeFormattedIsEmpty)
{
    Faults faults;
    faults.Fail("FillInserts", 1, ERROR_BUSY);
    EXPECT_EQ(FormatMessageById(MessageId::ItemFailed, {u"x"}), u"");
}

TEST_F(Reporting, ATextThatIsMissingIsEmpty)
{
    Faults faults;
    faults.Fail("LoadModuleText", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(FormatMessageById(MessageId::NullPointer), u"");
}

TEST_F(Reporting, WithoutATextTheErrorIsPublishedAllTheSame)
{
    Faults faults;
    faults.Fail("LoadModuleText", 1, ERROR_NOT_ENOUGH_MEMORY);
    const Result result =
        ResultOf([&] { return local.system->GetFile(u"a", VARIANT_TRUE, nullptr); });
    EXPECT_EQ(result.status, E_POINTER);
    EXPECT_EQ(result.text, u"");
}

TEST_F(Reporting, ATextThatCannotBeSetIsLostAlone)
{
    ClearError();
    Faults faults;
    faults.Fail("SetErrorInfo", 1, ERROR_BUSY);
    EXPECT_EQ(LookUpMissing(), notFound);
    EXPECT_EQ(TakeErrorText(), nothing);
    EXPECT_EQ(LookUpMissing(), notFound);
    EXPECT_NE(TakeErrorText(), nothing);
}

} // namespace

} // namespace tarnwell::test
