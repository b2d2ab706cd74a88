// A file system of working copies in the finished module, on what real clients made.
#pragma once

#include "module/localtest.h"
#include "support/clients.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

struct Revision
{
    std::u16string id, description, author, uri;
    std::uint64_t modified = 0; // FILETIME values
    std::uint64_t time = 0;
};

std::u16string Widened(const std::string& ascii);

class WorkingCopyTest : public ClientTest
{
protected:
    explicit WorkingCopyTest(const GUID& systemClass);

    std::vector<Revision> Revisions(const std::u16string& address) const;
    bool HasRevisions(const std::u16string& address) const;

    ComPtr<IFile> File(const std::u16string& address) const;
    Outcome Open(const std::u16string& address, ComPtr<IFileStream>& stream) const;
    // What Open says where it must fail.
    Outcome FailedOpen(const std::u16string& address) const;
    std::string Content(const std::u16string& address) const;

    const ComPtr<IFileSystem> system;
};

} // namespace tarnwell::test
