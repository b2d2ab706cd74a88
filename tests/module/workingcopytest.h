// A file system of working copies, asked as a host asks it.
#pragma once

#include "module/localtest.h"

namespace tarnwell::test
{

// What the getters of a revision say.
struct Revision
{
    std::u16string id, description, author, uri;
    std::uint64_t modified = 0; // FILETIME values
    std::uint64_t time = 0;
};

class WorkingCopyTest : public testing::Test
{
protected:
    explicit WorkingCopyTest(const GUID& classId);

    // The list and the answer, of calls that must succeed.
    std::vector<Revision> Revisions(const std::u16string& address) const;
    bool HasRevisions(const std::u16string& address) const;

    // The item, not looked for.
    ComPtr<IFile> File(const std::u16string& address) const;
    Outcome Open(const std::u16string& address, ComPtr<IFileStream>& stream) const;
    // What Open says where it must fail.
    Outcome FailedOpen(const std::u16string& address) const;
    std::string Content(const std::u16string& address) const;

    const ComPtr<IFileSystem> system_;
};

} // namespace tarnwell::test
