// Which proxy an FTP server is reached through, by the platform's lists. It asks nobody.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell::posix
{

// From "http=a:1;ftp=b:2 c:3": the first entry for FTP, else the first plain one, as "host:port" or
// with a scheme in front. Empty if there is none.
std::string ProxyForFtp(std::string_view list);

// Whether `host` is in a bypass list: names and addresses with `*` for any part, `<local>` for
// names without a dot; separated by semicolons or blanks.
bool IsBypassed(std::string_view host, std::string_view list);

} // namespace tarnwell::posix
