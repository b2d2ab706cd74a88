#include "frame/unixtime.h"

#include <charconv>

namespace tarnwell
{

namespace
{

constexpr std::int64_t startOfUnixTime = 11644473600; // in seconds
constexpr std::int64_t ticksOfSecond = 10'000'000;

} // namespace

std::uint64_t FileTimeOfSeconds(std::string_view text)
{
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    constexpr std::int64_t last = INT64_MAX / ticksOfSecond - startOfUnixTime;
    if (error != std::errc() || end != text.data() + text.size() || seconds < -startOfUnixTime ||
        seconds > last)
        return 0;
    return static_cast<std::uint64_t>((seconds + startOfUnixTime) * ticksOfSecond);
}

std::int64_t SecondsOf(std::uint64_t fileTime)
{
    return static_cast<std::int64_t>(fileTime / ticksOfSecond) - startOfUnixTime;
}

} // namespace tarnwell
