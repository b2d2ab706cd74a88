#include "frame/messages.h"

#include "platform/texts.h"

namespace tarnwell
{

std::u16string FormatMessageById(MessageId id, Inserts inserts)
{
    std::u16string text;
    std::u16string filled;
    if (LoadModuleText(static_cast<unsigned>(id), ChooseLanguage(WantedLanguage()), text))
        FillInserts(text, {inserts.begin(), inserts.size()}, filled);
    return filled;
}

std::u16string FormatMessageWithStatus(MessageId id, HRESULT status, Inserts inserts)
{
    std::u16string system;
    FindSystemText(static_cast<DWORD>(status), system);
    return FormatMessageById(MessageId::MessageWithStatus,
                             {FormatMessageById(id, inserts), system});
}

} // namespace tarnwell
