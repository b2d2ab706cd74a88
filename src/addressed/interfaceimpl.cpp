#include "addressed/interfaceimpl.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/status.h"
#include "frame/text.h"

namespace tarnwell
{

void ThrowNotFound(const Uri& uri, bool wantFolder, bool existed, bool isDirectory)
{
    std::u16string text = FormatMessageById(MessageId::UriNotFound, {uri.GetPath()});
    text += u"\n[uri: \"" + uri.GetText() + u"\"\n";
    text += wantFolder ? u"FolderObject::Initialize\n" : u"FileObject::Initialize\n";
    text += u"existed: " + Decimal(existed) + u"\n";
    text += u"isDirectory: " + Decimal(isDirectory) + u"]";
    throw ComException(StatusFromError(ERROR_FILE_NOT_FOUND), text, At(u"interfaceimpl"));
}

void ThrowIfNotMade(HRESULT status)
{
    if (SUCCEEDED(status))
        return;
    throw ComException(status, FormatMessageWithStatus(MessageId::SupportObjectFailed, status),
                       At(u"interfaceimpl"));
}

} // namespace tarnwell
