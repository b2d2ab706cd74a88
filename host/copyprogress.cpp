#include "copyprogress.h"

#include "system.h"
#include "text16.h"

#include <tarnwell/implements.h>

#include <chrono>

namespace tarnwell::host
{

namespace
{

using Clock = std::chrono::steady_clock;

inline constexpr auto redrawEvery = std::chrono::milliseconds(100);
inline constexpr std::size_t barWidth = 20;
inline constexpr std::size_t blockWidth = 4;

// A block that runs from left to right, again and again.
std::u16string Bar(std::size_t step)
{
    std::u16string bar(barWidth, u' ');
    for (std::size_t i = 0; i < blockWidth; ++i)
        bar[(step + i) % barWidth] = u'#';
    return u"[" + bar + u"]";
}

class CopyProgress final : public Implements<ICopyProgress>
{
public:
    explicit CopyProgress(const std::u16string& what) : what_(what), shown_(ErrorsAreTerminal()) {}

    ~CopyProgress()
    {
        if (step_ > 0)
            WriteErrors("\r\x1b[K");
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        if (keepGoing == nullptr)
            return E_POINTER;
        *keepGoing = InterruptWatch::Interrupted() ? VARIANT_FALSE : VARIANT_TRUE;
        if (shown_ && Clock::now() - drawn_ >= redrawEvery)
            Draw();
        return S_OK;
    }

private:
    void Draw()
    {
        drawn_ = Clock::now();
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(drawn_ - start_);
        WriteErrors("\r" +
                    ToUtf8(Bar(step_++) + u" " + what_ + u", " + Signed(seconds.count()) + u" s"));
    }

    const std::u16string what_;
    const bool shown_;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point drawn_ = start_;
    std::size_t step_ = 0;
};

} // namespace

ComPtr<ICopyProgress> MakeCopyProgress(const std::u16string& what)
{
    return ComPtr<ICopyProgress>::Adopt(new CopyProgress(what));
}

} // namespace tarnwell::host
