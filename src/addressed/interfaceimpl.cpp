#include "addressed/interfaceimpl.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"

namespace tarnwell
{

void ThrowNotFound(const std::u16string& item, std::initializer_list<std::u16string> facts)
{
    std::u16string block;
    for (const std::u16string& fact : facts)
        block += (block.empty() ? u"\n[" : u"\n") + fact;
    if (!block.empty())
        block += u"]";
    throw ComException(StatusFromError(ERROR_FILE_NOT_FOUND),
                       FormatMessageById(MessageId::UriNotFound, {item}) + block,
                       At(u"interfaceimpl"));
}

void ThrowIfNotMade(HRESULT status)
{
    if (SUCCEEDED(status))
        return;
    throw ComException(status, FormatMessageWithStatus(MessageId::SupportObjectFailed, status),
                       At(u"interfaceimpl"));
}

} // namespace tarnwell
