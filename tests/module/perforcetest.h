// The Perforce file system of the finished module, asked as a host asks it.
#pragma once

#include "module/systemtest.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{

class PerforceTest : public SystemTest
{
protected:
    PerforceTest();
    ~PerforceTest() override;

    // Where the module has its temporary files. Nothing may be left in it.
    const TempFolder temporary_;

private:
    const EnvironmentValue variable_{temporaryFolderVariable, temporary_.Path().string().c_str()};
};

// Message 129 for `address` and the client's words.
std::u16string P4Failed(const std::u16string& address, const std::u16string& words);

} // namespace tarnwell::test
