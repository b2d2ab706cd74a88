#include "support/errorinfo.h"

#include <tarnwell/pointers.h>

namespace tarnwell::test
{

std::optional<PublishedError> TakeError()
{
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.Out()) != S_OK)
        return std::nullopt;
    PublishedError error;
    Bstr source;
    Bstr text;
    info->GetGUID(&error.interfaceId);
    info->GetSource(source.Out());
    info->GetDescription(text.Out());
    error.source = source.View();
    error.text = text.View();
    return error;
}

std::u16string TakeErrorText()
{
    const std::optional<PublishedError> error = TakeError();
    return error ? error->text : u"(none)";
}

void ClearError()
{
    SetErrorInfo(0, nullptr);
}

std::u16string WithoutLine(std::u16string text)
{
    const std::size_t at = text.rfind(u'@');
    if (at == std::u16string::npos || !text.ends_with(u']') || at + 2 >= text.size() ||
        text.find_first_not_of(u"0123456789", at + 1) != text.size() - 1)
        return text;
    return text.substr(0, at + 1) + u"N]";
}

std::u16string WithLineFeeds(std::u16string text)
{
    std::erase(text, u'\r');
    return text;
}

} // namespace tarnwell::test
