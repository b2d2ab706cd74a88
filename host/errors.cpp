#include "errors.h"

#include "json.h"
#include "output.h"
#include "text16.h"

namespace tarnwell::host
{

namespace
{

struct PlainText
{
    HRESULT status;
    const char16_t* text;
};

const PlainText plainTexts[] = {
    {E_NOTIMPL, u"The file system doesn't offer this operation."},
    {CLASS_E_CLASSNOTAVAILABLE, u"The module doesn't make this file system."},
    {E_NOINTERFACE, u"The object doesn't have the interface that is needed."},
    {E_OUTOFMEMORY, u"Out of memory."},
};

std::u16string PlainTextOf(HRESULT status)
{
    for (const PlainText& row : plainTexts)
    {
        if (row.status == status)
            return row.text;
    }
    return u"The call failed.";
}

} // namespace

Failure TakeFailure(HRESULT status)
{
    ComPtr<IErrorInfo> info;
    Bstr text;
    if (::GetErrorInfo(0, info.Out()) == S_OK && info)
        info->GetDescription(text.Out());
    if (text.View().empty())
        return {status, PlainTextOf(status)};
    return {status, std::u16string(text.View())};
}

void PrintFailure(const Failure& failure, bool json)
{
    const std::u16string status = Hex(static_cast<std::uint32_t>(failure.status));
    if (json)
        PrintError(JsonObject().Text(u"status", status).Text(u"message", failure.message).Line());
    else
        PrintError(failure.message + u"\n" + status + u"\n");
}

} // namespace tarnwell::host
