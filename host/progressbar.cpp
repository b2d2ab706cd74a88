#include "progressbar.h"

#include "output.h"
#include "readable.h"
#include "system.h"
#include "text16.h"

#include <algorithm>

namespace tarnwell::host
{

namespace
{

inline constexpr auto redrawEvery = std::chrono::milliseconds(100);
inline constexpr std::size_t barWidth = 20;
inline constexpr std::size_t blockWidth = 4;

// What has arrived of `total`, in so many parts. A file may turn out longer than it was.
std::uint64_t PartsOf(std::uint64_t bytes, std::uint64_t total, std::uint64_t parts)
{
    if (bytes >= total)
        return parts;
    return static_cast<std::uint64_t>(static_cast<double>(bytes) / static_cast<double>(total) *
                                      static_cast<double>(parts));
}

// A block in a bar of the width of all bars.
std::u16string RunningBar(std::size_t step)
{
    std::u16string bar(barWidth, u' ');
    for (std::size_t i = 0; i < blockWidth; ++i)
        bar[(step + i) % barWidth] = u'#';
    return u"[" + bar + u"]";
}

std::u16string FilledBar(std::uint64_t filled)
{
    std::u16string bar(barWidth, u' ');
    std::fill_n(bar.begin(), filled, u'#');
    return u"[" + bar + u"]";
}

std::u16string Percent(std::uint64_t percent)
{
    std::u16string text = Signed(static_cast<std::int64_t>(percent));
    text.insert(0, 3 - text.size(), u' ');
    return u" " + text + u" %,";
}

} // namespace

std::u16string ProgressLine(const std::u16string& what, std::uint64_t bytes,
                            std::optional<std::uint64_t> total, std::chrono::milliseconds elapsed,
                            std::size_t step)
{
    const double seconds = std::max(static_cast<double>(elapsed.count()) / 1000, 0.001);
    const auto rate = static_cast<std::uint64_t>(static_cast<double>(bytes) / seconds);
    std::u16string line =
        total ? FilledBar(PartsOf(bytes, *total, barWidth)) + Percent(PartsOf(bytes, *total, 100))
              : RunningBar(step);
    return line + u" " + ReadableSize(bytes) + u", " + ReadableSize(rate) + u"/s, " + what;
}

ProgressBar::ProgressBar(const std::u16string& what, std::optional<std::uint64_t> total)
    : what_(Masked(what, LineFeeds::Masked)), total_(total), shown_(ErrorsAreTerminal())
{
}

ProgressBar::~ProgressBar()
{
    if (step_ > 0)
        WriteErrors("\r\x1b[K");
}

void ProgressBar::Show(std::uint64_t bytes, std::optional<std::uint64_t> total)
{
    total_ = total;
    Show(bytes);
}

void ProgressBar::Show(std::uint64_t bytes)
{
    const Clock::time_point now = Clock::now();
    if (!shown_ || now - drawn_ < redrawEvery)
        return;
    drawn_ = now;
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(now - start_);
    WriteErrors("\r\x1b[K" + ToUtf8(ProgressLine(what_, bytes, total_, elapsed, step_++)));
}

} // namespace tarnwell::host
