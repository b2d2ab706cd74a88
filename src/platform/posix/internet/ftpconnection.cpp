#include "platform/posix/internet/ftpconnection.h"

#include "platform/posix/calendar/localtime.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace tarnwell::posix
{
namespace
{

constexpr char terminalByte = '\xFF';

// A refusal of the command leaves the connection as it is.
std::string Refusable(const std::string& command)
{
    return "*" + command;
}

// What servers drop at the beginning of a path, or take for a user's name or an option.
std::string AsWritten(const std::string& path)
{
    constexpr std::string_view odd = " -~";
    return !path.empty() && odd.find(path[0]) != std::string_view::npos ? "./" + path : path;
}

// What ends in "/" is that folder's ".". Written so it is for the server to refuse, while the
// library would list the folder and give the listing for the file's content.
std::string AsFile(const std::string& path)
{
    return AsWritten(path.empty() || path.ends_with('/') ? path + "." : path);
}

// Whether these bytes are one name for every server.
bool IsPlain(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char unit) {
        return static_cast<unsigned char>(unit) < 0x20 || unit == terminalByte;
    });
}

bool IsOfUnknownCommand(int code)
{
    return code >= 500 && code <= 504;
}

// By the clock on the wall.
Moment Now()
{
    return std::time(nullptr) + LocalAdvance();
}

} // namespace

DWORD FtpConnection::LogIn()
{
    const DWORD code = Run({});
    const char* folder = nullptr;
    curl_easy_getinfo(easy_.get(), CURLINFO_FTP_ENTRY_PATH, &folder);
    // Any other name may mean another folder once the connection is in another.
    const bool isKnown = folder != nullptr && folder[0] == '/' && IsPlain(folder);
    entryFolder_ = isKnown ? folder : "";
    return code;
}

DWORD FtpConnection::ReturnToEntry(const std::string& path)
{
    if (isAtEntry_ || path.starts_with('/'))
        return 0;
    if (!entryFolder_.empty())
    {
        const DWORD code = Run({.commands = {Refusable("CWD " + entryFolder_)}});
        if (code != 0)
            return code;
        isAtEntry_ = !Reply().IsRefusal();
        if (isAtEntry_)
            return 0;
    }
    // A guess may be a folder with other files of the same names. A new login is never elsewhere.
    Leave();
    SetUp();
    const DWORD code = LogIn();
    isAtEntry_ = code == 0;
    return code;
}

DWORD FtpConnection::Command(const char* word, std::string path)
{
    DWORD code = Spell(path);
    if (code == 0)
        code = ReturnToEntry(path);
    if (code == 0)
        code = Run({.commands = {Refusable(word + (" " + AsWritten(path)))}});
    if (code != 0)
        return code;
    return Reply().IsRefusal() ? ERROR_INTERNET_EXTENDED_ERROR : 0;
}

// ---- Names with the byte that begins commands to a terminal ----

DWORD FtpConnection::Spell(std::string& path)
{
    if (path.find(terminalByte) == std::string::npos)
        return 0;
    const DWORD code = terminalByte_ ? 0 : AskForSpelling();
    if (code != 0 || *terminalByte_ == TerminalByte::Plain)
        return code;
    for (std::size_t at = 0; (at = path.find(terminalByte, at)) != std::string::npos; at += 2)
        path.insert(at, 1, terminalByte);
    return 0;
}

// Before a name that could be read as another one is sent. Whoever obeys a terminal finds the
// command around an interruption, and not around the same with the byte doubled. To all others both
// are commands that nobody knows. Not ahead of the command, where some know an interruption who
// take the byte for a part of a name.
DWORD FtpConnection::AskForSpelling()
{
    bool obeys = false;
    bool obeysDoubled = false;
    DWORD code = Try("NO\xFF\xF4OP", obeys);
    if (code == 0 && obeys)
        code = Try("NO\xFF\xFF\xF4OP", obeysDoubled);
    if (code != 0)
        return code;
    // Such a one reads no spelling rightly.
    if (obeysDoubled)
        return ERROR_INVALID_PARAMETER;
    terminalByte_ = obeys ? TerminalByte::Doubled : TerminalByte::Plain;
    return 0;
}

// Any answer but that it is done, or that there is no such command, tells nothing.
DWORD FtpConnection::Try(const std::string& command, bool& isKnown)
{
    const DWORD code = Run({.commands = {Refusable(command)}});
    if (code != 0)
        return code;
    isKnown = !Reply().IsRefusal();
    return isKnown || IsOfUnknownCommand(Reply().code) ? 0 : ERROR_INTERNET_EXTENDED_ERROR;
}

// ---- Listings ----

DWORD FtpConnection::ChangeFolder(std::string folder)
{
    DWORD code = Spell(folder);
    if (code == 0)
        code = ReturnToEntry(folder);
    if (code != 0 || folder.empty())
        return code;
    isAtEntry_ = false;
    code = Run({.commands = {Refusable("CWD " + AsWritten(folder))}});
    if (code != 0)
        return code;
    return Reply().IsRefusal() ? ERROR_INTERNET_EXTENDED_ERROR : 0;
}

DWORD FtpConnection::List(const std::string& folder, std::vector<ListedEntry>& entries,
                          bool& isMissing)
{
    constexpr int attempts = 2;
    DWORD code = 0;
    for (int i = 0; i < attempts; ++i)
    {
        isRenewed_ = false;
        isMissing = false;
        code = ChangeFolder(folder);
        isMissing = code == ERROR_INTERNET_EXTENDED_ERROR && Reply().code / 100 == 5;
        if (code == 0)
            code = ListHere(entries);
        if (!isRenewed_)
            break;
    }
    return code;
}

bool FtpConnection::WasRefusedBeforeData() const
{
    // What is refused on the way to it, such as a data connection, says nothing of the command.
    constexpr int unavailable = 421;
    // The library takes a 450 for an empty folder.
    const bool isOfCommand = result_ == CURLE_OK || result_ == CURLE_FTP_COULDNT_RETR_FILE;
    return isOfCommand && !isRenewed_ && !replies_.HasBegun() && Reply().IsRefusal() &&
           Reply().code != unavailable;
}

DWORD FtpConnection::ListHere(std::vector<ListedEntry>& entries)
{
    if (knowsFacts_)
    {
        const DWORD code = Fetch(ListingForm::Facts, "MLSD", entries);
        if (!WasRefusedBeforeData())
            return code;
        // And not this folder that is refused.
        knowsFacts_ = !IsOfUnknownCommand(Reply().code);
    }
    // An argument may be taken for a name, of which there is nothing to be listed.
    const DWORD code = Fetch(ListingForm::Lines, "LIST -a", entries);
    const bool isPlainNeeded = code == 0 ? entries.empty() : WasRefusedBeforeData();
    return isPlainNeeded && !isRenewed_ ? Fetch(ListingForm::Lines, "LIST", entries) : code;
}

DWORD FtpConnection::Fetch(ListingForm form, const char* command, std::vector<ListedEntry>& entries)
{
    ListingReader reader(form, Now());
    listing_ = &reader;
    DWORD code = Run({.transfer = Transfer::Listing, .listing = command});
    listing_ = nullptr;
    isRenewed_ = hasConnected_;
    if (isRenewed_)
        code = code != 0 ? code : ERROR_INTERNET_CONNECTION_RESET;
    if (code == 0)
        entries = reader.Finish();
    return code;
}

// ---- Transfers ----

DWORD FtpConnection::BeginTransfer(Transfer transfer, std::string path)
{
    DWORD code = Spell(path);
    if (code == 0)
        code = ReturnToEntry(path);
    if (code != 0)
        return code;
    Start({.transfer = transfer, .path = AsFile(path)});
    code = DriveUntil([this] { return replies_.HasBegun(); });
    if (code != 0)
        transfer_ = Transfer::None;
    return code;
}

DWORD FtpConnection::BeginDownload(const std::string& path)
{
    return BeginTransfer(Transfer::Download, path);
}

DWORD FtpConnection::BeginUpload(const std::string& path)
{
    return BeginTransfer(Transfer::Upload, path);
}

DWORD FtpConnection::Read(std::span<char> buffer, std::size_t& read)
{
    const std::size_t kept = std::min(rest_.size() - restBegin_, buffer.size());
    std::copy_n(rest_.data() + restBegin_, kept, buffer.data());
    restBegin_ += kept;
    if (restBegin_ == rest_.size())
    {
        rest_.clear();
        restBegin_ = 0;
    }
    room_ = buffer.subspan(kept);
    DWORD code = 0;
    if (!room_.empty())
    {
        isReading_ = true;
        Resume();
        code = DriveUntil([this] { return room_.empty(); });
        isReading_ = false;
    }
    read = code == 0 ? buffer.size() - room_.size() : 0;
    room_ = {};
    return code;
}

DWORD FtpConnection::Write(std::span<const char> bytes)
{
    toSend_ = bytes;
    Resume();
    const DWORD code = DriveUntil([this] { return toSend_.empty(); });
    const bool isAllGone = std::exchange(toSend_, {}).empty();
    return code == 0 && !isAllGone ? ERROR_INTERNET_CONNECTION_RESET : code;
}

DWORD FtpConnection::EndTransfer()
{
    DWORD code = 0;
    if (transfer_ == Transfer::Upload)
    {
        isAtEnd_ = true;
        Resume();
        code = DriveUntil([] { return false; });
    }
    else if (isActive_)
    {
        Cut();
    }
    transfer_ = Transfer::None;
    return code;
}

} // namespace tarnwell::posix
