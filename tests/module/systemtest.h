// One file system of the finished module, asked as a host asks it.
#pragma once

#include "module/objects.h"
#include "support/components.h"
#include "support/fakehost.h"
#include "support/revisionfacts.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tarnwell::test
{

std::u16string Widened(const std::string& ascii);

class SystemTest : public testing::Test
{
protected:
    // `whyNot` is empty, or why the tests are skipped.
    SystemTest(const GUID& systemClass, std::string whyNot);
    // Everything that is made here must be gone by then: the host object is let go of.
    ~SystemTest() override;

    void SetUp() override;

    // Items of addresses, not looked for.
    ComPtr<IFile> File(const std::u16string& address) const;
    ComPtr<IFolder> Folder(const std::u16string& address) const;

    ComPtr<IFolderContents> Contents(const std::u16string& address) const;
    // The items of a folder that can be read.
    std::vector<Facts> List(const std::u16string& address) const;
    Outcome FailedList(const std::u16string& address) const;
    // The facts of an item that was named.
    Facts FileFacts(const std::u16string& address) const;

    Outcome Open(const std::u16string& address, ComPtr<IFileStream>& stream) const;
    // What Open says where it must fail.
    Outcome FailedOpen(const std::u16string& address) const;
    std::string Content(const std::u16string& address) const;

    ComPtr<IRevisions> RevisionsOf(const std::u16string& address) const;
    std::vector<Revision> Revisions(const std::u16string& address) const;
    bool HasRevisions(const std::u16string& address) const;

private:
    const Components components_;
    const std::string whyNot_;

protected:
    const ComPtr<FakeHost> host_ = FakeHost::Make();
    ComPtr<IFileSystem> system;
};

} // namespace tarnwell::test
