// What an item changes on the disk: attributes, the time, its own existence.
#include "module/localtest.h"

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

class Changes : public LocalTest
{
protected:
    static Outcome SetAttributes(const ComPtr<IFileSystemItem>& item, std::uint32_t attributes)
    {
        return OutcomeOf([&] { return item->SetAttributes(attributes); });
    }
    static Outcome SetTime(const ComPtr<IFile>& file, std::uint64_t time)
    {
        const auto item = file.As<IFileSystemItemExt>();
        return OutcomeOf([&] { return item->SetModifiedTime(time); });
    }
    static Outcome Delete(const ComPtr<IFileSystemItem>& item, bool recursive)
    {
        return OutcomeOf(
            [&] { return item->Delete(VARIANT_TRUE, recursive ? VARIANT_TRUE : VARIANT_FALSE); });
    }
    static std::u16string FailedToDelete(const std::u16string& path)
    {
        return u"Can't delete the file or folder \"" + path + u"\".";
    }
};

// 2001-02-03 04:05:06 UTC and a fraction.
constexpr std::uint64_t someTime = 126256395061234500;

TEST_F(Changes, ReadOnlyReachesTheDiskAndBack)
{
    const std::u16string path = Put(u"a.txt");
    const auto item = File(path).As<IFileSystemItem>();
    EXPECT_THAT(SetAttributes(item, readOnlyAttribute), Succeeded());
    EXPECT_EQ(FactsOf(item).attributes, readOnlyAttribute) << "the item tells what was set";
    EXPECT_EQ(FactsOf(File(path)).attributes & readOnlyAttribute, readOnlyAttribute);

    EXPECT_THAT(SetAttributes(item, 128), Succeeded());
    EXPECT_EQ(FactsOf(item).attributes, 128U);
    EXPECT_EQ(FactsOf(File(path)).attributes & readOnlyAttribute, 0U);
}

TEST_F(Changes, AttributesOfWhatIsMissingStay)
{
    const std::u16string path = folder / u"missing";
    for (const auto& item :
         {NewFile(path).As<IFileSystemItem>(), NewFolder(path).As<IFileSystemItem>()})
    {
        EXPECT_THAT(SetAttributes(item, readOnlyAttribute),
                    Failed(Win32Status(2),
                           u"Failed to get attributes for the file or folder \"" + path + u"\"."));
        EXPECT_EQ(FactsOf(item).attributes, 0U);
    }
}

TEST_F(Changes, ATimeReachesTheDiskAndNotTheItem)
{
    const std::u16string path = Put(u"a.txt");
    const auto file = File(path);
    const std::uint64_t before = FactsOf(file).time;
    EXPECT_THAT(SetTime(file, someTime), Succeeded());
    EXPECT_EQ(FactsOf(file).time, before);
    EXPECT_EQ(FactsOf(File(path)).time, someTime);
    EXPECT_EQ(ReadBytes(path), "content");
}

TEST_F(Changes, AReadOnlyFilesTimeCanBeSet)
{
    const std::u16string path = Put(u"a.txt");
    const auto file = File(path);
    ASSERT_THAT(SetAttributes(file.As<IFileSystemItem>(), readOnlyAttribute), Succeeded());
    EXPECT_THAT(SetTime(file, someTime), Succeeded());
    EXPECT_EQ(FactsOf(File(path)).time, someTime);
}

TEST_F(Changes, ATimeOfZeroChangesNothing)
{
    const std::u16string path = Put(u"a.txt");
    const auto file = File(path);
    ASSERT_THAT(SetTime(file, someTime), Succeeded());
    EXPECT_THAT(SetTime(file, 0), Succeeded());
    EXPECT_EQ(FactsOf(File(path)).time, someTime);
}

TEST_F(Changes, TheTimeOfWhatIsMissingFails)
{
    const std::u16string path = folder / u"missing";
    EXPECT_THAT(
        SetTime(NewFile(path), someTime),
        Failed(Win32Status(2), u"Failed to open \"" + path + u"\" for reading or writing."));
}

TEST_F(Changes, AFileIsDeleted)
{
    for (const bool recursive : {false, true})
    {
        const std::u16string path = Put(u"a.txt");
        Put(u"a.txt2");
        EXPECT_THAT(Delete(File(path).As<IFileSystemItem>(), recursive), Succeeded());
        EXPECT_FALSE(Exists(path));
        EXPECT_TRUE(Exists(folder / u"a.txt2"));
    }
}

TEST_F(Changes, AFolderIsNotDeletedAsAFile)
{
    const std::u16string path = MakeDirectory(u"sub");
    EXPECT_THAT(Delete(Folder(path).As<IFileSystemItem>(), false),
                Failed(Win32Status(5), FailedToDelete(path)))
        << "even an empty one";
    EXPECT_TRUE(Exists(path));
}

TEST_F(Changes, AFolderIsDeletedWithAllThatIsInIt)
{
    const std::u16string path = MakeDirectory(u"sub");
    fs::create_directories(fs::path(path) / "a" / "b");
    WriteBytes(Joined(path, u"1.txt"), "1");
    WriteBytes(path + separator + u"a" + separator + u"b" + separator + u"2.txt", "2");
    Put(u"beside.txt");
    EXPECT_THAT(Delete(Folder(path).As<IFileSystemItem>(), true), Succeeded());
    EXPECT_FALSE(Exists(path));
    EXPECT_TRUE(Exists(folder / u"beside.txt"));
}

TEST_F(Changes, WhatIsMissingIsNotDeleted)
{
    const std::u16string path = folder / u"missing";
    const auto item = NewFile(path).As<IFileSystemItem>();
    EXPECT_THAT(Delete(item, false), Failed(Win32Status(2), FailedToDelete(path)));
    EXPECT_THAT(Delete(item, true), Failed(E_FAIL, FailedToDelete(path)));
}

TEST_F(Changes, AReadOnlyFileIsNotDeleted)
{
    const std::u16string path = Put(u"a.txt");
    const auto item = File(path).As<IFileSystemItem>();
    ASSERT_THAT(SetAttributes(item, readOnlyAttribute), Succeeded());
    EXPECT_THAT(Delete(item, false), Failed(Win32Status(5), FailedToDelete(path)));
    EXPECT_EQ(ReadBytes(path), "content");
}

} // namespace

} // namespace tarnwell::test
