// The Perforce file system of the finished module, asked as a host asks it.
#pragma once

#include "module/systemtest.h"
#include "support/environmentvalue.h"
#include "support/perforcedepot.h"

namespace tarnwell::test
{

class PerforceTest : public SystemTest
{
protected:
    explicit PerforceTest(std::string whyNot = {});
    ~PerforceTest() override;

    // Where the module has its temporary files. Nothing may be left in it.
    const TempFolder temporary_;

private:
    const EnvironmentValue variable_{temporaryFolderVariable, temporary_.Path().string().c_str()};
};

// The same with a place on a server: the stand-in's, or that of a real one where there is one.
class PerforceServerTest : public PerforceTest
{
protected:
    const std::unique_ptr<PerforceServer> server_ = PerforceServer::Make();
};

// The same with a depot of the stand-in for the client, which has one file.
class PerforceClientTest : public PerforceTest
{
protected:
    // `why` no real client serves.
    explicit PerforceClientTest(const char* why);

    // Makes the command ("*": all) fail in one of the stand-in's ways.
    void Fail(const std::string& command, const std::string& way);
    // That `outcome` is message 129 for `of` and the client's words.
    void ExpectFailed(const Outcome& outcome, HRESULT status, const std::u16string& of,
                      const std::u16string& words) const;

    const std::u16string folder_ = u"p4:////depot/base";
    const std::u16string address_ = folder_ + u"/a.txt";
    PerforceDepot depot_;
};

// The file that a run of "print" was told to write.
std::string TargetOf(const std::string& run);

// Message 129 for `address` and the client's words.
std::u16string P4Failed(const std::u16string& address, const std::u16string& words);

} // namespace tarnwell::test
