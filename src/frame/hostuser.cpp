#include "frame/hostuser.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"

namespace tarnwell
{

namespace
{

ComPtr<IHostCredentials> CredentialsOf(::IUnknown* host)
{
    return ComPtr<::IUnknown>::Share(host).As<IHostCredentials>();
}

} // namespace

void HostUIUser::SetHostObject(::IUnknown* host)
{
    host_ = ComPtr<::IUnknown>::Share(host);
}

Credentials HostUIUser::ResolveCredentials(const Credentials& fromAddress, std::uint32_t kind) const
{
    if (fromAddress.password != u"*" && !fromAddress.user.empty())
        return fromAddress;

    if (const auto host = CredentialsOf(host_.Get()))
    {
        Bstr user;
        Bstr password;
        Bstr server;
        const WCHAR* const askedHost = Wide(fromAddress.host);
        const WCHAR* const askedUser = Wide(fromAddress.user);
        if (SUCCEEDED(host->GetCredentials(kind, askedHost, askedUser, user.Out(), password.Out(),
                                           server.Out())))
            return {FromHost(user.Get()), FromHost(password.Get()), FromHost(server.Get())};
        host->ReportMissingCredentials(kind, askedHost, askedUser);
    }

    if (kind == perforceCredentials)
        return fromAddress;
    throw ComException(E_ACCESSDENIED, FormatMessageById(MessageId::CredentialsRequired),
                       At(u"misc"));
}

void HostUIUser::ReportCredentialsRefused(const std::u16string& text) const
{
    if (const auto host = CredentialsOf(host_.Get()))
        host->ForgetCredentials(Wide(text));
}

HWND OwnerWindow(IHostWindow* host)
{
    HWND window = nullptr;
    if (host != nullptr)
        host->GetWindow(&window);
    return window;
}

bool BooleanSetting(::IUnknown* host, const std::u16string& name)
{
    VARIANT_BOOL value = VARIANT_FALSE;
    if (const auto settings = ComPtr<::IUnknown>::Share(host).As<IHostSettings>())
        settings->GetBooleanSetting(Wide(name), &value);
    return IsTrue(value);
}

} // namespace tarnwell
