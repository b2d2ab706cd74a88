#include "copyprogress.h"

#include "noexcept.h"
#include "output.h"
#include "progressbar.h"
#include "system.h"
#include "text16.h"

#include <tarnwell/implements.h>

#include <algorithm>
#include <chrono>

namespace tarnwell::host
{

namespace
{

using Clock = std::chrono::steady_clock;

inline constexpr auto redrawEvery = std::chrono::milliseconds(100);

class CopyProgress final : public Implements<ICopyProgress>
{
public:
    explicit CopyProgress(const std::u16string& what)
        : what_(Masked(what, LineFeeds::Masked)), shown_(ErrorsAreTerminal())
    {
    }

    ~CopyProgress() override
    {
        if (step_ > 0)
            WriteErrors("\r\x1b[K");
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        if (keepGoing == nullptr)
            return E_POINTER;
        *keepGoing = InterruptWatch::Interrupted() ? VARIANT_FALSE : VARIANT_TRUE;
        // A copy doesn't end because its progress can't be shown.
        if (shown_ && Clock::now() - drawn_ >= redrawEvery)
            static_cast<void>(WithoutExceptions([&] {
                Draw();
                return S_OK;
            }));
        return S_OK;
    }

private:
    void Draw()
    {
        drawn_ = Clock::now();
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(drawn_ - start_);
        WriteErrors("\r" + ToUtf8(RunningBar(step_++) + u" " + what_ + u", " +
                                  Signed(seconds.count()) + u" s"));
    }

    const std::u16string what_;
    const bool shown_;
    const Clock::time_point start_ = Clock::now();
    Clock::time_point drawn_ = start_;
    std::size_t step_ = 0;
};

class BlockProgress final : public Implements<ICopyProgress>
{
public:
    BlockProgress(const std::u16string& what, std::uint64_t total, std::uint64_t blockSize)
        : bar_(what, total), total_(total), blockSize_(blockSize)
    {
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        if (keepGoing == nullptr)
            return E_POINTER;
        *keepGoing = InterruptWatch::Interrupted() ? VARIANT_FALSE : VARIANT_TRUE;
        bar_.Show(std::min(total_, ++blocks_ * blockSize_));
        return S_OK;
    }

private:
    ProgressBar bar_;
    const std::uint64_t total_;
    const std::uint64_t blockSize_;
    std::uint64_t blocks_ = 0;
};

} // namespace

ComPtr<ICopyProgress> MakeCopyProgress(const std::u16string& what)
{
    return ComPtr<ICopyProgress>::Adopt(new CopyProgress(what));
}

ComPtr<ICopyProgress> MakeBlockProgress(const std::u16string& what, std::uint64_t total,
                                        std::uint64_t blockSize)
{
    return ComPtr<ICopyProgress>::Adopt(new BlockProgress(what, total, blockSize));
}

} // namespace tarnwell::host
