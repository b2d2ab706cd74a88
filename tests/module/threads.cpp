// Eight threads, each with objects of its own: nothing is shared that shows.
#include "module/localtest.h"

#include <algorithm>
#include <thread>

namespace tarnwell::test
{

namespace
{

constexpr int threadCount = 8;
constexpr int rounds = 25;

class Worker
{
public:
    Worker(const TempFolder& folder, ::IUnknown* host, int number)
        : path_(folder / (u"thread" + std::u16string(1, static_cast<char16_t>(u'0' + number)))),
          system_(TheModule().CreateFileSystem(CLSID_Win32FileSystem, host))
    {
    }

    // Everything that goes wrong counts.
    int Failures()
    {
        for (int round = 0; round < rounds; ++round)
            Round();
        return failures_;
    }

private:
    void Expect(bool fine)
    {
        failures_ += fine ? 0 : 1;
    }

    void Round()
    {
        ComPtr<IFolder> folder;
        Expect(system_->GetFolder(Ole(path_), VARIANT_FALSE, folder.Out()) == S_OK);
        Expect(folder && folder->Create(VARIANT_TRUE) == S_OK);
        const std::u16string name = Joined(path_, u"file");
        ComPtr<IFile> file;
        Expect(system_->GetFile(Ole(name), VARIANT_FALSE, file.Out()) == S_OK);
        ComPtr<IFileStream> stream;
        Expect(file && file->Open(writeAccess, createAlways, stream.Out()) == S_OK);
        Expect(stream && Write(stream, "content") == S_OK);
        stream.Reset();
        Expect(file->Open(readAccess, openExisting, stream.Out()) == S_OK);
        Expect(ReadAll(stream) == "content");
        stream.Reset();
        Expect(CountItems(folder) == 1);
        FailInMyOwnWords();
        Expect(file.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE) == S_OK);
        Expect(folder.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE) == S_OK);
    }

    static std::uint32_t CountItems(const ComPtr<IFolder>& folder)
    {
        ComPtr<IFolderContents> contents;
        std::uint32_t count = 0;
        if (folder->GetContents(contents.Out()) == S_OK)
            contents->GetCount(&count);
        return count;
    }

    void FailInMyOwnWords()
    {
        const std::u16string missing = Joined(path_, u"missing");
        ComPtr<IFile> file;
        ClearError();
        Expect(system_->GetFile(Ole(missing), VARIANT_TRUE, file.Out()) == Win32Status(2));
        Expect(TakeErrorText().starts_with(u"Failed to open \"" + missing + u"\". "));
    }

    std::u16string path_;
    ComPtr<IFileSystem> system_;
    int failures_ = 0;
};

// Whether lookups, a listing and a failure all come out as they should.
bool LookAround(const ComPtr<IFileSystem>& system, const TempFolder& folder)
{
    ComPtr<IFile> file;
    std::uint32_t size = 0;
    if (system->GetFile(Ole(folder / u"a.txt"), VARIANT_TRUE, file.Out()) != S_OK ||
        file->GetSizeLow(&size) != S_OK || size != 5)
        return false;
    ComPtr<IFolder> found;
    ComPtr<IFolderContents> contents;
    std::uint32_t count = 0;
    if (system->GetFolder(Ole(folder.Text()), VARIANT_TRUE, found.Out()) != S_OK ||
        found->GetContents(contents.Out()) != S_OK || contents->GetCount(&count) != S_OK ||
        count != 1)
        return false;
    ClearError();
    return system->GetFile(Ole(folder / u"missing"), VARIANT_TRUE, file.Out()) == Win32Status(2) &&
           TakeErrorText().starts_with(u"Failed to open");
}

TEST(Threads, WorkBesideEachOther)
{
    const TempFolder folder;
    const auto host = FakeHost::Make();
    std::vector<int> failures(threadCount, -1);
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number)
    {
        threads.emplace_back([&, number] {
            failures[static_cast<std::size_t>(number)] =
                Worker(folder, host->Unknown(), number).Failures();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(failures, testing::Each(0));
    EXPECT_EQ(host->References(), 1U);
}

// Once it has its host, a file system changes nothing in itself.
TEST(Threads, ShareOneFileSystem)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "12345");
    const auto host = FakeHost::Make();
    {
        const auto system = TheModule().CreateFileSystem(CLSID_Win32FileSystem, host->Unknown());
        std::vector<int> done(threadCount, 0);
        std::vector<std::thread> threads;
        for (int& count : done)
        {
            threads.emplace_back([&, own = system] {
                for (int round = 0; round < rounds; ++round)
                    count += LookAround(own, folder) ? 1 : 0;
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_THAT(done, testing::Each(rounds));
    }
    EXPECT_EQ(host->References(), 1U);
}

// Facts are constant once an item is made, so that reading them needs no care.
TEST(Threads, ReadTheFactsOfOneItem)
{
    const TempFolder folder;
    WriteBytes(folder / u"a.txt", "12345");
    const auto system = TheModule().CreateFileSystem(CLSID_Win32FileSystem);
    ComPtr<IFile> file;
    ASSERT_EQ(system->GetFile(Ole(folder / u"a.txt"), VARIANT_TRUE, file.Out()), S_OK);
    std::vector<std::uint32_t> sizes(threadCount, 0);
    std::vector<std::thread> threads;
    for (std::uint32_t& size : sizes)
    {
        threads.emplace_back([&size, own = file] {
            for (int round = 0; round < rounds; ++round)
            {
                const ComPtr<IFile> other = own.As<IFile>();
                other->GetSizeLow(&size);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(sizes, testing::Each(5U));
}

} // namespace

} // namespace tarnwell::test
