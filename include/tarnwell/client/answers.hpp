/// @file
/// What the module asks the host, answered by functions.
#pragma once

#include <tarnwell/client/failure.hpp>
#include <tarnwell/host.h>
#include <tarnwell/implements.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tarnwell::client
{

/// For whom credentials are wanted.
struct CredentialsQuestion
{
    /// Perforce, or one of the others.
    CredentialKind kind;
    /// The server of the address.
    std::string host;
    /// The user of the address; may be empty.
    std::string user;
};

/// The answer; all empty means "try without".
struct Credentials
{
    /// May be empty.
    std::string user;
    /// May be empty.
    std::string password;
    /// The server to use in place of the one that was asked for.
    std::optional<std::string> host;
};

/// The host's functions; any may be missing. They are called on the thread that called the module,
/// and may throw: the exception comes out of the call that asked.
struct Answers
{
    /// Asked for each connection or client run whose address names no user, or "*" as its password.
    /// Nothing as an answer is a refusal, which ends the operation; so does an exception. Without
    /// this function it is tried without credentials.
    std::function<std::optional<Credentials>(const CredentialsQuestion&)> credentials;
    /// What was given is refused, with the server's words.
    std::function<void(const std::string& words)> refused;
    /// Whether the listing of local folders holds named data streams.
    std::function<bool()> iterateStreams;
    /// The owner of the module's dialogs (Windows).
    std::function<HWND()> window;
};

/// How far a copy is, in bytes.
struct Amounts
{
    /// What has arrived.
    std::uint64_t done = 0;
    /// What there is in all, as the source said at the beginning; nothing if it didn't.
    std::optional<std::uint64_t> total;
};

/// Asked at each step of what takes its time; false cancels it. A function without parameters, or
/// one that takes `const Amounts&` and hears how far a copy is.
class Progress
{
public:
    /// Nobody is asked.
    Progress() = default;
    // Not explicit, so that every method takes a function.
    /// @cond
    Progress(std::nullptr_t) {} // NOLINT

    template <class F, std::enable_if_t<std::is_invocable_r_v<bool, F&, const Amounts&>, int> = 0>
    Progress(F function) : ask_(std::move(function)), wantsAmounts_(true) // NOLINT
    {
    }

    template <class F, std::enable_if_t<std::is_invocable_r_v<bool, F&> &&
                                            !std::is_invocable_r_v<bool, F&, const Amounts&>,
                                        int> = 0>
    Progress(F function) // NOLINT
    {
        if constexpr (std::is_same_v<F, std::function<bool()>>)
        {
            if (!function)
                return;
        }
        ask_ = [function = std::move(function)](const Amounts&) mutable {
            return static_cast<bool>(function());
        };
    }
    /// @endcond

    /// Whether there is a function.
    explicit operator bool() const
    {
        return static_cast<bool>(ask_);
    }
    /// Whether it takes amounts.
    bool WantsAmounts() const
    {
        return wantsAmounts_;
    }
    /// Asks it.
    bool operator()(const Amounts& amounts) const
    {
        return ask_(amounts);
    }

private:
    std::function<bool(const Amounts&)> ask_;
    bool wantsAmounts_ = false;
};

namespace detail
{

inline std::string Utf8Of(const OLECHAR* text)
{
    return text == nullptr ? std::string() : Utf8(reinterpret_cast<const char16_t*>(text));
}

inline HRESULT Give(const std::string& text, BSTR* out)
{
    *out = Bstr(Utf16(text)).Detach();
    return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

class HostObject final : public Implements<IHostWindow, IHostCredentials, IHostSettings>
{
public:
    explicit HostObject(Answers answers) : answers_(std::move(answers)) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override
    {
        return Guarded([&] {
            *window = answers_.window ? answers_.window() : nullptr;
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE GetCredentials(std::uint32_t kind, const OLECHAR* host,
                                             const OLECHAR* user, BSTR* resultUser,
                                             BSTR* resultPassword, BSTR* resultHost) override
    {
        *resultUser = *resultPassword = *resultHost = nullptr;
        return Guarded([&]() -> HRESULT {
            const CredentialsQuestion question{static_cast<CredentialKind>(kind), Utf8Of(host),
                                               Utf8Of(user)};
            const std::optional<Credentials> answer =
                answers_.credentials ? answers_.credentials(question) : Unasked(question);
            if (!answer)
                return E_FAIL;
            HRESULT status = Give(answer->user, resultUser);
            if (SUCCEEDED(status))
                status = Give(answer->password, resultPassword);
            if (SUCCEEDED(status))
                status = Give(answer->host.value_or(question.host), resultHost);
            return status;
        });
    }

    HRESULT STDMETHODCALLTYPE ForgetCredentials(const OLECHAR* text) override
    {
        return Guarded([&] {
            if (answers_.refused)
                answers_.refused(Utf8Of(text));
            return S_OK;
        });
    }

    // The call that asked fails, which is how the host hears of it.
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
        return Guarded([&] {
            if (answers_.iterateStreams && Utf8Of(name) == "IterateStreams")
                *value = answers_.iterateStreams() ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        });
    }

private:
    // Right for servers that let everybody in; Perforce's client has settings of its own.
    static std::optional<Credentials> Unasked(const CredentialsQuestion& question)
    {
        if (question.kind == CredentialsForPerforce)
            return std::nullopt;
        return Credentials{question.user, {}, {}};
    }

    const Answers answers_;
};

class ProgressObject final : public Implements<ICopyProgress, ICopyAmounts>
{
public:
    explicit ProgressObject(Progress progress) : progress_(std::move(progress)) {}

    // Amounts cost a question to some servers.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        if (out != nullptr && iid == IidOf<ICopyAmounts>() && !progress_.WantsAmounts())
        {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        return Implements::QueryInterface(iid, out);
    }

    HRESULT STDMETHODCALLTYPE Report(std::uint64_t done, std::uint64_t total) override
    {
        amounts_.done = done;
        amounts_.total = total == AmountUnknown ? std::nullopt : std::optional(total);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE QueryContinue(VARIANT_BOOL* keepGoing) override
    {
        // What throws cancels.
        *keepGoing = VARIANT_FALSE;
        return Guarded([&] {
            cancelled_ = progress_ && !progress_(amounts_);
            *keepGoing = cancelled_ ? VARIANT_FALSE : VARIANT_TRUE;
            return S_OK;
        });
    }

    bool Cancelled() const
    {
        return cancelled_;
    }

private:
    const Progress progress_;
    Amounts amounts_;
    bool cancelled_ = false;
};

class ItemList final : public Implements<IItemList>
{
public:
    explicit ItemList(std::vector<std::string> addresses) : addresses_(std::move(addresses)) {}

    HRESULT STDMETHODCALLTYPE GetCount(std::int32_t* count) override
    {
        *count = static_cast<std::int32_t>(addresses_.size());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetItem(std::int32_t index, BSTR* path) override
    {
        return Guarded([&] { return Give(addresses_.at(static_cast<std::size_t>(index)), path); });
    }

private:
    const std::vector<std::string> addresses_;
};

} // namespace detail

} // namespace tarnwell::client
