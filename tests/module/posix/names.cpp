// Names that only this platform allows: any bytes but the slash. Each time the right file is
// meant, also beside those that a wrong reading of the name would reach.
#include "module/localtest.h"

#include <tarnwell/text.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{

namespace fs = std::filesystem;

const std::string names[] = {
    "a\\b",
    "a:b",
    "C:",
    "C:\\x",
    "\\\\?\\C:\\",
    "a\\",
    "\\",
    ":",
    "line\nend",
    "tab\there",
    "\x01\x7F",
    "\"quoted\"",
    "*",
    "?",
    "a*b?",
    "trail. ",
    " ",
    "...",
    "-rf",
    "~",
    "$HOME",
    "caf\xE9",
    "\xFF",
    "\xC3",
    "\xED\xA0\x80",
    "a\x80z",
    "\xF4\x90\x80\x80",
    "\xEF\xBF\xBD",
};

// What readings of the names above as patterns, paths or streams would touch.
const std::string decoys[] = {"a", "b", "x", "caf", "z", "aXbY", "linend", "\xC3\xA9"};

void WriteNamed(const fs::path& path, std::string_view bytes)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    ASSERT_GE(file, 0);
    EXPECT_EQ(write(file, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    close(file);
}

class PosixNames : public LocalTest
{
protected:
    PosixNames()
    {
        for (const std::string& decoy : decoys)
            WriteNamed(folder.Path() / decoy, "decoy");
    }
    ~PosixNames() override
    {
        for (const std::string& decoy : decoys)
            EXPECT_TRUE(fs::exists(folder.Path() / decoy)) << decoy;
    }
    std::u16string PathOf(const std::string& name)
    {
        return folder / DecodeName(name);
    }
    ComPtr<IFileSystemItem> Listed(const std::string& name)
    {
        for (const auto& item : ItemsOf(List(folder.Text())))
        {
            if (FactsOf(item).name == DecodeName(name))
                return item;
        }
        return {};
    }
};

TEST_F(PosixNames, AreListedReadAndDeletedFromTheListing)
{
    for (const std::string& name : names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        WriteNamed(folder.Path() / name, "held by " + name);
        const auto item = Listed(name);
        ASSERT_TRUE(item);
        EXPECT_EQ(FactsOf(item).path, PathOf(name));
        EXPECT_EQ(FactsOf(item).parent, folder.Text());
        ComPtr<IFileStream> stream;
        ASSERT_EQ(item.As<IFile>()->Open(readAccess, openExisting, stream.Out()), S_OK);
        EXPECT_EQ(ReadAll(stream), "held by " + name);
        EXPECT_EQ(item->Delete(VARIANT_TRUE, VARIANT_FALSE), S_OK);
        EXPECT_FALSE(fs::exists(folder.Path() / name));
    }
}

TEST_F(PosixNames, AreMadeAndFoundByTheirPath)
{
    for (const std::string& name : names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        const auto writer = Open(PathOf(name), writeAccess, createNew);
        ASSERT_TRUE(writer);
        ASSERT_EQ(Write(writer, "12345"), S_OK);
        EXPECT_EQ(fs::file_size(folder.Path() / name), 5U);
        const Facts facts = FactsOf(File(PathOf(name)));
        EXPECT_EQ(facts.name, DecodeName(name));
        EXPECT_EQ(facts.size, 5U);
        EXPECT_EQ(File(PathOf(name)).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE),
                  S_OK);
        EXPECT_FALSE(fs::exists(folder.Path() / name));
    }
}

TEST_F(PosixNames, OfFoldersWorkTheSame)
{
    for (const std::string& name : names)
    {
        SCOPED_TRACE(testing::PrintToString(name));
        const std::u16string path = PathOf(name);
        ASSERT_EQ(NewFolder(path)->Create(VARIANT_TRUE), S_OK);
        EXPECT_TRUE(fs::is_directory(folder.Path() / name));
        WriteNamed(folder.Path() / name / "caf\xE9", "in");
        const auto items = ItemsOf(List(path));
        ASSERT_EQ(items.size(), 1U);
        EXPECT_EQ(FactsOf(items[0]).path, path + u"/caf\xDCE9");
        EXPECT_EQ(FactsOf(items[0]).parent, path);
        EXPECT_EQ(Folder(path).As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), S_OK);
        EXPECT_FALSE(fs::exists(folder.Path() / name));
    }
}

TEST_F(PosixNames, OfFullLengthAreWhole)
{
    std::string accents;
    for (int i = 0; i < 127; ++i)
        accents += "\xC3\xA9";
    for (const std::string& name : {std::string(255, 'x'), accents + "x", std::string(255, '\xE9')})
    {
        WriteNamed(folder.Path() / name, "long");
        EXPECT_TRUE(Listed(name));
        const auto file = File(PathOf(name));
        EXPECT_EQ(FactsOf(file).name, DecodeName(name));
        EXPECT_EQ(file.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE), S_OK);
        EXPECT_FALSE(fs::exists(folder.Path() / name));
    }
}

TEST_F(PosixNames, ThatCannotBeTellNothingIsThere)
{
    for (const std::u16string name : {u"\xD800", u"a\xDFFF", u"\xDC00"})
    {
        EXPECT_LT(GetFile(folder / name).status, 0);
        ComPtr<IFileStream> stream;
        EXPECT_LT(NewFile(folder / name)->Open(writeAccess, createAlways, stream.Out()), 0);
        EXPECT_LT(NewFolder(folder / name)->Create(VARIANT_TRUE), 0);
    }
}

TEST_F(PosixNames, StandInFailuresAsTheyWereGiven)
{
    const std::u16string path = PathOf("missing\xE9");
    EXPECT_THAT(GetFile(path), Failed(Win32Status(2), u"Failed to open \"" + path + u"\"."));
}

} // namespace

} // namespace tarnwell::test
