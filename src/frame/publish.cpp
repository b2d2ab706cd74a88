#include "frame/publish.h"

#include "frame/status.h"
#include "frame/text.h"

#include <tarnwell/pointers.h>

namespace tarnwell
{

namespace
{

// The position as it stands in texts, without brackets.
std::u16string PositionText(const char16_t* file, std::uint32_t line)
{
    return std::u16string(file) + u"@" + Decimal(line);
}

// The platform's setters ask for writable text and don't write to it.
LPOLESTR Writable(const std::u16string& text)
{
    return const_cast<LPOLESTR>(Wide(text));
}

// As a rule this fails and the error has no source, since the module writes no class keys.
void SetSource(ICreateErrorInfo* info, const GUID& classId)
{
    LPOLESTR source = nullptr;
    if (SUCCEEDED(ProgIDFromCLSID(classId, &source)))
        info->SetSource(source);
    CoTaskMemFree(source);
}

// The text that `object` left behind, if it says that it does so for this interface.
std::u16string TextLeftBy(::IUnknown* object, const GUID& interfaceId)
{
    const auto support = ComPtr<::IUnknown>::Share(object).As<ISupportErrorInfo>();
    if (!support || support->InterfaceSupportsErrorInfo(interfaceId) != S_OK)
        return {};
    ComPtr<IErrorInfo> info;
    Bstr description;
    if (GetErrorInfo(0, info.Out()) != S_OK || FAILED(info->GetDescription(description.Out())))
        return {};
    return std::u16string(description.View());
}

std::u16string FullText(const ComException& exception)
{
    if (exception.file == nullptr)
        return exception.message;
    return exception.message + u" [" + PositionText(exception.file, exception.line) + u"]";
}

// Publishes what `makeText` gives. Where memory is too short for it, the status is what matters.
template <class MakeText>
HRESULT PublishText(const Reporter& reporter, HRESULT status, MakeText&& makeText) noexcept
{
    try
    {
        return PublishError(reporter.classId, makeText(), reporter.interfaceId, status);
    }
    catch (...)
    {
        return EnsureFailed(status);
    }
}

} // namespace

HRESULT PublishError(const GUID& classId, const std::u16string& text, const GUID& interfaceId,
                     HRESULT status) noexcept
{
    ComPtr<ICreateErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(info.Out())))
    {
        info->SetGUID(interfaceId);
        SetSource(info.Get(), classId);
        info->SetDescription(Writable(text));
        if (const auto finished = info.As<IErrorInfo>())
            SetErrorInfo(0, finished.Get());
    }
    return status == S_OK ? DISP_E_EXCEPTION : status;
}

HRESULT PublishException(const ComException& exception, const GUID& classId,
                         const GUID& interfaceId) noexcept
{
    const auto status = static_cast<HRESULT>(exception.code);
    if (exception.message.empty() && exception.file == nullptr)
        return EnsureFailed(status);
    return PublishText({classId, interfaceId}, status, [&] { return FullText(exception); });
}

HRESULT PublishMessage(const Reporter& reporter, MessageId id, HRESULT status,
                       Inserts inserts) noexcept
{
    return PublishText(reporter, status, [&] { return FormatMessageById(id, inserts); });
}

HRESULT PublishFailure(const Reporter& reporter, MessageId id, HRESULT status,
                       Inserts inserts) noexcept
{
    return PublishText(reporter, status,
                       [&] { return FormatMessageWithStatus(id, status, inserts); });
}

void ThrowOnFailure(HRESULT status, MessageId id, ::IUnknown* object, const GUID& interfaceId,
                    const char16_t* file, std::uint32_t line)
{
    if (SUCCEEDED(status))
        return;
    std::u16string insert = PositionText(file, line);
    if (const std::u16string text = TextLeftBy(object, interfaceId); !text.empty())
        insert = text + u"@" + insert;
    throw ComException(status, FormatMessageWithStatus(id, status, {insert}), At(u"misc"));
}

} // namespace tarnwell
