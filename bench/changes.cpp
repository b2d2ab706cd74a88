// Copying and deleting through the module, against the programs that do the same. Each pair starts
// from the same state, which is made anew for each round and not counted.
#include "module/lifecycle.h"

#include <tarnwell/pointers.h>
#include <tarnwell/tarnwell.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace tarnwell;

namespace fs = std::filesystem;

constexpr int smallFiles = 10'000;
constexpr int treeFolders = 1'000;
constexpr int filesAFolder = 100;
constexpr std::size_t bigSize = std::size_t{1} << 30;

// A folder of its own that goes away with the program.
class Ground
{
public:
    Ground()
    {
        std::string name = fs::temp_directory_path() / "tarnwell-bench-XXXXXX";
        path_ = mkdtemp(name.data());
        std::ofstream big(Big(), std::ios::binary);
        const std::vector<char> block(1 << 20, 'x');
        for (std::size_t written = 0; written < bigSize; written += block.size())
            big.write(block.data(), static_cast<std::streamsize>(block.size()));
        fs::create_directory(Small());
        for (int i = 0; i < smallFiles; ++i)
            std::ofstream(Small() / ("small file " + std::to_string(i))) << "content " << i;
    }
    ~Ground()
    {
        fs::remove_all(path_);
    }
    fs::path Big() const
    {
        return path_ / "big";
    }
    fs::path Small() const
    {
        return path_ / "small";
    }
    fs::path Target() const
    {
        return path_ / "target";
    }
    void MakeTree() const
    {
        for (int i = 0; i < treeFolders; ++i)
        {
            const fs::path folder = Target() / std::to_string(i % 10) / std::to_string(i);
            fs::create_directories(folder);
            for (int j = 0; j < filesAFolder; ++j)
                std::ofstream(folder / ("file " + std::to_string(j))) << j;
        }
    }

private:
    fs::path path_;
};

const Ground& TheGround()
{
    static const Ground ground;
    return ground;
}

void Check(bool done)
{
    if (!done)
        std::abort();
}

class GoOn final : public ICopyProgress
{
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override
    {
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return 1;
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        return 1;
    }
    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        *keepGoing = VARIANT_TRUE;
        return S_OK;
    }
};

ComPtr<IFileSystem> MakeLocal()
{
    ComPtr<::IClassFactory> factory;
    ComPtr<IFileSystem> system;
    Check(
        SUCCEEDED(DllGetClassObject(CLSID_Win32FileSystem, IID_IClassFactory, factory.OutVoid())));
    Check(SUCCEEDED(factory->CreateInstance(nullptr, IID_IFileSystem, system.OutVoid())));
    return system;
}

void Copy(IFileSystem& system, const fs::path& source, const fs::path& target)
{
    GoOn progress;
    Check(system.CopyItem(source.u16string().c_str(), target.u16string().c_str(), &progress) ==
          S_OK);
}

void Run(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = -1;
    Check(posix_spawnp(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) == 0);
    int status = -1;
    Check(waitpid(child, &status, 0) == child && status == 0);
}

void Measure(benchmark::State& state, const std::function<void()>& prepare,
             const std::function<void()>& act)
{
    for (auto _ : state)
    {
        fs::remove_all(TheGround().Target());
        prepare();
        const auto before = std::chrono::steady_clock::now();
        act();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - before;
        state.SetIterationTime(took.count());
    }
    fs::remove_all(TheGround().Target());
}

void Nothing() {}

void CopyingBigBare(benchmark::State& state)
{
    Measure(state, Nothing, [] {
        Run({"cp", "--reflink=auto", TheGround().Big().string(), TheGround().Target().string()});
    });
}

void CopyingBigThroughModule(benchmark::State& state)
{
    const auto system = MakeLocal();
    Measure(state, Nothing, [&] { Copy(*system.Get(), TheGround().Big(), TheGround().Target()); });
}

void CopyingSmallBare(benchmark::State& state)
{
    Measure(state, Nothing, [] {
        Run({"cp", "-r", TheGround().Small().string(), TheGround().Target().string()});
    });
}

// One call each, as a host does it.
void CopyingSmallThroughModule(benchmark::State& state)
{
    const auto system = MakeLocal();
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TheGround().Small()))
        names.push_back(entry.path().filename().string());
    Measure(
        state, [] { fs::create_directory(TheGround().Target()); },
        [&] {
            for (const std::string& name : names)
                Copy(*system.Get(), TheGround().Small() / name, TheGround().Target() / name);
        });
}

void DeletingTreeBare(benchmark::State& state)
{
    Measure(
        state, [] { TheGround().MakeTree(); },
        [] {
            Run({"rm", "-r", TheGround().Target().string()});
        });
}

void DeletingTreeThroughModule(benchmark::State& state)
{
    const auto system = MakeLocal();
    Measure(
        state, [] { TheGround().MakeTree(); },
        [&] {
            ComPtr<IFolder> folder;
            Check(system->GetFolder(TheGround().Target().u16string().c_str(), VARIANT_TRUE,
                                    folder.Out()) == S_OK);
            Check(folder.As<IFileSystemItem>()->Delete(VARIANT_TRUE, VARIANT_TRUE) == S_OK);
        });
}

void Register(const char* name, void (*function)(benchmark::State&), int rounds)
{
    benchmark::RegisterBenchmark(name, function)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(rounds)
        ->ReportAggregatesOnly()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv)
{
    StartModule();
    Register("CopyingBigBare", CopyingBigBare, 15);
    Register("CopyingBigThroughModule", CopyingBigThroughModule, 15);
    Register("CopyingSmallBare", CopyingSmallBare, 15);
    Register("CopyingSmallThroughModule", CopyingSmallThroughModule, 15);
    Register("DeletingTreeBare", DeletingTreeBare, 7);
    Register("DeletingTreeThroughModule", DeletingTreeThroughModule, 7);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
