// How an FTP connection drives libcurl: one operation at a time, on the caller's thread.
#include "platform/posix/internet/ftpconnection.h"

#include <algorithm>
#include <new>
#include <sys/socket.h>
#include <utility>

namespace tarnwell::posix
{
namespace
{

using SteadyClock = std::chrono::steady_clock;

// In milliseconds. After some replies libcurl names no socket to wait for, and a poll would last
// for as long as it may.
constexpr int longestPoll = 3;

void StartLibrary()
{
    // Whole, as the host may use the same library after us.
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK)
        throw std::bad_alloc();
}

} // namespace

template <class T> void FtpConnection::Set(CURLoption option, T value)
{
    if (curl_easy_setopt(easy_.get(), option, value) == CURLE_OUT_OF_MEMORY)
        throw std::bad_alloc();
}

void FtpConnection::SetUp()
{
    StartLibrary();
    // What went before takes its connection with it: the library could take a word that still came
    // over that one for a sign of life.
    easy_.reset();
    multi_.reset(curl_multi_init());
    easy_.reset(curl_easy_init());
    if (!multi_ || !easy_)
        throw std::bad_alloc();
    curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, 1L);

    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_PROTOCOLS_STR, "ftp");
    Set(CURLOPT_REDIR_PROTOCOLS_STR, "");
    Set(CURLOPT_NETRC, static_cast<long>(CURL_NETRC_IGNORED));
    // Empty ones, so that the environment isn't asked.
    Set(CURLOPT_NOPROXY, "");
    Set(CURLOPT_PROXY, address_.proxy.c_str());
    Set(CURLOPT_HTTPPROXYTUNNEL, 1L);
    Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    // It would keep the address of each data connection for a minute.
    Set(CURLOPT_DNS_CACHE_TIMEOUT, 0L);
    Set(CURLOPT_TCP_KEEPALIVE, 1L);
    Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(patience_.connecting.count()));
    Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(patience_.reply.count()));
    Set(CURLOPT_BUFFERSIZE, pieceSize);
    Set(CURLOPT_UPLOAD_BUFFERSIZE, pieceSize);

    // The folder is changed here, by commands, and never behind our back.
    Set(CURLOPT_FTP_FILEMETHOD, static_cast<long>(CURLFTPMETHOD_NOCWD));
    Set(CURLOPT_PATH_AS_IS, 1L);
    // The address in a passive reply may be anybody's.
    Set(CURLOPT_FTP_SKIP_PASV_IP, 1L);
    // No question for the size ahead of each download: the refusal of that would hide the words
    // with which the server refuses the file.
    Set(CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
    if (!address_.isPassive)
        Set(CURLOPT_FTPPORT, "-");
    if (!address_.user.empty())
    {
        Set(CURLOPT_USERNAME, address_.user.c_str());
        Set(CURLOPT_PASSWORD, address_.password.c_str());
    }

    Set(CURLOPT_HEADERFUNCTION, &OnReply);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, &OnData);
    Set(CURLOPT_WRITEDATA, this);
    Set(CURLOPT_READFUNCTION, &OnWanted);
    Set(CURLOPT_READDATA, this);
    Set(CURLOPT_OPENSOCKETFUNCTION, &OnOpen);
    Set(CURLOPT_OPENSOCKETDATA, this);
    Set(CURLOPT_CLOSESOCKETFUNCTION, &OnClose);
    Set(CURLOPT_CLOSESOCKETDATA, this);
}

FtpConnection::FtpConnection(FtpServerAddress address, const FtpPatience& patience)
    : address_(std::move(address)), patience_(patience)
{
    SetUp();
}

FtpConnection::~FtpConnection()
{
    Leave();
}

void FtpConnection::Leave()
{
    if (!isActive_ && !sockets_.empty())
    {
        constexpr std::string_view goodBye = "QUIT\r\n";
        send(sockets_.front(), goodBye.data(), goodBye.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    // With its sockets shut down, libcurl has nobody to say good-bye to, and to wait for.
    Cut();
}

// ---- Driving ----

void FtpConnection::Start(const Operation& operation)
{
    replies_.Forget();
    result_ = CURLE_OK;
    givenUp_ = 0;
    hasConnected_ = false;
    isPaused_ = false;
    isAtEnd_ = false;
    room_ = {};
    rest_.clear();
    restBegin_ = 0;
    toSend_ = {};

    commands_.reset();
    for (const std::string& command : operation.commands)
    {
        curl_slist* const longer = curl_slist_append(commands_.get(), command.c_str());
        if (longer == nullptr)
            throw std::bad_alloc();
        static_cast<void>(commands_.release());
        commands_.reset(longer);
    }
    Set(CURLOPT_QUOTE, commands_.get());
    Set(CURLOPT_URL, FtpUrl(address_, operation.path).c_str());
    // In this order: the later ones don't undo the earlier.
    Set(CURLOPT_NOBODY, operation.transfer == Transfer::None ? 1L : 0L);
    Set(CURLOPT_UPLOAD, operation.transfer == Transfer::Upload ? 1L : 0L);
    Set(CURLOPT_CUSTOMREQUEST, operation.listing);
    if (curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK)
        throw std::bad_alloc();
    transfer_ = operation.transfer;
    isActive_ = true;
}

void FtpConnection::Stop()
{
    if (isActive_)
        curl_multi_remove_handle(multi_.get(), easy_.get());
    isActive_ = false;
}

void FtpConnection::Cut()
{
    for (const curl_socket_t socket : sockets_)
        shutdown(socket, SHUT_RDWR);
    Stop();
}

void FtpConnection::Step()
{
    int running = 0;
    if (curl_multi_perform(multi_.get(), &running) != CURLM_OK)
    {
        givenUp_ = ERROR_NOT_ENOUGH_MEMORY;
        Cut();
        return;
    }
    int left = 0;
    if (const CURLMsg* const message = curl_multi_info_read(multi_.get(), &left))
    {
        result_ = message->data.result;
        Stop();
    }
}

DWORD FtpConnection::DriveUntil(const std::function<bool()>& isEnough)
{
    SteadyClock::time_point moved = SteadyClock::now();
    while (isActive_ && !isEnough())
    {
        const std::uint64_t before = progress_;
        Step();
        if (progress_ != before)
        {
            moved = SteadyClock::now();
            continue;
        }
        if (!isActive_ || isEnough())
            break;
        // What comes before the transfer has limits inside the library.
        if (replies_.HasBegun() && SteadyClock::now() - moved > patience_.data)
        {
            givenUp_ = ERROR_INTERNET_TIMEOUT;
            Cut();
            break;
        }
        curl_multi_poll(multi_.get(), nullptr, 0, longestPoll, nullptr);
    }
    return isActive_ ? 0 : Outcome();
}

DWORD FtpConnection::Run(const Operation& operation)
{
    Start(operation);
    const DWORD outcome = DriveUntil([] { return false; });
    transfer_ = Transfer::None;
    return outcome;
}

void FtpConnection::Resume()
{
    if (std::exchange(isPaused_, false) && isActive_)
        curl_easy_pause(easy_.get(), CURLPAUSE_CONT);
}

DWORD FtpConnection::Outcome() const
{
    if (givenUp_ != 0)
        return givenUp_;
    return result_ == CURLE_OK ? 0 : OutcomeOfFailure();
}

// The server's word comes first: what the library makes of it is often something else.
DWORD FtpConnection::OutcomeOfFailure() const
{
    constexpr int unavailable = 421;
    const FtpReply& reply = replies_.Last();
    if (result_ == CURLE_LOGIN_DENIED && reply.code != unavailable)
        return replies_.HasAsked() ? ERROR_INTERNET_INCORRECT_PASSWORD
                                   : ERROR_INTERNET_INCORRECT_USER_NAME;
    if (reply.IsRefusal())
        return ERROR_INTERNET_EXTENDED_ERROR;
    switch (result_)
    {
    case CURLE_OUT_OF_MEMORY:
        return ERROR_NOT_ENOUGH_MEMORY;
    case CURLE_URL_MALFORMAT:
        return ERROR_INVALID_PARAMETER;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return ERROR_INTERNET_NAME_NOT_RESOLVED;
    case CURLE_COULDNT_CONNECT:
    case CURLE_FTP_CANT_GET_HOST:
        return ERROR_INTERNET_CANNOT_CONNECT;
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
        return ERROR_INTERNET_TIMEOUT;
    default:
        return WasTunnelRefused() ? ERROR_INTERNET_CANNOT_CONNECT : ERROR_INTERNET_CONNECTION_RESET;
    }
}

// Whether a proxy has said no, which the library tells as a connection that was lost.
bool FtpConnection::WasTunnelRefused() const
{
    constexpr long firstFailure = 300;
    long code = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_HTTP_CONNECTCODE, &code);
    return !address_.proxy.empty() && code >= firstFailure;
}

} // namespace tarnwell::posix
