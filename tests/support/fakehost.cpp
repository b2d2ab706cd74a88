#include "support/fakehost.h"

#include <utility>

namespace tarnwell::test
{

namespace
{

std::u16string Text(const OLECHAR* units)
{
    return units == nullptr ? u"(null)" : std::u16string(reinterpret_cast<const char16_t*>(units));
}

std::u16string Digits(std::uint32_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

BSTR Give(const std::optional<std::u16string>& text)
{
    return text ? Bstr(*text).Detach() : nullptr;
}

} // namespace

ComPtr<FakeHost> FakeHost::Make()
{
    return ComPtr<FakeHost>::Share(new FakeHost());
}

std::vector<std::u16string> FakeHost::Calls() const
{
    const std::lock_guard lock(mutex_);
    return calls_;
}

void FakeHost::Record(std::u16string call)
{
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(call));
}

HRESULT FakeHost::QueryInterface(REFIID iid, void** out)
{
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (iid == IidOf<::IUnknown>())
        *out = Unknown();
    else if (iid == IidOf<IHostWindow>() && hasWindow)
        *out = static_cast<IHostWindow*>(this);
    else if (iid == IidOf<IHostCredentials>() && hasCredentials)
        *out = static_cast<IHostCredentials*>(this);
    else if (iid == IidOf<IHostSettings>() && hasSettings)
        *out = static_cast<IHostSettings*>(this);
    if (*out == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG FakeHost::AddRef()
{
    return ++count_;
}

ULONG FakeHost::Release()
{
    const ULONG left = --count_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT FakeHost::GetWindow(HWND* out)
{
    Record(u"GetWindow");
    *out = window;
    return windowStatus;
}

HRESULT FakeHost::GetCredentials(std::uint32_t kind, const OLECHAR* host, const OLECHAR* user,
                                 BSTR* resultUser, BSTR* resultPassword, BSTR* resultHost)
{
    Record(u"GetCredentials|" + Digits(kind) + u"|" + Text(host) + u"|" + Text(user));
    *resultUser = Give(credentials.user);
    *resultPassword = Give(credentials.password);
    *resultHost = Give(credentials.host);
    return credentials.status;
}

HRESULT FakeHost::ForgetCredentials(const OLECHAR* text)
{
    Record(u"ForgetCredentials|" + Text(text));
    return S_OK;
}

HRESULT FakeHost::ReportMissingCredentials(std::uint32_t kind, const OLECHAR* host,
                                           const OLECHAR* user)
{
    Record(u"ReportMissingCredentials|" + Digits(kind) + u"|" + Text(host) + u"|" + Text(user));
    return S_OK;
}

HRESULT FakeHost::ReservedFirst()
{
    Record(u"ReservedFirst");
    return E_NOTIMPL;
}

HRESULT FakeHost::ReservedSecond()
{
    Record(u"ReservedSecond");
    return E_NOTIMPL;
}

HRESULT FakeHost::GetBooleanSetting(const OLECHAR* name, VARIANT_BOOL* value)
{
    Record(u"GetBooleanSetting|" + Text(name));
    if (setting)
        *value = *setting;
    return settingStatus;
}

} // namespace tarnwell::test
