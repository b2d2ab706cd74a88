// Items out of find records, as a listing or a lookup gives them.
#include "frame/paths.h"
#include "frame/text.h"
#include "local/findrecord.h"
#include "local/foldercontents.h"
#include "local/makeitem.h"

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

WIN32_FIND_DATAW Record(std::u16string_view name, DWORD attributes)
{
    WIN32_FIND_DATAW record{};
    SetNames(record, name);
    record.dwFileAttributes = attributes;
    record.nFileSizeLow = 7;
    record.nFileSizeHigh = 5;
    record.ftCreationTime = FileTimeOf(1);
    record.ftLastAccessTime = FileTimeOf(2);
    record.ftLastWriteTime = FileTimeOf(3);
    return record;
}

ComPtr<IFileSystemItem> MakeFile(const WIN32_FIND_DATAW& record)
{
    ComPtr<IFileSystemItem> item;
    EXPECT_EQ(
        MakeFileItem(u"folder", ItemRecordOf(record), {}, IID_IFileSystemItem, item.OutVoid()),
        S_OK);
    return item;
}

std::u16string NameOfItem(const ComPtr<IFileSystemItem>& item)
{
    Bstr name;
    EXPECT_EQ(item->GetName(name.Out()), S_OK);
    return std::u16string(name.View());
}

std::u16string PathOfItem(const ComPtr<IFileSystemItem>& item)
{
    Bstr path;
    EXPECT_EQ(item->GetPath(path.Out()), S_OK);
    return std::u16string(path.View());
}

std::u16string NameOfRecord(const ListedRecord& record)
{
    std::u16string name(record.nameLength, u'#');
    record.CopyName(name.data());
    return name;
}

TEST(LocalItems, HaveNamesOfEveryLength)
{
    for (std::size_t size = 1; size < MAX_PATH; ++size)
    {
        const std::u16string name(size, u'x');
        const auto item = MakeFile(Record(name, 128));
        EXPECT_EQ(NameOfItem(item), name);
        std::u16string path = u"folder";
        AppendSeparator(path);
        EXPECT_EQ(PathOfItem(item), path + name);
        Bstr parent;
        EXPECT_EQ(item->GetParentPath(parent.Out()), S_OK);
        EXPECT_EQ(parent.View(), u"folder");
    }
}

TEST(LocalItems, OutliveTheirListing)
{
    ComPtr<ComObject<CWin32FolderContentsObject>> contents;
    ASSERT_EQ(MakeObject<CWin32FolderContentsObject>(contents), S_OK);
    RecordList records;
    records.Append(ItemRecordOf(Record(u"a.txt", 128)));
    contents->Initialize(u"folder", std::move(records), {});
    ComPtr<IFileSystemItem> item;
    ASSERT_EQ(contents->GetItem(0, item.Out()), S_OK);
    contents.Reset();
    std::u16string path = u"folder";
    AppendSeparator(path);
    EXPECT_EQ(PathOfItem(item), path + u"a.txt");
}

TEST(LocalItems, TheTimeIsThatOfTheLastWrite)
{
    std::uint64_t time = 0;
    EXPECT_EQ(MakeFile(Record(u"a", 128))->GetModifiedTime(&time), S_OK);
    EXPECT_EQ(time, 3U);
}

TEST(LocalItems, AFileWithTheFolderAttributeHasNoSize)
{
    const auto file = MakeFile(Record(u"a", 16)).As<IFile>();
    std::uint32_t size = 99;
    EXPECT_EQ(file->GetSizeLow(&size), S_OK);
    EXPECT_EQ(size, 0U);
    size = 99;
    EXPECT_EQ(file->GetSizeHigh(&size), S_OK);
    EXPECT_EQ(size, 0U);
}

TEST(LocalItems, AnItemThatRefusesTheInterfaceIsNotMade)
{
    void* out = nullptr;
    EXPECT_EQ(MakeFileItem(u"", ItemRecordOf(Record(u"a", 128)), {}, IID_IFolder, &out),
              E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(MakeFolderItem(u"", ItemRecordOf(Record(u"a", 16)), {}, IID_IFile, &out),
              E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
}

TEST(LocalItems, ARecordOfADataStreamIsAFileOfTheStreamsSize)
{
    ComPtr<ComObject<CWin32FolderContentsObject>> contents;
    ASSERT_EQ(MakeObject<CWin32FolderContentsObject>(contents), S_OK);
    RecordList records;
    for (const auto& record : {Record(u"a.txt", 128), Record(u"a.txt:s1", 128), Record(u"sub", 16)})
        records.Append(ItemRecordOf(record));
    contents->Initialize(u"folder", std::move(records), {});
    std::uint32_t count = 0;
    EXPECT_EQ(contents->GetCount(&count), S_OK);
    EXPECT_EQ(count, 3U);

    ComPtr<IFileSystemItem> item;
    ASSERT_EQ(contents->GetItem(1, item.Out()), S_OK);
    EXPECT_EQ(NameOfItem(item), u"a.txt:s1");
    std::uint32_t size = 0;
    ASSERT_TRUE(item.As<IFile>());
    EXPECT_EQ(item.As<IFile>()->GetSizeLow(&size), S_OK);
    EXPECT_EQ(size, 7U);

    ASSERT_EQ(contents->GetItem(2, item.Out()), S_OK);
    EXPECT_TRUE(item.As<IFolder>());
    EXPECT_FALSE(item.As<IFile>());
}

TEST(RecordLists, KeepWhatItemsTell)
{
    RecordList records;
    EXPECT_EQ(records.Size(), 0U);
    records.Append(ItemRecordOf(Record(u"first", 128)));
    records.Append(ItemRecordOf(Record(u"", 16)));
    records.Append(ItemRecordOf(Record(std::u16string(259, u'x'), 1)));
    ASSERT_EQ(records.Size(), 3U);

    const ItemFacts& first = records.At(0).facts;
    EXPECT_EQ(NameOfRecord(records.At(0)), u"first");
    EXPECT_EQ(first.attributes, 128U);
    EXPECT_EQ(first.sizeLow, 7U);
    EXPECT_EQ(first.sizeHigh, 5U);
    EXPECT_EQ(TimeOf(first.written), 3U);
    EXPECT_EQ(NameOfRecord(records.At(1)), u"");
    EXPECT_EQ(records.At(1).facts.attributes, 16U);
    EXPECT_EQ(NameOfRecord(records.At(2)), std::u16string(259, u'x'));
}

// More than a block of names holds, of one byte a unit and of two.
TEST(RecordLists, KeepNamesOfAllKinds)
{
    const auto nameOf = [](int i) {
        std::u16string name(static_cast<std::size_t>(i % 260), i % 3 == 0 ? u'x' : u'\u65e5');
        if (!name.empty() && i % 5 == 0)
            name.back() = u'\xDC80';
        return name;
    };
    RecordList records;
    for (int i = 0; i < 2000; ++i)
        records.Append(ItemRecordOf(Record(nameOf(i), static_cast<DWORD>(i))));
    for (int i = 0; i < 2000; ++i)
    {
        const ListedRecord& record = records.At(static_cast<std::size_t>(i));
        EXPECT_EQ(NameOfRecord(record), nameOf(i));
        EXPECT_EQ(record.facts.attributes, static_cast<DWORD>(i));
    }
}

} // namespace

} // namespace tarnwell::test
