// The local file system against the system calls beneath it: listing a folder, reading a file,
// loading the module.
#include "frame/text.h"
#include "module/lifecycle.h"
#include "support/costs.h"
#include "support/files.h"
#include "support/folder.h"

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace tarnwell;
using namespace tarnwell::bench;

constexpr int fileCount = 100'000;
constexpr std::size_t fileSize = std::size_t{1} << 30;

// What is listed and read.
class Ground
{
public:
    Ground()
    {
        std::filesystem::create_directory(Many());
        for (int i = 0; i < fileCount; ++i)
            std::ofstream(Many() + "/file number " + std::to_string(i) + ".txt") << i;
        std::ofstream big(Big(), std::ios::binary);
        const std::vector<char> block(1 << 20, 'x');
        for (std::size_t written = 0; written < fileSize; written += block.size())
            big.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
    std::string Many() const
    {
        return folder_ / "many";
    }
    std::string Big() const
    {
        return folder_ / "big";
    }

private:
    const TempFolder folder_;
};

const Ground& TheGround()
{
    static const Ground ground;
    return ground;
}

ComPtr<IFileSystem> MakeLocal()
{
    ComPtr<::IClassFactory> factory;
    ComPtr<IFileSystem> system;
    if (FAILED(DllGetClassObject(CLSID_Win32FileSystem, IID_IClassFactory, factory.OutVoid())) ||
        FAILED(factory->CreateInstance(nullptr, IID_IFileSystem, system.OutVoid())))
        std::abort();
    return system;
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

std::uint64_t ListThroughModule(const std::string& path)
{
    const auto system = MakeLocal();
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    const std::u16string wide = Widened(path);
    if (FAILED(system->GetFolder(wide.c_str(), VARIANT_TRUE, folder.Out())) ||
        FAILED(folder->GetContents(contents.Out())))
        std::abort();
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

void ListingBare(benchmark::State& state)
{
    const std::string path = TheGround().Many();
    for (auto _ : state)
        benchmark::DoNotOptimize(ListBare(path));
}

void ListingThroughModule(benchmark::State& state)
{
    const std::string path = TheGround().Many();
    for (auto _ : state)
        benchmark::DoNotOptimize(ListThroughModule(path));
}

void ReadingBare(benchmark::State& state)
{
    std::vector<char> buffer(pieceSize);
    const std::string path = TheGround().Big();
    for (auto _ : state)
    {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        while (read(file, buffer.data(), buffer.size()) > 0)
        {
        }
        close(file);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
}

void ReadingThroughModule(benchmark::State& state)
{
    const auto system = MakeLocal();
    const std::u16string path = Widened(TheGround().Big());
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadThrough(system.Get(), path));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
}

// In a child each time, since a module that is loaded stays loaded.
void LoadingModule(benchmark::State& state)
{
    for (auto _ : state)
    {
        int ends[2];
        if (pipe(ends) != 0)
            std::abort();
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
        if (read(ends[0], &seconds, sizeof(seconds)) != sizeof(seconds))
            std::abort();
        close(ends[0]);
        waitpid(child, nullptr, 0);
        state.SetIterationTime(seconds);
    }
}

void ListingMemory(benchmark::State& state)
{
    const std::string path = TheGround().Many();
    for (auto _ : state)
    {
        const double idle = PeakOf([] { MakeLocal(); });
        const double busy = PeakOf([&] { ListThroughModule(path); });
        state.counters["bytes_per_entry"] = (busy - idle) / fileCount;
    }
}

BENCHMARK(ListingBare)->Unit(benchmark::kMillisecond);
BENCHMARK(ListingThroughModule)->Unit(benchmark::kMillisecond);
BENCHMARK(ListingMemory)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadingBare)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadingThroughModule)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadingModule)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    StartModule();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
