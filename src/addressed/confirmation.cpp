#include "addressed/confirmation.h"

#include "frame/hostuser.h"
#include "frame/messages.h"
#include "platform/wide.h"

namespace tarnwell
{

namespace
{

bool Ask(::IUnknown* host, const std::u16string& question)
{
    const auto window = ComPtr<::IUnknown>::Share(host).As<IHostWindow>();
    const std::u16string caption = FormatMessageById(MessageId::ConfirmationCaption);
    return MessageBoxW(OwnerWindow(window.Get()), Wide(question), Wide(caption),
                       MB_YESNOCANCEL | MB_ICONINFORMATION) == IDYES;
}

} // namespace

bool ConfirmDeletionOfItem(::IUnknown* host, const std::u16string& item)
{
    return Ask(host, FormatMessageById(MessageId::ConfirmDeleteItem, {item}));
}

bool ConfirmDeletionOfItems(::IUnknown* host)
{
    return Ask(host, FormatMessageById(MessageId::ConfirmDeleteItems));
}

} // namespace tarnwell
