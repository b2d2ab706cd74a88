// What FTP's row has of each platform: a server that can be had there.
#pragma once

#include "backends/backend.h"

namespace tarnwell::test
{

std::unique_ptr<BackendData> MakeFtpData();
std::vector<std::u16string_view> NamesOnFtp();
std::vector<NotShown> NotShownOnFtp();

} // namespace tarnwell::test
