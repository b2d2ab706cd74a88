#include "support/perforce/commands.h"

#include <cstdlib>

namespace
{

std::string Utf8(const wchar_t* text)
{
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

} // namespace

int wmain(int count, wchar_t** texts)
{
    const wchar_t* const folder = _wgetenv(L"TARNWELL_DEPOT");
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Utf8(texts[i]));
    return tarnwell::test::perforce::Run(arguments, folder == nullptr ? L"." : folder);
}
