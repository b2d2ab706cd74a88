// The output of another program.
#pragma once

#include <cstdio>
#include <string>

namespace tarnwell::host
{

inline std::string ReadAll(std::FILE* stream)
{
    std::string bytes;
    char buffer[4096];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, stream))
        bytes.append(buffer, got);
    return bytes;
}

} // namespace tarnwell::host
