// What the module's file shows to the outside: names, and its texts in two languages.
#include "support/loadedmodule.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tarnwell::test
{

namespace
{

using testing::UnorderedElementsAre;

// The names in the export directory of a loaded module.
std::vector<std::string> ExportedNames(HMODULE module)
{
    const auto* const base = reinterpret_cast<const std::byte*>(module);
    const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
    const IMAGE_DATA_DIRECTORY& place =
        headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto& exports =
        *reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + place.VirtualAddress);
    const auto* const offsets = reinterpret_cast<const DWORD*>(base + exports.AddressOfNames);
    std::vector<std::string> names;
    for (DWORD i = 0; i < exports.NumberOfNames; ++i)
        names.emplace_back(reinterpret_cast<const char*>(base + offsets[i]));
    // None without a name.
    EXPECT_EQ(exports.NumberOfFunctions, exports.NumberOfNames);
    return names;
}

TEST(Exports, AreTheFourEntryPoints)
{
    const HMODULE module = LoadLibraryW(LoadedModule::DefaultFile().c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_THAT(ExportedNames(module),
                UnorderedElementsAre("DllGetClassObject", "DllCanUnloadNow", "DllRegisterServer",
                                     "DllUnregisterServer"));
}

TEST(Exports, TextsAreInTheModulesFile)
{
    const HMODULE module = LoadLibraryW(LoadedModule::DefaultFile().c_str());
    ASSERT_NE(module, nullptr);
    for (const WORD language : {WORD{2057}, WORD{1041}})
    {
        for (WORD block = 7; block <= 11; ++block)
        {
            EXPECT_NE(FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block), language),
                      nullptr)
                << language << " " << block;
        }
    }
}

} // namespace

} // namespace tarnwell::test
