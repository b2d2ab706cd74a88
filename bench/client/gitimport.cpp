#include "client/gitimport.h"

#include <cerrno>
#include <system_error>

namespace tarnwell::bench
{

namespace
{

// Without packing, which takes long and would slow the client that is measured.
constexpr const char* setUp = " -c core.compression=0";

} // namespace

GitImport::GitImport(const std::string& folder)
{
    const std::string command = "git init -q -b main '" + folder + "' && git -C '" + folder + "'" +
                                setUp + " fast-import --quiet";
    pipe_.reset(popen(command.c_str(), "w"));
    if (!pipe_)
        throw std::system_error(errno, std::generic_category(), "git");
}

void GitImport::Commit(const std::string& subject)
{
    constexpr int firstTime = 1'700'000'000; // seconds
    std::fprintf(pipe_.get(),
                 "commit refs/heads/main\ncommitter Ann Example <ann@example.org> %d +0000\n",
                 firstTime + commits_);
    Data(subject);
    ++commits_;
}

void GitImport::File(const std::string& name, const std::string& bytes)
{
    std::fprintf(pipe_.get(), "M 100644 inline %s\n", name.c_str());
    Data(bytes);
}

void GitImport::Rename(const std::string& from, const std::string& to)
{
    std::fprintf(pipe_.get(), "R %s %s\n", from.c_str(), to.c_str());
}

void GitImport::Data(const std::string& bytes)
{
    std::fprintf(pipe_.get(), "data %zu\n", bytes.size());
    std::fwrite(bytes.data(), 1, bytes.size(), pipe_.get());
    std::fputc('\n', pipe_.get());
}

void GitImport::Finish::operator()(std::FILE* pipe) const
{
    pclose(pipe);
}

} // namespace tarnwell::bench
