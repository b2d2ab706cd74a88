#include "errors.h"

#include "json.h"
#include "output.h"
#include "text16.h"
#include "words.h"

#include <optional>

namespace tarnwell::host
{

namespace
{

struct PlainText
{
    HRESULT status;
    Word text;
};

const PlainText plainTexts[] = {
    {E_NOTIMPL, Word::NotOffered},
    {CLASS_E_CLASSNOTAVAILABLE, Word::ClassMissing},
    {E_NOINTERFACE, Word::InterfaceMissing},
    {E_OUTOFMEMORY, Word::OutOfMemory},
};

std::optional<Word> PlainTextOf(HRESULT status)
{
    for (const PlainText& row : plainTexts)
    {
        if (row.status == status)
            return row.text;
    }
    return std::nullopt;
}

} // namespace

Failure TakeFailure(HRESULT status)
{
    ComPtr<IErrorInfo> info;
    Bstr text;
    if (::GetErrorInfo(0, info.Out()) == S_OK && info)
        info->GetDescription(text.Out());
    if (text.View().empty())
        return {status, Say(PlainTextOf(status).value_or(Word::CallFailed))};
    return {status, std::u16string(text.View())};
}

Failure FailureOf(const client::Failure& failure)
{
    const std::optional<Word> plain = PlainTextOf(failure.Status());
    return {failure.Status(), plain ? Say(*plain) : FromUtf8(failure.what())};
}

Failure CopyCancelled()
{
    return {E_ABORT, Say(Word::CopyCancelled)};
}

void PrintFailure(const Failure& failure, bool json)
{
    const std::u16string status = Hex(static_cast<std::uint32_t>(failure.status));
    if (json)
    {
        PrintError(JsonObject().Text(u"status", status).Text(u"message", failure.message).Line());
        return;
    }
    PrintError(failure.message, Style::Error);
    PrintError(u"\n" + status + u"\n");
}

} // namespace tarnwell::host
