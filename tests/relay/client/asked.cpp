#include "relay/client/asked.h"

#include <tarnwell/text.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <windows.h>

namespace tarnwell::relay
{

namespace
{

std::string Utf8(std::wstring_view text)
{
    return EncodeName({reinterpret_cast<const char16_t*>(text.data()), text.size()}).value();
}

std::filesystem::path ThisProgram()
{
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size())));
    return file;
}

std::size_t SizeOfInput()
{
    std::size_t size = 0;
    char block[4096];
    DWORD count = 0;
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), block, sizeof block, &count, nullptr) &&
           count > 0)
        size += count;
    return size;
}

} // namespace

std::vector<std::string> Environment()
{
    std::vector<std::string> entries;
    wchar_t* const block = GetEnvironmentStringsW();
    for (std::wstring_view entry(block); !entry.empty();
         entry = std::wstring_view(entry.data() + entry.size() + 1))
        entries.push_back(Utf8(entry));
    FreeEnvironmentStringsW(block);
    return entries;
}

Asked AskedOf(wchar_t** arguments)
{
    Asked asked;
    asked.commandLine = Utf8(GetCommandLineW());
    asked.client.push_back(Utf8(ThisProgram().stem().wstring()));
    while (*++arguments != nullptr)
        asked.client.push_back(Utf8(*arguments));
    asked.folder = Utf8(std::filesystem::current_path().wstring());
    asked.environment = Environment();
    return asked;
}

std::string ValueOf(const Asked& asked, const std::string& name)
{
    for (const std::string& entry : asked.environment)
    {
        if (entry.starts_with(name + "="))
            return entry.substr(name.size() + 1);
    }
    return {};
}

void Record(const Asked& asked, const std::string& file)
{
    std::ofstream record(std::filesystem::path(DecodeName(file)), std::ios::binary);
    const auto write = [&](const std::string& text) {
        record << text << '\0';
    };
    write(asked.commandLine);
    write(asked.folder);
    write(std::to_string(SizeOfInput()));
    for (const std::string& entry : asked.environment)
        write(entry);
}

} // namespace tarnwell::relay
