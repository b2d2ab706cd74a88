#include "client/svnrepository.h"

#include <cerrno>
#include <system_error>

namespace tarnwell::bench
{

namespace
{

std::string Property(const std::string& name, const std::string& value)
{
    return "K " + std::to_string(name.size()) + "\n" + name + "\nV " +
           std::to_string(value.size()) + "\n" + value + "\n";
}

constexpr const char* endOfProperties = "PROPS-END\n";

} // namespace

SvnImport::SvnImport(const std::string& folder)
{
    const std::string command = "svnadmin create '" + folder +
                                "' && exec svnadmin load -q --no-flush-to-disk '" + folder + "'";
    pipe_.reset(popen(command.c_str(), "w"));
    if (!pipe_)
        throw std::system_error(errno, std::generic_category(), "svnadmin");
    std::fputs("SVN-fs-dump-format-version: 2\n\n", pipe_.get());
}

void SvnImport::Commit(const std::string& message)
{
    const std::string properties = Property("svn:author", "somebody") +
                                   Property("svn:date", "2024-03-05T10:20:30.123456Z") +
                                   Property("svn:log", message) + endOfProperties;
    std::fprintf(pipe_.get(),
                 "Revision-number: %d\nProp-content-length: %zu\nContent-length: %zu\n\n%s\n",
                 ++revisions_, properties.size(), properties.size(), properties.c_str());
}

void SvnImport::AddFile(const std::string& name, const std::string& bytes)
{
    File(name, "add", bytes);
}

void SvnImport::ChangeFile(const std::string& name, const std::string& bytes)
{
    File(name, "change", bytes);
}

void SvnImport::File(const std::string& name, const char* action, const std::string& bytes)
{
    const std::string properties = endOfProperties;
    std::fprintf(pipe_.get(),
                 "Node-path: %s\nNode-kind: file\nNode-action: %s\nProp-content-length: %zu\n"
                 "Text-content-length: %zu\nContent-length: %zu\n\n%s",
                 name.c_str(), action, properties.size(), bytes.size(),
                 properties.size() + bytes.size(), properties.c_str());
    std::fwrite(bytes.data(), 1, bytes.size(), pipe_.get());
    std::fputs("\n\n", pipe_.get());
}

void SvnImport::Finish::operator()(std::FILE* pipe) const
{
    if (pclose(pipe) != 0)
        std::fputs("svnadmin load failed\n", stderr);
}

} // namespace tarnwell::bench
