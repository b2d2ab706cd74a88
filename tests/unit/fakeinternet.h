// An FTP server that is a record in the test, in the place of the platform's operations. The linker
// puts it there for as long as one lives (posix and windows: internetlinks.cpp).
#pragma once

#include "platform/win32.h"

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::test
{

struct FakeEntry
{
    std::u16string name;
    DWORD attributes = 128;
    std::uint64_t size = 0;
    std::uint64_t time = 0; // local
};

// The bytes of a text, as the registry keeps it.
std::string RegistryText(std::u16string_view text);

class FakeInternet
{
public:
    FakeInternet();
    FakeInternet(const FakeInternet&) = delete;
    FakeInternet& operator=(const FakeInternet&) = delete;
    ~FakeInternet();

    // What exists on the server, by path. A folder that isn't here isn't found.
    std::map<std::u16string, std::vector<FakeEntry>> folders;
    std::map<std::u16string, std::string> files;
    std::vector<std::u16string> linksToFolders; // listed as folders
    std::vector<std::u16string> closedFolders;  // are there, and nobody may list them

    struct Value
    {
        DWORD type;
        std::string data;
    };
    // The user's settings; nothing if there is no key.
    std::optional<std::map<std::u16string, Value>> settings;

    // What the user says to a question; what was asked, and over which window.
    int answer = 6;
    std::vector<std::u16string> questions;
    std::vector<HWND> owners;

    // Local times are ahead by so much.
    std::uint64_t localBias = 36'000'000'000;

    // The next call of `operation` that isn't ordered to fail yet fails so; without a reply the
    // server said nothing.
    void Fail(const std::string& operation, DWORD error,
              std::optional<std::u16string> reply = std::nullopt);
    // The next call of `operation` succeeds, but only there is a reply from then on.
    std::optional<std::u16string> reply;
    bool responseFails = false; // nothing at all is to be had of the reply

    // What happens before a handle of a kind is closed.
    std::function<void(const std::u16string& kind)> closing = [](const std::u16string&) {
    };

    // The calls so far, but for those about replies, times and settings.
    std::vector<std::u16string> Calls() const;
    // Of these the ones that begin with `start`.
    std::vector<std::u16string> Calls(std::u16string_view start) const;
    void ForgetCalls();
    // Handles that aren't closed, as their kinds: root, connection, find, file.
    std::vector<std::u16string> Open() const;

    static FakeInternet* Active();

#define CALL(name, result, parameters, arguments) result name parameters;
#include "unit/internetcalls.inc"
#undef CALL

private:
    struct Handle
    {
        std::u16string kind;
        HINTERNET parent = nullptr;
        std::u16string path = {};
        std::vector<FakeEntry> entries = {};
        std::size_t position = 0;
    };
    struct Failure
    {
        DWORD error;
        std::optional<std::u16string> reply;
    };

    HINTERNET Make(Handle handle);
    const Handle* Find(HINTERNET handle, const std::u16string& kind);
    bool IsBusy(HINTERNET connection) const;
    bool MustFail(const std::string& operation);
    bool Refuse(DWORD error, std::optional<std::u16string> words = std::nullopt);
    void Record(std::u16string call);
    bool OnConnection(const std::string& operation, HINTERNET connection, std::u16string call);

    mutable std::recursive_mutex mutex_;
    std::map<std::string, std::deque<Failure>> failures_;
    std::vector<std::u16string> calls_;
    std::map<std::uintptr_t, Handle> handles_;
    std::uintptr_t last_ = 0;
};

} // namespace tarnwell::test
