#include "copyprogress.h"

#include "noexcept.h"
#include "progressbar.h"
#include "system.h"

#include <tarnwell/constants.h>
#include <tarnwell/implements.h>

namespace tarnwell::host
{

namespace
{

class CopyProgress final : public Implements<ICopyProgress, ICopyAmounts>
{
public:
    explicit CopyProgress(const std::u16string& what) : bar_(what, std::nullopt) {}

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        if (keepGoing == nullptr)
            return E_POINTER;
        *keepGoing = InterruptWatch::Interrupted() ? VARIANT_FALSE : VARIANT_TRUE;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Report(std::uint64_t done, std::uint64_t total) override
    {
        // A copy doesn't end because its progress can't be shown.
        return WithoutExceptions([&] {
            // Some files hold more than they say, as those that the system makes up.
            bar_.Show(done,
                      done > total || total == AmountUnknown ? std::nullopt : std::optional(total));
            return S_OK;
        });
    }

private:
    ProgressBar bar_;
};

} // namespace

ComPtr<ICopyProgress> MakeCopyProgress(const std::u16string& what)
{
    return ComPtr<ICopyProgress>::Adopt(new CopyProgress(what));
}

} // namespace tarnwell::host
