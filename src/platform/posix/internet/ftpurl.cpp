#include "platform/posix/internet/ftpurl.h"

namespace tarnwell::posix
{
namespace
{

// All but what no server and no library takes for anything else.
std::string Encoded(std::string_view path)
{
    constexpr std::string_view plain = "/._-~";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char unit : path)
    {
        const auto byte = static_cast<unsigned char>(unit);
        const bool isAlphanumeric = (unit >= '0' && unit <= '9') || (unit >= 'A' && unit <= 'Z') ||
                                    (unit >= 'a' && unit <= 'z');
        if (isAlphanumeric || plain.find(unit) != std::string_view::npos)
            encoded += unit;
        else
            encoded.append({'%', digits[byte >> 4], digits[byte & 0xF]});
    }
    return encoded;
}

} // namespace

std::string FtpUrl(const FtpServerAddress& address, std::string_view path)
{
    const bool isNumeric6 = address.host.find(':') != std::string::npos && address.host[0] != '[';
    const std::string host = isNumeric6 ? "[" + address.host + "]" : address.host;
    // A first "/" would be that between host and path.
    const bool isAbsolute = path.starts_with('/');
    return "ftp://" + host + ":" + std::to_string(address.port) + "/" + (isAbsolute ? "%2F" : "") +
           Encoded(path.substr(isAbsolute ? 1 : 0));
}

} // namespace tarnwell::posix
