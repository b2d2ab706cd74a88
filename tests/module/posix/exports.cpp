// The names that the library shows to the outside.
#include "support/loadedmodule.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::UnorderedElementsAre;

// The defined names in the library's dynamic symbol table, as the binary utilities list them: each
// with its version, and the version itself.
std::vector<std::string> ExportedNames(const std::string& file)
{
    const std::string command = "nm -D --defined-only --format=just-symbols '" + file + "'";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(popen(command.c_str(), "r"),
                                                                 pclose);
    std::vector<std::string> names;
    char line[512];
    while (output && std::fgets(line, sizeof line, output.get()) != nullptr)
    {
        const std::string name(line);
        names.push_back(name.substr(0, name.find('\n')));
    }
    return names;
}

TEST(Exports, AreTheEntryPointsAndTheTextAndErrorFunctions)
{
    EXPECT_THAT(ExportedNames(LoadedModule::DefaultFile().string()),
                UnorderedElementsAre("TARNWELL_1", "DllGetClassObject@@TARNWELL_1",
                                     "DllCanUnloadNow@@TARNWELL_1", "DllRegisterServer@@TARNWELL_1",
                                     "DllUnregisterServer@@TARNWELL_1",
                                     "SysAllocString@@TARNWELL_1", "SysAllocStringLen@@TARNWELL_1",
                                     "SysFreeString@@TARNWELL_1", "SysStringLen@@TARNWELL_1",
                                     "GetErrorInfo@@TARNWELL_1", "SetErrorInfo@@TARNWELL_1",
                                     "CreateErrorInfo@@TARNWELL_1"));
}

} // namespace

} // namespace tarnwell::test
