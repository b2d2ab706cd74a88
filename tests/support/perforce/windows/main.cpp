#include "support/perforce/commands.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <io.h>
#include <windows.h>

namespace
{

std::string Utf8(const wchar_t* text)
{
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

} // namespace

void tarnwell::test::perforce::PrintBytesFromNowOn()
{
    _setmode(1, _O_BINARY);
}

int wmain(int count, wchar_t** texts)
{
    const wchar_t* const folder = _wgetenv(L"TARNWELL_DEPOT");
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Utf8(texts[i]));
    // As it arrived.
    std::ofstream(std::filesystem::path(folder == nullptr ? L"." : folder) / "commandline",
                  std::ios::binary)
        << Utf8(GetCommandLineW());
    return tarnwell::test::perforce::Run(arguments, folder == nullptr ? L"." : folder);
}
