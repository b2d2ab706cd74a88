// Long use leaves nothing behind.
#include "module/localtest.h"
#include "module/resources.h"

namespace tarnwell::test
{

namespace
{

// A leak of one byte in each round would be more.
constexpr std::size_t noise = 64 * 1024;
constexpr int warmUp = 100;

class Endurance : public LocalTest
{
protected:
    // The host object keeps what it was asked, so that it would grow.
    Endurance()
    {
        system.As<IFileSystemInit>()->SetHost(nullptr);
    }

    // Runs `round` often and expects the process to hold what it held before.
    template <class F> static void Endure(std::size_t rounds, F&& round)
    {
        for (int i = 0; i < warmUp; ++i)
            round();
        const std::size_t handles = OpenHandleCount();
        const std::size_t memory = MemoryInUse();
        for (std::size_t i = 0; i < rounds; ++i)
            round();
        EXPECT_EQ(OpenHandleCount(), handles);
        EXPECT_LE(MemoryInUse(), memory + noise);
    }
};

TEST_F(Endurance, OpenReadAndClose)
{
    const auto file = File(Put(u"a.txt"));
    int failures = 0;
    Endure(noise + 1000, [&] {
        ComPtr<IFileStream> stream;
        char buffer[16];
        ULONG read = 0;
        const bool fine =
            file->Open(readAccess, openExisting, stream.Out()) == S_OK &&
            stream.As<::ISequentialStream>()->Read(buffer, sizeof buffer, &read) == S_OK &&
            read == 7 && stream->Close() == S_OK;
        failures += fine ? 0 : 1;
    });
    EXPECT_EQ(failures, 0);
}

TEST_F(Endurance, ReleaseWithoutClosing)
{
    const auto file = File(Put(u"a.txt"));
    int opened = 0;
    Endure(2000, [&] {
        ComPtr<IFileStream> stream;
        opened += file->Open(readAccess, openExisting, stream.Out()) == S_OK && stream ? 1 : 0;
    });
    EXPECT_EQ(opened, 2000 + warmUp);
}

TEST_F(Endurance, ListAndLookAtEachItem)
{
    for (int i = 0; i < 10; ++i)
        Put(u"file" + std::u16string(1, static_cast<char16_t>(u'0' + i)));
    MakeDirectory(u"sub");
    std::size_t items = 0;
    Endure(1000, [&] { items += NamesOf(List(folder.Text())).size(); });
    EXPECT_EQ(items, (1000U + warmUp) * 11);
}

TEST_F(Endurance, Fail)
{
    const std::u16string missing = folder / u"missing";
    const auto notThere = NewFile(missing);
    Endure(2000, [&] {
        ComPtr<IFileStream> stream;
        EXPECT_LT(notThere->Open(readAccess, openExisting, stream.Out()), 0);
        EXPECT_LT(GetFile(missing).status, 0);
        EXPECT_LT(GetFolder(missing).status, 0);
        EXPECT_LT(notThere.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE), 0);
    });
}

} // namespace

} // namespace tarnwell::test
