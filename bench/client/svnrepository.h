// Subversion repositories for measuring.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace tarnwell::bench
{

// A new repository at `folder`, with revisions that the real program loads. It is complete when
// this object is gone.
class SvnImport
{
public:
    explicit SvnImport(const std::string& folder);

    // The next revision. What it adds or changes comes behind it.
    void Commit(const std::string& message);
    void AddFile(const std::string& name, const std::string& bytes);
    void ChangeFile(const std::string& name, const std::string& bytes);

private:
    void File(const std::string& name, const char* action, const std::string& bytes);

    struct Finish
    {
        void operator()(std::FILE* pipe) const;
    };
    std::unique_ptr<std::FILE, Finish> pipe_;
    int revisions_ = 0;
};

} // namespace tarnwell::bench
