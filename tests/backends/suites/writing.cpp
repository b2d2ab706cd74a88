// Where a file system writes, what was written is there, and what was deleted is gone.
#include "backends/suites/backendtest.h"
#include "support/fakeprogress.h"
#include "support/wine.h"

namespace tarnwell::test
{
namespace
{

class Writing : public BackendTest
{
protected:
    std::u16string In(std::u16string_view name) const
    {
        return data_->Address(name);
    }
    bool Has(std::u16string_view name) const
    {
        return data_->Has(name);
    }
    std::string Held(std::u16string_view name) const
    {
        return data_->Held(name);
    }
    void WriteAs(std::u16string_view name, std::string_view bytes) const
    {
        ComPtr<IFileStream> stream;
        const auto file = File(In(name));
        ASSERT_THAT(OutcomeOf([&] { return file->Open(writeAccess, createAlways, stream.Out()); }),
                    Succeeded());
        EXPECT_EQ(Write(stream, bytes), S_OK);
        EXPECT_THAT(OutcomeOf([&] { return stream->Close(); }), Succeeded());
    }
    template <class I> static Outcome Delete(const ComPtr<I>& item, VARIANT_BOOL recursive)
    {
        const auto view = item.template As<IFileSystemItem>();
        return OutcomeOf([&] { return view->Delete(VARIANT_TRUE, recursive); });
    }

    const std::unique_ptr<BackendData> data_ = NewData();
};

TEST_P(Writing, IsByteForByteAndReplacesWhatWasThere)
{
    for (const std::string& bytes : {largeContent, binaryContent, std::string()})
    {
        WriteAs(u"a.txt", bytes);
        EXPECT_EQ(Held(u"a.txt"), bytes);
        EXPECT_EQ(Content(In(u"a.txt")), bytes);
    }
}

TEST_P(Writing, GivesFilesNamesOfAllKinds)
{
    data_->Put(u"beside", "1");
    for (const std::u16string_view name : Row().names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        WriteAs(name, "held");
        EXPECT_EQ(Held(name), "held");
        EXPECT_THAT(NamesOf(Contents(In({}))), testing::UnorderedElementsAre(name, u"beside"));
        EXPECT_THAT(Delete(File(In(name)), VARIANT_FALSE), Succeeded());
        EXPECT_FALSE(Has(name));
        EXPECT_TRUE(Has(u"beside"));
    }
}

TEST_P(Writing, GivesFoldersNamesOfAllKinds)
{
    for (const std::u16string_view name : Row().names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        EXPECT_THAT(OutcomeOf([&] { return Folder(In(name))->Create(VARIANT_TRUE); }), Succeeded());
        data_->Put(std::u16string(name) + u"/in", "1");
        EXPECT_THAT(NamesOf(Contents(In(name))), testing::ElementsAre(u"in"));
        EXPECT_THAT(Delete(Folder(In(name)), VARIANT_TRUE), Succeeded());
        EXPECT_FALSE(Has(name));
    }
}

TEST_P(Writing, MakesFoldersOnTheWayIfItIsTold)
{
    const auto create = [&](VARIANT_BOOL recursive) {
        const auto folder = Folder(In(u"one/two/three"));
        return OutcomeOf([&] { return folder->Create(recursive); });
    };
    EXPECT_THAT(create(VARIANT_FALSE), NamesInterface(IID_IFolder));
    EXPECT_FALSE(Has(u"one"));
    EXPECT_THAT(create(VARIANT_TRUE), Succeeded());
    EXPECT_TRUE(data_->HasFolder(u"one/two/three"));
}

TEST_P(Writing, DeletesListsWhole)
{
    data_->Put(u"a.txt", "1");
    data_->MakeFolder(u"sub");
    data_->Put(u"sub/b.txt", "2");
    data_->Put(u"stays.txt", "3");
    FakeItemList list({In(u"a.txt"), std::nullopt, In(u"sub")});
    EXPECT_THAT(OutcomeOf([&] { return system->DeleteItems(&list, VARIANT_TRUE, VARIANT_TRUE); }),
                Succeeded());
    EXPECT_FALSE(Has(u"a.txt"));
    EXPECT_FALSE(Has(u"sub"));
    EXPECT_TRUE(Has(u"stays.txt"));
}

TEST_P(Writing, DoesNotDeleteWhatIsMissing)
{
    EXPECT_THAT(Delete(File(In(u"none")), VARIANT_FALSE), NamesInterface(IID_IFileSystemItem));
}

TEST_P(Writing, CopiesAndReplaces)
{
    data_->Put(u"a.txt", largeContent);
    data_->Put(u"copy.txt", "before");
    for (const char16_t* const target : {u"copy.txt", u"new.txt"})
    {
        FakeProgress progress;
        EXPECT_THAT(OutcomeOf([&] {
                        return system->CopyItem(Ole(In(u"a.txt")), Ole(In(target)), &progress);
                    }),
                    Succeeded());
        EXPECT_EQ(Held(target), largeContent);
        EXPECT_TRUE(progress.Questions() > 0 || IsUnderWine()) << "Wine's copy asks nobody";
        EXPECT_EQ(progress.references, 0U);
    }
    EXPECT_EQ(Held(u"a.txt"), largeContent);
}

TEST_P(Writing, TellsHowFarACopyIs)
{
    if (IsUnderWine() && GetParam()->family == Family::Local)
        GTEST_SKIP() << "Wine's copy tells nobody";
    data_->Put(u"a.txt", largeContent);
    FakeAmounts amounts;
    EXPECT_THAT(OutcomeOf([&] {
                    return system->CopyItem(Ole(In(u"a.txt")), Ole(In(u"copy.txt")),
                                            static_cast<ICopyProgress*>(&amounts));
                }),
                Succeeded());
    EXPECT_EQ(Held(u"copy.txt"), largeContent);
    EXPECT_TRUE(amounts.IsInOrder());
    EXPECT_GT(amounts.Questions(), 0);
    const auto told = amounts.Told();
    ASSERT_GE(told.size(), 2U);
    EXPECT_EQ(told.front(), (FakeAmounts::Amount{0, largeContent.size()}));
    EXPECT_EQ(told.back(), (FakeAmounts::Amount{largeContent.size(), largeContent.size()}));
    EXPECT_EQ(amounts.references, 0U);
}

// Nothing else changes by it, whatever the host answers.
TEST_P(Writing, CopiesForHostsThatDoNotWantToKnowHowFarItIs)
{
    data_->Put(u"a.txt", largeContent);
    FakeProgress plain;
    ASSERT_THAT(OutcomeOf([&] {
                    return system->CopyItem(Ole(In(u"a.txt")), Ole(In(u"copy.txt")), &plain);
                }),
                Succeeded());
    for (const auto& [found, isGiven, status] :
         {std::tuple(E_NOINTERFACE, false, S_OK), std::tuple(E_NOINTERFACE, true, S_OK),
          std::tuple(S_OK, false, S_OK), std::tuple(S_OK, true, E_FAIL)})
    {
        FakeAmounts amounts;
        amounts.found = found;
        amounts.isGiven = isGiven;
        amounts.status = status;
        EXPECT_THAT(OutcomeOf([&] {
                        return system->CopyItem(Ole(In(u"a.txt")), Ole(In(u"new.txt")),
                                                static_cast<ICopyProgress*>(&amounts));
                    }),
                    Succeeded());
        EXPECT_EQ(Held(u"new.txt"), largeContent);
        // How often depends on the pieces that come from a server.
        EXPECT_EQ(amounts.Questions() == 0, plain.Questions() == 0);
        EXPECT_EQ(amounts.Told().empty(), !(SUCCEEDED(found) && isGiven) || plain.Questions() == 0);
        EXPECT_EQ(amounts.references, 0U);
    }
}

TEST_P(Writing, CopiesNothingOfWhatIsMissing)
{
    FakeProgress progress;
    const Outcome outcome = OutcomeOf(
        [&] { return system->CopyItem(Ole(In(u"none")), Ole(In(u"copy.txt")), &progress); });
    EXPECT_THAT(outcome, NamesInterface(IID_IFileSystem));
    EXPECT_FALSE(Has(u"copy.txt"));
}

TARNWELL_OVER_BACKENDS(Writing, BackendsThat([](const Backend& b) { return b.writes; }));

} // namespace
} // namespace tarnwell::test
