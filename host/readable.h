// Times and sizes for readers.
#pragma once

#include <cstdint>
#include <string>

namespace tarnwell::host
{

// "2026-03-01T12:00:00.1234567Z", from 100-nanosecond intervals since 1 January 1601 UTC.
std::u16string IsoTime(std::uint64_t fileTime);

// "2026-03-01 12:00:00Z", and "-" for 0, which stands for an unknown time.
std::u16string ReadableTime(std::uint64_t fileTime);

// "812 B", "1.4 KiB", "23.0 MiB".
std::u16string ReadableSize(std::uint64_t bytes);

} // namespace tarnwell::host
