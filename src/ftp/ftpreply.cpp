#include "ftp/ftpreply.h"

#include "frame/exception.h"
#include "frame/status.h"
#include "frame/text.h"
#include "frame/trim.h"
#include "ftp/ftpuri.h"

#include <array>
#include <optional>

namespace tarnwell
{

namespace
{

struct Reply
{
    DWORD number = 0; // the server's own
    std::u16string text;
};

std::optional<Reply> LastReply()
{
    std::array<char16_t, 1024> units{};
    DWORD length = sizeof units / sizeof units[0] - 1;
    Reply reply;
    if (!InternetGetLastResponseInfoW(&reply.number, Wide(units.data()), &length))
        return std::nullopt;
    reply.text = units.data();
    return reply;
}

bool BeginsWithDigit(std::u16string_view text)
{
    return !text.empty() && text.front() >= u'0' && text.front() <= u'9';
}

} // namespace

std::u16string ReadLastResponse()
{
    const std::optional<Reply> reply = LastReply();
    return reply ? std::u16string(Trimmed(reply->text)) : std::u16string();
}

bool WasRefused(DWORD error)
{
    // The code of a server that closes the connection.
    constexpr std::u16string_view unavailable = u"421";
    return error == ERROR_INTERNET_EXTENDED_ERROR && !ReadLastResponse().starts_with(unavailable);
}

bool ResponseSaysExists()
{
    constexpr std::int32_t existsAlready = 521;
    const std::optional<Reply> reply = LastReply();
    if (!reply)
        return false;
    return reply->text.find(u"exists") != std::u16string::npos ||
           reply->text.find(u"Create directory operation failed") != std::u16string::npos ||
           (BeginsWithDigit(reply->text) && LeadingNumber(reply->text) == existsAlready);
}

void ThrowInternetError(DWORD error, const std::u16string& text)
{
    const std::optional<Reply> reply = LastReply();
    const HRESULT status = StatusFromError(error);
    if (!reply)
        throw ComException(status, text, At(ftpSource));
    const std::u16string_view lines = Trimmed(reply->text);
    const std::u16string lastLine(lines.substr(lines.rfind(u'\n') + 1));
    throw ComException(
        status,
        FormatMessageById(MessageId::ServerResponse, {text, Decimal(reply->number), lastLine}),
        At(ftpSource));
}

void ThrowInternetError(DWORD error, MessageId id, Inserts inserts)
{
    ThrowInternetError(error, FormatMessageById(id, inserts));
}

void ThrowLastInternetError(MessageId id, const std::u16string& insert)
{
    const DWORD error = GetLastError();
    ThrowInternetError(error, id, {insert});
}

} // namespace tarnwell
