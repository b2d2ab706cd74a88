/// @file
/// Interfaces that the host implements and the module calls.
///
/// The module asks the object given to `SetHost` for `IHostWindow`, `IHostCredentials` and
/// `IHostSettings` at the moment of need, and gets on without those that are refused. The local
/// file system asks for `IHostWindow` in `SetHost`, and that interface's object for the settings: a
/// host without a window has no settings there.
///
/// Ownership and lifetime: texts that come in are the module's and end with the call. Texts that
/// the host hands out are made with `SysAllocString`, by the module's own copy on Linux, and the
/// module frees them. The module holds references to the host object as long as file systems and
/// items made with it live, also beyond the host's own. A progress object and an item list are used
/// for the time of the call that they are given to. All are called on the thread that the host
/// called the module on, and no exception may leave them.
#pragma once

#include <tarnwell/constants.h>
#include <tarnwell/interfaceid.h>

namespace tarnwell
{

/// The window that owns the module's dialogs.
struct IHostWindow : ::IUnknown
{
    /// @param[out] window  Null is allowed. On Linux there is nothing that could own a question on
    ///                     the terminal: null serves, and any other value is passed over.
    /// @return Not looked at: what is written counts.
    virtual HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) = 0;

protected:
    ~IHostWindow() = default;
};

/// The host's settings.
struct IHostSettings : ::IUnknown
{
    /// Isn't called; here for its place.
    /// @return E_NOTIMPL is fine.
    virtual HRESULT STDMETHODCALLTYPE ReservedFirst() = 0;

    /// Isn't called; here for its place.
    /// @return E_NOTIMPL is fine.
    virtual HRESULT STDMETHODCALLTYPE ReservedSecond() = 0;

    /// The value of a setting. Asked when a local folder is read.
    /// @param      name   `SettingIterateStreams`, the only one so far.
    /// @param[out] value  Is VARIANT_FALSE before the call.
    /// @return Not looked at: what `*value` is after the call counts.
    virtual HRESULT STDMETHODCALLTYPE GetBooleanSetting(const OLECHAR* name,
                                                        VARIANT_BOOL* value) = 0;

protected:
    ~IHostSettings() = default;
};

/// The host's users and passwords. The module keeps none.
struct IHostCredentials : ::IUnknown
{
    /// The user, the password and the server to use. Asked before each connection or client run
    /// whose address has no user, or "*" as its password.
    ///
    /// Success with empty texts is an answer, "try without", which is right for servers that let
    /// everybody in. A failure ends the operation with E_ACCESSDENIED, and is the host's way to
    /// cancel; Perforce then goes on with what the address and the client have.
    /// @param      kind            One of `CredentialKind`.
    /// @param      host            The server of the address.
    /// @param      user            The user of the address; may be empty.
    /// @param[out] resultUser      Null counts as empty, here and below; nothing is kept of the
    ///                             address then.
    /// @param[out] resultPassword  Goes to the clients as an option of their command line.
    /// @param[out] resultHost      Give `host` back if it is right. For FTP a port may follow ":".
    /// @return S_OK, or any failure.
    virtual HRESULT STDMETHODCALLTYPE GetCredentials(std::uint32_t kind, const OLECHAR* host,
                                                     const OLECHAR* user, BSTR* resultUser,
                                                     BSTR* resultPassword, BSTR* resultHost) = 0;

    /// What was given before was refused. Don't give the same again; ask the user.
    /// @param text  The server's or the client's words.
    /// @return Not looked at.
    virtual HRESULT STDMETHODCALLTYPE ForgetCredentials(const OLECHAR* text) = 0;

    /// `GetCredentials` has just failed for these.
    /// @param kind  As it was asked.
    /// @param host  As it was asked.
    /// @param user  As it was asked.
    /// @return Not looked at.
    virtual HRESULT STDMETHODCALLTYPE ReportMissingCredentials(std::uint32_t kind,
                                                               const OLECHAR* host,
                                                               const OLECHAR* user) = 0;

protected:
    ~IHostCredentials() = default;
};

/// Whether a copy goes on.
struct ICopyProgress : ::IUnknown
{
    /// Asked at each step of a copy: before the first piece and after each. Tells that the copy is
    /// alive; how far it is tells `ICopyAmounts`.
    /// @param[out] keepGoing  Preset by the module; 0 on return cancels. Always write it: the
    ///                        presets differ between the ways of copying.
    /// @return S_OK. For FTP a failure counts as a wish to go on; the local file system doesn't
    ///         look at it.
    virtual HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) = 0;

protected:
    ~ICopyProgress() = default;
};

/// How far a copy is. The module asks the host's progress object for it at the beginning of a copy,
/// and gets on without it where it is refused.
struct ICopyAmounts : ::IUnknown
{
    /// Tells how many bytes have arrived: at the beginning, unless the platform has no such moment,
    /// and right before each of the questions of `ICopyProgress`, on the same thread. The amounts
    /// never get less within a copy.
    /// @param done   So many bytes have arrived.
    /// @param total  So many there are in all, as the source said at the beginning; it may turn out
    ///               longer or shorter. `AmountUnknown` if it doesn't say.
    ///               An FTP server is asked for it only if this interface is there.
    /// @return Not looked at.
    virtual HRESULT STDMETHODCALLTYPE Report(std::uint64_t done, std::uint64_t total) = 0;

protected:
    ~ICopyAmounts() = default;
};

/// The addresses of items to delete.
struct IItemList : ::IUnknown
{
    /// @param[out] count  How many there are.
    /// @return S_OK; with a failure the list counts as empty.
    virtual HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* count) = 0;

    /// @param      index  From 0.
    /// @param[out] path   The address; the module frees it.
    /// @return S_OK; with a failure the entry is skipped.
    virtual HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) = 0;

protected:
    ~IItemList() = default;
};

} // namespace tarnwell

TARNWELL_INTERFACE_ID(IHostWindow, 674B8140)
TARNWELL_INTERFACE_ID(IHostSettings, 674B8141)
TARNWELL_INTERFACE_ID(IHostCredentials, 674B8142)
TARNWELL_INTERFACE_ID(ICopyProgress, 674B8143)
TARNWELL_INTERFACE_ID(ICopyAmounts, 674B8147)
TARNWELL_INTERFACE_ID(IItemList, 674B8144)
