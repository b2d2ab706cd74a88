// A Git repository that is made quickly, by the real client.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace tarnwell::bench
{

// A new Git repository at `folder`, with commits on its branch "main". It is complete when this
// object is gone.
class GitImport
{
public:
    explicit GitImport(const std::string& folder);

    // The next commit. Files come behind it.
    void Commit(const std::string& subject);
    void File(const std::string& name, const std::string& bytes);
    void Rename(const std::string& from, const std::string& to);

private:
    void Data(const std::string& bytes);

    struct Finish
    {
        void operator()(std::FILE* pipe) const;
    };
    std::unique_ptr<std::FILE, Finish> pipe_;
    int commits_ = 0;
};

} // namespace tarnwell::bench
