// Large content in Git.
#include "module/systemtest.h"
#include "support/clients.h"
#include "support/environmentvalue.h"
#include "support/repository.h"

#include <fstream>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

// Nothing but zeros and, at the start of each mebibyte, its number.
class Blob
{
public:
    static constexpr std::size_t piece = 1 << 20;
    static constexpr std::size_t pieces = 300;

    bool IsPiece(std::string_view bytes, std::size_t number) const
    {
        const std::string text = std::to_string(number);
        return bytes.size() == piece && bytes.starts_with(text) &&
               bytes.substr(text.size()) == std::string_view(zeros_).substr(text.size());
    }
    // With holes for the zeros.
    void Write(const std::u16string& path) const
    {
        std::ofstream file(fs::path(path), std::ios::binary);
        for (std::size_t i = 0; i < pieces; ++i)
            file.seekp(static_cast<std::streamoff>(i * piece)) << i;
        file.close();
        fs::resize_file(fs::path(path), pieces * piece);
    }

private:
    // At hand, so that comparing takes no memory while that is measured.
    const std::string zeros_ = std::string(piece, '\0');
};

// In KiB, by its name in /proc.
std::int64_t MemoryFact(const std::string& name)
{
    std::ifstream facts("/proc/self/status");
    for (std::string line; std::getline(facts, line);)
    {
        if (line.starts_with(name + ":"))
            return std::stoll(line.substr(name.size() + 1));
    }
    ADD_FAILURE() << "no " << name;
    return 0;
}

class GitContent : public SystemTest
{
protected:
    GitContent() : SystemTest(CLSID_GITFileSystem, WhyNoClients()) {}

    const Repository repository_;
    const TempFolder home_;
    const EnvironmentValue homeVariable_{"HOME", home_.Path().c_str()};
};

TEST_F(GitContent, OfAnySizePassesTheHostsMemoryBy)
{
    const Blob blob;
    blob.Write(repository_ / u"big");
    repository_.Git("-c core.bigFileThreshold=1m -c core.compression=1 add big");
    repository_.Git("commit -q -m big");
    std::string block(Blob::piece, '\0');
    // From here on the peak counts anew.
    std::ofstream("/proc/self/clear_refs") << 5;
    const std::int64_t before = MemoryFact("VmRSS");

    ComPtr<IFileStream> stream;
    ASSERT_THAT(Open(u"git://" + (repository_ / u"big"), stream), Succeeded());
    const auto bytes = stream.As<::ISequentialStream>();
    ULONG count = 0;
    for (std::size_t i = 0; i < Blob::pieces; ++i)
    {
        ASSERT_EQ(bytes->Read(block.data(), Blob::piece, &count), S_OK);
        ASSERT_TRUE(count == Blob::piece && blob.IsPiece(block, i)) << i;
    }
    EXPECT_EQ(bytes->Read(block.data(), Blob::piece, &count), S_OK);
    EXPECT_EQ(count, 0U);

    constexpr std::int64_t allowed = 32 * 1024; // KiB
    EXPECT_LT(MemoryFact("VmHWM") - before, allowed);
}

} // namespace
} // namespace tarnwell::test
