// What the user sees of bytes on their way.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tarnwell::host
{

// "[#####               ]  25 %, 1.0 MiB, 512.0 KiB/s, WHAT". Without a total there is no
// percentage, and a block runs from left to right with each `step`.
std::u16string ProgressLine(const std::u16string& what, std::uint64_t bytes,
                            std::optional<std::uint64_t> total, std::chrono::milliseconds elapsed,
                            std::size_t step);

// The line on standard error, if that is a terminal, for as long as this lives.
class ProgressBar
{
public:
    ProgressBar(const std::u16string& what, std::optional<std::uint64_t> total);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    // So many bytes have arrived, of `total` if that has become known. Redraws now and then only.
    void Show(std::uint64_t bytes);
    void Show(std::uint64_t bytes, std::optional<std::uint64_t> total);

private:
    using Clock = std::chrono::steady_clock;

    const std::u16string what_;
    std::optional<std::uint64_t> total_;
    const bool shown_;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point drawn_ = start_;
    std::size_t step_ = 0;
};

} // namespace tarnwell::host
