// A place in a Perforce depot where tests put what they want to find: shown by the stand-in for the
// client, or on a real server.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwell::test
{

class PerforceServer
{
public:
    // The stand-in; a real client with a server (TARNWELL_PERFORCE_LIVE) where the tests are told
    // so.
    static std::unique_ptr<PerforceServer> Make();
    static bool IsReal();

    PerforceServer() = default;
    PerforceServer(const PerforceServer&) = delete;
    PerforceServer& operator=(const PerforceServer&) = delete;
    virtual ~PerforceServer() = default;

    // The folder in the depot, "//…" without a slash at its end.
    virtual std::string Base() const = 0;
    // USER@WORKSPACE of what is submitted.
    virtual std::string Author() const = 0;
    // The server as "-p" has it. It is at no other.
    virtual std::string Port() const = 0;
    // Each is one change, and gives its number. Paths are relative to the base, with the characters
    // of revisions encoded as the client does it.
    virtual int Submit(const std::string& path, std::string_view bytes,
                       const std::string& description) = 0;
    int Submit(const std::string& path, std::string_view bytes)
    {
        return Submit(path, bytes, "m");
    }
    virtual int Remove(const std::string& path) = 0;
    // Brings the file into the workspace; where it lies.
    virtual std::filesystem::path Sync(const std::string& path) = 0;
    // From now on the client has a workspace that the server doesn't know.
    virtual void LoseWorkspace() = 0;

    // As the module takes it, without an authority: the base, or something in it.
    std::u16string Address(const std::string& path = {}) const;
};

} // namespace tarnwell::test
