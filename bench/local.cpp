// The local file system against the system calls beneath it: listing a folder, reading a file,
// loading the module.
#include "client/pairs.h"
#include "client/table.h"
#include "support/files.h"
#include "support/folder.h"

#include <tarnwell/classes.h>

#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr int listedCount = 100'000;
constexpr int shownCount = 200'000;
constexpr std::size_t fileSize = std::size_t{1} << 30;

std::string MakeMany(const std::string& folder, int count)
{
    std::filesystem::create_directory(folder);
    for (int i = 0; i < count; ++i)
        std::ofstream(folder + "/file number " + std::to_string(i) + ".txt") << i;
    return folder;
}

std::string MakeBig(const std::string& path)
{
    std::ofstream big(path, std::ios::binary);
    const std::vector<char> block(1 << 20, 'x');
    for (std::size_t written = 0; written < fileSize; written += block.size())
        big.write(block.data(), static_cast<std::streamsize>(block.size()));
    return path;
}

std::uint64_t AskFacts(IFileSystemItem* item)
{
    Bstr name;
    std::uint64_t time = 0;
    std::uint32_t attributes = 0;
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    item->GetName(name.Out());
    item->GetModifiedTime(&time);
    item->GetAttributes(&attributes);
    ComPtr<IFile> file;
    if (SUCCEEDED(item->QueryInterface(IID_IFile, file.OutVoid())))
    {
        file->GetSizeLow(&low);
        file->GetSizeHigh(&high);
    }
    return name.View().size() + time + attributes + low + high;
}

std::uint64_t ListThroughModule(const ComPtr<IFileSystem>& system, const std::string& path)
{
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    const std::u16string wide = Widened(path);
    if (FAILED(system->GetFolder(wide.c_str(), VARIANT_TRUE, folder.Out())) ||
        FAILED(folder->GetContents(contents.Out())))
        throw std::runtime_error("the module can't list the folder");
    std::uint32_t count = 0;
    contents->GetCount(&count);
    std::uint64_t sum = 0;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        ComPtr<IFileSystemItem> item;
        contents->GetItem(static_cast<std::int32_t>(i), item.Out());
        sum += AskFacts(item.Get());
    }
    return sum;
}

std::uint64_t ListBare(const std::string& path)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path.c_str()), closedir);
    std::uint64_t sum = 0;
    while (const dirent* const entry = readdir(folder.get()))
    {
        struct statx facts;
        statx(dirfd(folder.get()), entry->d_name, 0, STATX_BASIC_STATS, &facts);
        sum += facts.stx_size + static_cast<std::uint64_t>(facts.stx_mtime.tv_sec) + facts.stx_mode;
    }
    return sum;
}

std::uint64_t ReadBare(const std::string& path)
{
    static std::vector<char> buffer(pieceSize);
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::uint64_t total = 0;
    for (ssize_t count = 1; count > 0; total += static_cast<std::uint64_t>(count))
        count = read(file, buffer.data(), buffer.size());
    close(file);
    return total;
}

void Require(bool holds, const char* failure)
{
    if (!holds)
        throw std::runtime_error(failure);
}

// In a child, since a module that is loaded stays loaded. What it took, in seconds.
double LoadModule()
{
    int ends[2];
    Require(pipe(ends) == 0, "there is no pipe");
    const pid_t child = fork();
    if (child == 0)
    {
        timespec before;
        timespec after;
        clock_gettime(CLOCK_MONOTONIC, &before);
        void* const module = dlopen(TARNWELL_MODULE, RTLD_NOW | RTLD_LOCAL);
        const auto get =
            reinterpret_cast<decltype(&DllGetClassObject)>(dlsym(module, "DllGetClassObject"));
        ::IClassFactory* factory = nullptr;
        void* system = nullptr;
        get(CLSID_Win32FileSystem, IID_IClassFactory, reinterpret_cast<void**>(&factory));
        factory->CreateInstance(nullptr, IID_IFileSystem, &system);
        clock_gettime(CLOCK_MONOTONIC, &after);
        const double seconds = static_cast<double>(after.tv_sec - before.tv_sec) +
                               static_cast<double>(after.tv_nsec - before.tv_nsec) * 1e-9;
        _exit(system != nullptr && write(ends[1], &seconds, sizeof(seconds)) > 0 ? 0 : 1);
    }
    double seconds = 0;
    close(ends[1]);
    const bool isRead = read(ends[0], &seconds, sizeof(seconds)) == sizeof(seconds);
    close(ends[0]);
    waitpid(child, nullptr, 0);
    Require(isRead, "the module can't be loaded");
    return seconds;
}

// Before anything else is loaded.
bool MeasureLoading()
{
    constexpr std::size_t rounds = 20;
    constexpr double limit = 50e-3;
    std::vector<double> times;
    for (std::size_t i = 0; i < rounds; ++i)
        times.push_back(LoadModule());
    const double time = MedianOf(times);
    PrintRow({"Loading the module", rounds, InMilliseconds(time), "", "", "", InMilliseconds(limit),
              time <= limit});
    return time <= limit;
}

// Programs that print a long folder with its facts.
bool MeasureMemory(const std::string& folder)
{
    return PrintMemory("ls of 200,000 files, memory", PeakOfProgram({TARNWELL_HOST, "ls", folder}),
                       PeakOfProgram({"ls", "-l", folder}), 2);
}

} // namespace

int tarnwell::bench::Run()
{
    const TempFolder ground;
    bool isWithin = MeasureLoading();
    {
        const std::string shown = MakeMany(ground / "shown", shownCount);
        isWithin &= MeasureMemory(shown);
        std::filesystem::remove_all(shown);
    }
    const auto local = MakeFileSystem(CLSID_Win32FileSystem);
    const std::string many = MakeMany(ground / "many", listedCount);
    const std::string big = MakeBig(ground / "big");
    const int result = Measure({
        {"100,000 local files with facts", 30, 1.2,
         [&] { Require(ListThroughModule(local, many) > 0, "the module lists nothing"); },
         [&] {
             Require(ListBare(many) > 0, "the system lists nothing");
         }},
        {"Content of 1 GiB", 5, 1.1,
         [&, wide = Widened(big)] {
             Require(ReadThrough(local.Get(), wide) == fileSize, "the module reads another size");
         },
         [&] {
             Require(ReadBare(big) == fileSize, "the system reads another size");
         }},
    });
    return isWithin ? result : 1;
}
