// A host object for tests: its answers are set beforehand, and it keeps what it was asked.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

// What GetCredentials gives. A text that is nothing comes out as a null pointer.
struct CredentialsAnswer
{
    HRESULT status = S_OK;
    std::optional<std::u16string> user;
    std::optional<std::u16string> password;
    std::optional<std::u16string> host;
};

class FakeHost final : public IHostWindow, public IHostCredentials, public IHostSettings
{
public:
    static ComPtr<FakeHost> Make();

    // Which interfaces it answers to.
    bool hasWindow = true;
    bool hasCredentials = true;
    bool hasSettings = true;

    HWND window = nullptr;
    HRESULT windowStatus = S_OK;
    CredentialsAnswer credentials;
    // The value is left as it was if there is none here.
    std::optional<VARIANT_BOOL> setting;
    HRESULT settingStatus = S_OK;

    ::IUnknown* Unknown()
    {
        return static_cast<IHostWindow*>(this);
    }
    ULONG References() const
    {
        return count_;
    }
    // The calls so far, each as the method's name and its arguments, separated by "|".
    std::vector<std::u16string> Calls() const;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* out) override;

    HRESULT STDMETHODCALLTYPE GetCredentials(std::uint32_t kind, const OLECHAR* host,
                                             const OLECHAR* user, BSTR* resultUser,
                                             BSTR* resultPassword, BSTR* resultHost) override;
    HRESULT STDMETHODCALLTYPE ForgetCredentials(const OLECHAR* text) override;
    HRESULT STDMETHODCALLTYPE ReportMissingCredentials(std::uint32_t kind, const OLECHAR* host,
                                                       const OLECHAR* user) override;

    HRESULT STDMETHODCALLTYPE ReservedFirst() override;
    HRESULT STDMETHODCALLTYPE ReservedSecond() override;
    HRESULT STDMETHODCALLTYPE GetBooleanSetting(const OLECHAR* name, VARIANT_BOOL* value) override;

private:
    void Record(std::u16string call);

    std::atomic<ULONG> count_{0};
    mutable std::mutex mutex_;
    std::vector<std::u16string> calls_;
};

} // namespace tarnwell::test
