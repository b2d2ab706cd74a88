// Ten thousand operations on a server: nothing grows, and each burst logs on once.
#include "client/pairs.h"
#include "support/files.h"

#include "support/fakehost.h"
#include "support/ftp/posix/realserver.h"

#include <tarnwell/classes.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr int operations = 10'000;
constexpr int warmUp = 1000;
constexpr std::uint64_t noise = 512U << 10; // bytes of memory: 52 for each operation are too many

void Require(bool holds, const char* failure)
{
    if (!holds)
        throw std::runtime_error(failure);
}

std::ptrdiff_t OpenDescriptors()
{
    namespace fs = std::filesystem;
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

std::uint64_t ResidentMemory()
{
    std::ifstream facts("/proc/self/statm");
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    facts >> total >> resident;
    return resident * 4096;
}

// A file written, looked up, read, listed, looked for in vain and deleted: six operations.
void Round(IFileSystem* system, const std::u16string& base)
{
    const std::u16string path = base + u"a.txt";
    ComPtr<IFile> file;
    ComPtr<IFileStream> stream;
    Require(SUCCEEDED(system->GetFile(path.c_str(), VARIANT_FALSE, file.Out())) &&
                SUCCEEDED(file->Open(0x40000000, 2, stream.Out())) &&
                SUCCEEDED(stream.As<::ISequentialStream>()->Write("content", 7, nullptr)) &&
                SUCCEEDED(stream->Close()),
            "a file can't be written");
    ComPtr<IFile> found;
    Require(SUCCEEDED(system->GetFile(path.c_str(), VARIANT_TRUE, found.Out())), "not found");
    Require(ReadThrough(system, path) == 7, "not read");
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    Require(SUCCEEDED(system->GetFolder(base.c_str(), VARIANT_FALSE, folder.Out())) &&
                SUCCEEDED(folder->GetContents(contents.Out())),
            "not listed");
    ComPtr<IFile> none;
    Require(FAILED(system->GetFile((base + u"none").c_str(), VARIANT_TRUE, none.Out())),
            "found what isn't there");
    Require(SUCCEEDED(found.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_FALSE)),
            "not deleted");
}

int Soak(test::FtpServerKind kind)
{
    constexpr int perRound = 6;
    const test::RealFtpServer server(kind);
    const auto host = test::FakeHost::Make();
    host->credentials = {S_OK, u"ftp", u"secret", server.Host()};
    const auto system = MakeFileSystem(CLSID_FTPFileSystem);
    system.As<IFileSystemInit>()->SetHost(host->Unknown());
    // Not the root, which isn't the login folder on every server.
    std::filesystem::create_directory(server.Folder() / "w");
    std::filesystem::permissions(server.Folder() / "w", std::filesystem::perms::all);
    const std::u16string base = u"ftp://" + server.Host() + u"/w/";
    for (int done = 0; done < warmUp; done += perRound)
        Round(system.Get(), base);
    const auto descriptors = OpenDescriptors();
    const std::uint64_t memory = ResidentMemory();
    for (int done = 0; done < operations; done += perRound)
        Round(system.Get(), base);
    const auto moreDescriptors = OpenDescriptors() - descriptors;
    const auto moreMemory =
        static_cast<std::int64_t>(ResidentMemory()) - static_cast<std::int64_t>(memory);
    std::printf("%-10d operations: %+td descriptors, %+ld KiB, %d logons\n", operations,
                moreDescriptors, static_cast<long>(moreMemory / 1024), server.Logins());
    return moreDescriptors == 0 && moreMemory < static_cast<std::int64_t>(noise) &&
                   server.Logins() == 1
               ? 0
               : 1;
}

} // namespace

int tarnwell::bench::Run()
{
    int result = 0;
    for (const test::FtpServerKind kind : test::allFtpServers)
        result |= Soak(kind);
    return result;
}
