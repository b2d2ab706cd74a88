// What the objects of the FTP file system ask before they delete, and what their failures tell.
#include "unit/ftpobjects.h"

#include "module/lifecycle.h"

#include <functional>
#include <optional>

namespace tarnwell::test
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int no = 7;

// Tells how many questions there had been when it was first asked for something.
class WatchedList final : public LocalObject<IItemList>
{
public:
    WatchedList(const FakeInternet& internet, std::vector<std::u16string> entries)
        : internet_(internet), entries_(std::move(entries))
    {
    }

    std::optional<std::size_t> questionsBefore;

    HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* count) override
    {
        questionsBefore = questionsBefore.value_or(internet_.questions.size());
        *count = static_cast<std::int32_t>(entries_.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) override
    {
        *path = Bstr(entries_.at(static_cast<std::size_t>(index))).Detach();
        return S_OK;
    }

private:
    const FakeInternet& internet_;
    const std::vector<std::u16string> entries_;
};

class FtpDeletion : public FtpObjectTest
{
protected:
    Outcome Delete(const ComPtr<IFileSystemItem>& item, VARIANT_BOOL noConfirm = VARIANT_FALSE,
                   VARIANT_BOOL recursive = VARIANT_FALSE) const
    {
        return OutcomeOf([&] { return item->Delete(noConfirm, recursive); });
    }
    void ExpectQuestion(const std::u16string& text) const
    {
        ASSERT_EQ(internet.questions.size(), 1U);
        EXPECT_EQ(WithLineFeeds(internet.questions[0]), text);
        EXPECT_THAT(internet.owners, ElementsAre(window_));
    }

    const HWND window_ = reinterpret_cast<HWND>(0x1234);
};

TEST_F(FtpDeletion, OfAFileAsksOverTheHostsWindow)
{
    host->window = window_;
    EXPECT_THAT(Delete(File(u"d/a").As<IFileSystemItem>()), Succeeded());
    ExpectQuestion(u"Are you sure that you want to delete this item?\n\nd/a");
    EXPECT_THAT(internet.Calls(u"delete"), ElementsAre(u"delete d/a"));
}

TEST_F(FtpDeletion, OfAFolderAsksOverTheHostsWindow)
{
    host->window = window_;
    EXPECT_THAT(Delete(Folder(u"d/sub").As<IFileSystemItem>()), Succeeded());
    ExpectQuestion(u"Are you sure that you want to delete this item?\n\nd/sub");
    EXPECT_THAT(internet.Calls(u"remove"), ElementsAre(u"remove d/sub"));
    EXPECT_THAT(internet.Calls(u"delete"), IsEmpty());
}

TEST_F(FtpDeletion, OfAFolderTakesWhatIsInItIfThatIsMeant)
{
    EXPECT_THAT(Delete(Folder(u"d").As<IFileSystemItem>(), VARIANT_TRUE, VARIANT_TRUE),
                Succeeded());
    EXPECT_THAT(internet.questions, IsEmpty());
    EXPECT_THAT(internet.Calls(u"delete"), Contains(u"delete d/a"));
    EXPECT_THAT(internet.Calls(u"remove"), ElementsAre(u"remove d/sub", u"remove d"));
}

TEST_F(FtpDeletion, OfAListAsksBeforeItIsCounted)
{
    host->window = window_;
    WatchedList list(internet, {Address(u"d/a"), Address(u"d/sub")});
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_FALSE, VARIANT_FALSE); }),
                Succeeded());
    ExpectQuestion(u"Are you sure that you want to delete these items?");
    EXPECT_EQ(list.questionsBefore, 1U);
    EXPECT_THAT(internet.Calls(u"delete"), ElementsAre(u"delete d/a"));
    EXPECT_THAT(internet.Calls(u"remove"), ElementsAre(u"remove d/sub"));
}

TEST_F(FtpDeletion, AfterANoNothingIsDone)
{
    internet.answer = no;
    WatchedList list(internet, {Address(u"d/a")});
    EXPECT_THAT(Delete(File(u"d/a").As<IFileSystemItem>()), Succeeded());
    EXPECT_THAT(Delete(Folder(u"d").As<IFileSystemItem>(), VARIANT_FALSE, VARIANT_TRUE),
                Succeeded());
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_FALSE, VARIANT_TRUE); }),
                Succeeded());
    EXPECT_EQ(internet.questions.size(), 3U);
    EXPECT_FALSE(list.questionsBefore) << "it wasn't even counted";
    EXPECT_THAT(internet.Calls(), IsEmpty());
}

TEST_F(FtpDeletion, WithoutAWindowAsksOverNone)
{
    host->hasWindow = false;
    EXPECT_THAT(Delete(File(u"d/a").As<IFileSystemItem>()), Succeeded());
    EXPECT_THAT(internet.owners, ElementsAre(nullptr));
}

// ---- Passwords ----

class FtpPasswords : public FtpObjectTest
{
protected:
    // The text of a failure of `operation`, in which `call` fails as nothing in particular.
    template <class Operation> std::u16string TextOf(const char* call, Operation&& operation)
    {
        internet.Fail(call, ERROR_INTERNET_EXTENDED_ERROR, u"550 No.");
        const Outcome outcome = OutcomeOf(std::forward<Operation>(operation));
        EXPECT_LT(outcome.status, 0) << call;
        EXPECT_TRUE(outcome.error) << call;
        return outcome.error ? outcome.error->text : u"";
    }
};

TEST_F(FtpPasswords, StandInNoTextButWholeAddresses)
{
    ComPtr<IFileStream> stream;
    FakeProgress progress;
    std::uint32_t attributes = 0;
    const auto open = [&](std::uint32_t access, std::uint32_t disposition) {
        return [&, access, disposition] {
            return File(u"f")->Open(access, disposition, stream.Out());
        };
    };
    const auto remove = [&](const std::u16string& path, VARIANT_BOOL recursive) {
        return [&, path, recursive] {
            return File(path).As<IFileSystemItem>()->Delete(VARIANT_TRUE, recursive);
        };
    };
    const auto create = [&](VARIANT_BOOL recursive) {
        return [&, recursive] {
            return Folder(u"new/x")->Create(recursive);
        };
    };
    const std::vector<std::u16string> texts = {
        TextOf("InternetOpenW", open(GENERIC_READ, OPEN_EXISTING)),
        TextOf("InternetConnectW", open(GENERIC_READ, OPEN_EXISTING)),
        TextOf("FtpOpenFileW", open(GENERIC_READ, OPEN_EXISTING)),
        TextOf("FtpOpenFileW", open(GENERIC_WRITE, CREATE_ALWAYS)),
        TextOf("FtpDeleteFileW", remove(u"f", VARIANT_FALSE)),
        TextOf("FtpRemoveDirectoryW", remove(u"d/sub", VARIANT_FALSE)),
        TextOf("FtpRemoveDirectoryW", remove(u"d/sub", VARIANT_TRUE)),
        TextOf("FtpCreateDirectoryW", create(VARIANT_FALSE)),
        TextOf("FtpCreateDirectoryW", create(VARIANT_TRUE)),
        TextOf("FtpFindFirstFileW", create(VARIANT_TRUE)),
        TextOf(
            "InternetReadFile",
            [&] { return system->CopyItem(Wide(Address(u"f")), Wide(Address(u"g")), &progress); }),
    };
    for (const std::u16string& text : texts)
        EXPECT_EQ(text.find(u"hush"), std::u16string::npos) << testing::PrintToString(text);
    // An address is quoted whole where it itself is what is wrong.
    const std::u16string whole[] = {
        TextOf("none", open(GENERIC_READ, CREATE_ALWAYS)),
        TextOf("FtpFindFirstFileW",
               [&] { return File(u"f").As<IFileSystemItem>()->GetAttributes(&attributes); }),
    };
    for (const std::u16string& text : whole)
        EXPECT_NE(text.find(u"hush"), std::u16string::npos) << testing::PrintToString(text);
}

TEST_F(FtpPasswords, ThatAreRefusedStandInNoTextAndNoReport)
{
    for (const DWORD error : {12013U, 12014U})
    {
        internet.Fail("InternetConnectW", error, u"530 Login incorrect.");
        ComPtr<IFolderContents> contents;
        const Outcome outcome =
            OutcomeOf([&] { return Folder(u"d")->GetContents(contents.Out()); });
        EXPECT_EQ(outcome.status, Win32Status(error));
        ASSERT_TRUE(outcome.error);
        EXPECT_EQ(outcome.error->text.find(u"hush"), std::u16string::npos);
    }
    ASSERT_EQ(host->Calls().size(), 2U);
    for (const std::u16string& call : host->Calls())
    {
        EXPECT_TRUE(call.starts_with(u"ForgetCredentials|FTP: "));
        EXPECT_EQ(call.find(u"hush"), std::u16string::npos);
    }
}

// ---- The pool ----

// Beneath, closing never waits for a server; at the process's end nothing is touched, since nobody
// knows which threads are still at work.
TEST_F(FtpObjectTest, TheModulesEndClosesWhatWaitsAndTheProcesssDoesNot)
{
    Contents(u"d");
    StopModule(Ending::OfProcess);
    EXPECT_THAT(internet.Open(), ElementsAre(u"root", u"connection"));
    internet.ForgetCalls();
    const auto stream = Opened(u"f");
    Contents(u"d");
    StopModule(Ending::OfModule);
    EXPECT_THAT(internet.Calls(u"close"), ElementsAre(u"close connection", u"close root"));
    EXPECT_THAT(internet.Open(), ElementsAre(u"root", u"connection", u"file")) << "is in use";
}

TEST_F(FtpObjectTest, ARefusedLogonLeavesNothingInThePool)
{
    ComPtr<IFileStream> stream;
    ComPtr<IFolderContents> contents;
    std::uint32_t attributes = 0;
    const std::function<HRESULT()> operations[] = {
        [&] { return File(u"f").As<IFileSystemItem>()->GetAttributes(&attributes); },
        [&] { return Folder(u"d")->GetContents(contents.Out()); },
        [&] { return Folder(u"new")->Create(VARIANT_FALSE); },
        [&] { return Folder(u"new")->Create(VARIANT_TRUE); },
        [&] { return File(u"f")->Open(GENERIC_READ, OPEN_EXISTING, stream.Out()); },
        [&] { return File(u"f").As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE); },
    };
    for (const DWORD error : {12013U, 12014U})
    {
        for (const std::function<HRESULT()>& operation : operations)
        {
            internet.Fail("InternetConnectW", error, u"530 No.");
            EXPECT_EQ(operation(), Win32Status(error));
            EXPECT_THAT(internet.Open(), IsEmpty());
            EXPECT_EQ(DrainPool(internet), 0U);
        }
    }
    EXPECT_EQ(Folder(u"d")->GetContents(contents.Out()), S_OK) << "the next one asks again";
}

} // namespace
} // namespace tarnwell::test
