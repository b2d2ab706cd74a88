// The Subversion file system on real repositories, asked as a host asks it.
#pragma once

#include "module/workingcopytest.h"
#include "support/components.h"
#include "support/environmentvalue.h"
#include "support/svnrepository.h"

namespace tarnwell::test
{

class SvnTest : public WorkingCopyTest
{
protected:
    SvnTest();
    ~SvnTest() override;

    // The folder, not looked for.
    ComPtr<IFolder> Folder(const std::u16string& address) const;
    // The items of a folder that can be read.
    std::vector<Facts> List(const std::u16string& address) const;
    Outcome FailedList(const std::u16string& address) const;
    // The facts of an item that was named, which the client is asked for.
    Facts FileFacts(const std::u16string& address) const;

    const ComPtr<FakeHost> host_ = FakeHost::Make();

private:
    const Components components_;
    // The client keeps what it was told by servers.
    const TempFolder home_;
    const EnvironmentValue homeVariable_{"HOME", home_.Path().string().c_str()};
    // What the client needs to understand names beyond ASCII.
    const EnvironmentValue locale_{"LC_ALL", "C.UTF-8"};
};

// Message 153 or 159 for `address` and the client's words, as far as they are given.
std::u16string AccessFailed(const std::u16string& address, const std::u16string& words);

} // namespace tarnwell::test
