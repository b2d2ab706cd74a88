#include "frame/amounts.h"

namespace tarnwell
{

Amounts::Amounts(ICopyProgress* progress)
{
    if (progress == nullptr)
        return;
    ComPtr<ICopyAmounts> found;
    // A host that refuses may leave anything behind, which is no reference then.
    if (FAILED(progress->QueryInterface(IidOf<ICopyAmounts>(), found.OutVoid())))
        static_cast<void>(found.Detach());
    host_ = std::move(found);
}

void Amounts::Report(std::uint64_t done, std::optional<std::uint64_t> total) const
{
    if (host_)
        host_->Report(done, total.value_or(AmountUnknown));
}

} // namespace tarnwell
