// A connection to an FTP server, over libcurl, driven on the caller's thread.
//
// One transfer at a time: between a Begin and its End nothing else may be asked. What fails gives
// the platform's error code; the server's words, where it said no, stand in Reply. A connection
// that was cut, or that the server dropped, is made anew by the next operation, with the same user.
#pragma once

#include "platform/posix/internet/ftpreply.h"
#include "platform/posix/internet/ftpurl.h"
#include "platform/posix/internet/listingparser.h"
#include "platform/win32.h"

#include <chrono>
#include <curl/curl.h>
#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace tarnwell::posix
{

// What nobody waits beyond. None is for a whole transfer.
struct FtpPatience
{
    std::chrono::milliseconds connecting{30'000};
    // For a reply to a command, in whole seconds.
    std::chrono::seconds reply{60};
    // For the next piece of data, in either direction.
    std::chrono::milliseconds data{60'000};
};

class FtpConnection
{
public:
    explicit FtpConnection(FtpServerAddress address, const FtpPatience& patience = {});
    FtpConnection(const FtpConnection&) = delete;
    FtpConnection& operator=(const FtpConnection&) = delete;
    // Waits for nothing.
    ~FtpConnection();

    // All paths are as the server is to get them, from the login folder on or with a "/" in front,
    // without control characters. An empty one is the login folder.

    DWORD LogIn();
    // A command with one path, such as "MKD".
    DWORD Command(const char* word, std::string path);
    // Changes to the folder first; `isMissing` says that already this was refused.
    DWORD List(const std::string& folder, std::vector<ListedEntry>& entries, bool& isMissing);

    // Until the server's first answer to the transfer command.
    DWORD BeginDownload(const std::string& path);
    DWORD BeginUpload(const std::string& path);
    // Until the buffer is full or the file at its end.
    DWORD Read(std::span<char> buffer, std::size_t& read);
    DWORD Write(std::span<const char> bytes);
    // Of an upload, the end of the file and the server's final word; a download that isn't at its
    // end is cut off.
    DWORD EndTransfer();
    bool IsTransferring() const
    {
        return transfer_ != Transfer::None;
    }

    // What the server said last in the latest operation.
    const FtpReply& Reply() const
    {
        return replies_.Last();
    }

private:
    enum class Transfer
    {
        None,
        Listing,
        Download,
        Upload,
    };
    // How servers read the byte that begins commands to a terminal.
    enum class TerminalByte
    {
        // As any other.
        Plain,
        // A name has it twice for each one.
        Doubled,
    };
    struct EasyDeleter
    {
        void operator()(CURL* easy) const
        {
            curl_easy_cleanup(easy);
        }
    };
    struct MultiDeleter
    {
        void operator()(CURLM* multi) const
        {
            curl_multi_cleanup(multi);
        }
    };

    // ---- Driving libcurl, one operation after the other ----

    void SetUp();
    template <class T> void Set(CURLoption option, T value);
    // What the next operation is about: commands ahead of it, whether there is a transfer, and of
    // which path or listing command.
    struct Operation
    {
        std::vector<std::string> commands = {};
        Transfer transfer = Transfer::None;
        std::string path = {};
        const char* listing = nullptr;
    };
    void Start(const Operation& operation);
    // Until `isEnough`, or the operation is over. The code is that of its failure.
    DWORD DriveUntil(const std::function<bool()>& isEnough);
    void Step();
    DWORD Run(const Operation& operation);
    void Resume();
    void Stop();
    void Cut();
    // Says good-bye and waits for no answer.
    void Leave();
    DWORD Outcome() const;
    DWORD OutcomeOfFailure() const;
    bool WasTunnelRefused() const;
    bool HasNews() const;

    // ---- What libcurl calls back ----

    static std::size_t OnReply(char* bytes, std::size_t, std::size_t count, void* self);
    static std::size_t OnData(char* bytes, std::size_t, std::size_t count, void* self);
    static std::size_t OnWanted(char* bytes, std::size_t, std::size_t count, void* self);
    static curl_socket_t OnOpen(void* self, curlsocktype purpose, curl_sockaddr* address);
    static int OnClose(void* self, curl_socket_t socket);
    std::size_t TakeData(std::string_view bytes);
    std::size_t GiveData(std::span<char> room);

    // ---- Operations ----

    // To where `path` begins, if that isn't where the connection is.
    DWORD ReturnToEntry(const std::string& path);
    // The same name, in the bytes that this server takes for it.
    DWORD Spell(std::string& path);
    DWORD AskForSpelling();
    DWORD Try(const std::string& command, bool& isKnown);
    DWORD ChangeFolder(std::string folder);
    DWORD ListHere(std::vector<ListedEntry>& entries);
    DWORD Fetch(ListingForm form, const char* command, std::vector<ListedEntry>& entries);
    bool WasRefusedBeforeData() const;
    DWORD BeginTransfer(Transfer transfer, std::string path);

    // Of data that libcurl takes or gives at once, in bytes.
    static constexpr long pieceSize = 262144;

    const FtpServerAddress address_;
    const FtpPatience patience_;

    // Open ones, that of the commands first.
    std::vector<curl_socket_t> sockets_;
    ReplyReader replies_;
    // As the server calls the login folder; empty if it didn't say.
    std::string entryFolder_;
    bool isAtEntry_ = true;
    bool knowsFacts_ = true;
    // Of the byte FF in a name; nothing before one has been asked for.
    std::optional<TerminalByte> terminalByte_;
    // The operation in hand, or the last one, has opened a connection for commands.
    bool hasConnected_ = false;
    // A listing's was made anew in the middle, so that the folder is another.
    bool isRenewed_ = false;

    // libcurl has the operation in hand.
    bool isActive_ = false;
    bool isPaused_ = false;
    CURLcode result_ = CURLE_OK;
    // Why the operation was given up here; 0 if it wasn't.
    DWORD givenUp_ = 0;
    // Grows with all that comes or goes, so that waiting for nothing can be told.
    std::uint64_t progress_ = 0;

    Transfer transfer_ = Transfer::None;
    ListingReader* listing_ = nullptr;
    bool isReading_ = false;
    // Of the caller's buffer, what is still empty.
    std::span<char> room_;
    // Of a piece, what didn't fit into it, from `restBegin_` on.
    std::string rest_;
    std::size_t restBegin_ = 0;
    // Of the caller's bytes, what hasn't gone yet.
    std::span<const char> toSend_;
    bool isAtEnd_ = false;

    struct ListDeleter
    {
        void operator()(curl_slist* list) const
        {
            curl_slist_free_all(list);
        }
    };
    std::unique_ptr<curl_slist, ListDeleter> commands_;
    // In this order: they go in the reverse.
    std::unique_ptr<CURLM, MultiDeleter> multi_;
    std::unique_ptr<CURL, EasyDeleter> easy_;
};

} // namespace tarnwell::posix
