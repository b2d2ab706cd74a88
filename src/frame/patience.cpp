#include "frame/patience.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"

namespace tarnwell
{

void Patience::Ask()
{
    const auto now = std::chrono::steady_clock::now();
    if (progress_ == nullptr || now < next_)
        return;
    next_ = now + pause;
    VARIANT_BOOL keepGoing = VARIANT_TRUE;
    progress_->QueryContinue(&keepGoing);
    if (!IsTrue(keepGoing))
        throw ComException(E_ABORT, FormatMessageById(MessageId::OperationCancelled), At(source_));
}

} // namespace tarnwell
