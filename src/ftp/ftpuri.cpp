#include "ftp/ftpuri.h"

#include "frame/exception.h"
#include "frame/messages.h"

namespace tarnwell
{

FTPUri::FTPUri(std::u16string text) : Uri(std::move(text))
{
    if (!HasScheme(u"ftp"))
        throw ComException(E_INVALIDARG,
                           FormatMessageById(MessageId::InvalidPerforceUri, {GetText()}),
                           At(ftpSource));
}

std::shared_ptr<Uri> FTPUri::Create(std::u16string text) const
{
    return std::make_shared<FTPUri>(std::move(text));
}

} // namespace tarnwell
