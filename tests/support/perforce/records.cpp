#include "support/perforce/records.h"

#include <cstdint>

namespace tarnwell::test::perforce
{

namespace
{

std::string Number(std::uint32_t number)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

std::string Text(const std::string& text)
{
    return "s" + Number(static_cast<std::uint32_t>(text.size())) + text;
}

} // namespace

std::string Marshalled(const std::string& code, const Fields& fields)
{
    std::string bytes = "{" + Text("code") + Text(code);
    for (const auto& [name, value] : fields)
        bytes += Text(name) + Text(value);
    return bytes + "0";
}

std::string Complaint(int severity, int generic, const std::string& words)
{
    std::string bytes = "{" + Text("code") + Text("error") + Text("data") + Text(words);
    bytes += Text("severity") + "i" + Number(static_cast<std::uint32_t>(severity));
    bytes += Text("generic") + "i" + Number(static_cast<std::uint32_t>(generic));
    return bytes + "0";
}

} // namespace tarnwell::test::perforce
