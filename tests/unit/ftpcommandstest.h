// What is asked of a server about folders, by a session of its own.
#pragma once

#include "ftp/ftpcommands.h"
#include "unit/ftptest.h"

namespace tarnwell::test
{

inline constexpr DWORD folderBit = FILE_ATTRIBUTE_DIRECTORY;

class FtpCommands : public FtpTest
{
protected:
    FSItems List(const std::u16string& address)
    {
        return FtpList(session, user, FTPUri(address));
    }
    std::vector<std::u16string> Addresses(const std::u16string& address)
    {
        std::vector<std::u16string> texts;
        for (const auto& item : List(address))
            texts.push_back(item->text);
        return texts;
    }
    std::u16string Found(const std::u16string& address)
    {
        return FtpFind(session, user, FTPUri(address))->text;
    }
    std::optional<FtpFailure> Listing(const std::u16string& address)
    {
        return FailureOf([&] { List(address); });
    }
    std::optional<FtpFailure> Finding(const std::u16string& address)
    {
        return FailureOf([&] { Found(address); });
    }
    std::optional<FtpFailure> Creating(const std::u16string& address, bool recursive)
    {
        return FailureOf([&] { FtpCreateFolder(session, user, FTPUri(address), recursive); });
    }
    std::optional<FtpFailure> Deleting(const std::u16string& address, bool recursive)
    {
        return FailureOf([&] { FtpDeleteItem(session, user, FTPUri(address), recursive); });
    }
    bool IsConnected() const
    {
        return !internet.Open().empty();
    }
    // The calls from here on, without those that connect.
    std::vector<std::u16string> Asked()
    {
        std::vector<std::u16string> calls = internet.Calls();
        std::erase_if(calls, [](const std::u16string& call) {
            return call.starts_with(u"open") || call.starts_with(u"connect");
        });
        internet.ForgetCalls();
        return calls;
    }

    FTPSession session{{u"u", u"p", u"h", 21}};
};

} // namespace tarnwell::test
