#include "hostobject.h"

#include "noexcept.h"

#include <tarnwell/host.h>
#include <tarnwell/implements.h>

#include <string_view>
#include <utility>

namespace tarnwell::host
{

namespace
{

std::u16string TextOf(const OLECHAR* text)
{
    return text == nullptr ? std::u16string() : reinterpret_cast<const char16_t*>(text);
}

HRESULT Give(const std::u16string& text, BSTR* out)
{
    *out = Bstr(text).Detach();
    return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

class HostObject final : public Implements<IHostWindow, IHostCredentials, IHostSettings>
{
public:
    explicit HostObject(CommandLine line) : line_(std::move(line)) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override
    {
        if (window == nullptr)
            return E_POINTER;
        *window = nullptr;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetCredentials(std::uint32_t, const OLECHAR* host,
                                             const OLECHAR* user, BSTR* resultUser,
                                             BSTR* resultPassword, BSTR* resultHost) override
    {
        if (resultUser == nullptr || resultPassword == nullptr || resultHost == nullptr)
            return E_POINTER;
        *resultUser = *resultPassword = *resultHost = nullptr;
        if (line_.noCredentials)
            return E_FAIL;
        return WithoutExceptions([&] {
            // Without any of the options the answer is an empty user and password: right for
            // servers that let everybody in. A password alone is for the user that was asked for.
            const std::u16string asked = line_.password ? TextOf(user) : std::u16string();
            HRESULT status = Give(line_.user.value_or(asked), resultUser);
            if (SUCCEEDED(status))
                status = Give(line_.password.value_or(u""), resultPassword);
            if (SUCCEEDED(status))
                status = Give(line_.server.value_or(TextOf(host)), resultHost);
            return status;
        });
    }

    // The failure that follows tells both of these to the user.
    HRESULT STDMETHODCALLTYPE ForgetCredentials(const OLECHAR*) override
    {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ReportMissingCredentials(std::uint32_t, const OLECHAR*,
                                                       const OLECHAR*) override
    {
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE ReservedFirst() override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ReservedSecond() override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetBooleanSetting(const OLECHAR* name, VARIANT_BOOL* value) override
    {
        if (value == nullptr)
            return E_POINTER;
        *value = VARIANT_FALSE;
        return WithoutExceptions([&] {
            if (TextOf(name) != u"IterateStreams")
                return E_INVALIDARG;
            *value = line_.streams ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        });
    }

private:
    const CommandLine line_;
};

} // namespace

ComPtr<IUnknown> MakeHostObject(const CommandLine& line)
{
    IHostWindow* const object = new HostObject(line);
    return ComPtr<IUnknown>::Adopt(object);
}

} // namespace tarnwell::host
