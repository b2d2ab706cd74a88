// Interfaces that the host implements and the module calls.
//
// The module asks the object given to `SetHost` for `IHostWindow`, `IHostCredentials` and
// `IHostSettings` at the moment of need, and gets on without those that are refused. The local file
// system asks for `IHostWindow` in `SetHost`, and that interface's object for the settings: a host
// without a window has no settings there. They are called on the thread that the host called the
// module on. The module holds references to the host object as long as items made with it live.
#pragma once

#include <tarnwell/interfaceid.h>

namespace tarnwell
{

struct IHostWindow : ::IUnknown
{
    // The owner of dialogs. Null is allowed. What is written counts, whatever the status.
    virtual HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) = 0;

protected:
    ~IHostWindow() = default;
};

struct IHostSettings : ::IUnknown
{
    // The first two are not called by the module and are here for their places.
    virtual HRESULT STDMETHODCALLTYPE ReservedFirst() = 0;
    virtual HRESULT STDMETHODCALLTYPE ReservedSecond() = 0;

    // The value of the setting `name`; `*value` is false before the call, and what it is after it
    // counts, whatever the status. The one name asked for is "IterateStreams": whether the listing
    // of a local folder also holds the named data streams of its files.
    virtual HRESULT STDMETHODCALLTYPE GetBooleanSetting(const OLECHAR* name,
                                                        VARIANT_BOOL* value) = 0;

protected:
    ~IHostSettings() = default;
};

struct IHostCredentials : ::IUnknown
{
    // The user, the password and the server to use. Asked before each connection or client run
    // whose address has no user, or "*" as its password. `kind` is 0 for FTP and Subversion, 1
    // for Perforce; `host` and `user` are those of the address. The module frees the texts; a
    // null one counts as empty. For FTP the server may carry a port after ":". A failure says
    // that there are none, which ends the operation (except for Perforce).
    virtual HRESULT STDMETHODCALLTYPE GetCredentials(std::uint32_t kind, const OLECHAR* host,
                                                     const OLECHAR* user, BSTR* resultUser,
                                                     BSTR* resultPassword, BSTR* resultHost) = 0;

    // The server refused what was given before; `text` holds its words.
    virtual HRESULT STDMETHODCALLTYPE ForgetCredentials(const OLECHAR* text) = 0;

    // `GetCredentials` has just failed for these.
    virtual HRESULT STDMETHODCALLTYPE ReportMissingCredentials(std::uint32_t kind,
                                                               const OLECHAR* host,
                                                               const OLECHAR* user) = 0;

protected:
    ~IHostCredentials() = default;
};

struct ICopyProgress : ::IUnknown
{
    // Asked at each step of a copy. `*keepGoing` is preset by the module; 0 on return cancels.
    // Always write it: the presets differ between the ways of copying.
    virtual HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) = 0;

protected:
    ~ICopyProgress() = default;
};

// The addresses of items to delete. Entries that fail or are empty are skipped.
struct IItemList : ::IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* count) = 0;

    // The address of entry `index`, counted from 0. The module frees it.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) = 0;

protected:
    ~IItemList() = default;
};

TARNWELL_INTERFACE_ID(IHostWindow, 0x674B8140);
TARNWELL_INTERFACE_ID(IHostSettings, 0x674B8141);
TARNWELL_INTERFACE_ID(IHostCredentials, 0x674B8142);
TARNWELL_INTERFACE_ID(ICopyProgress, 0x674B8143);
TARNWELL_INTERFACE_ID(IItemList, 0x674B8144);

} // namespace tarnwell
