// The host program on real FTP servers.
#pragma once

#include "e2e/hostrun.h"
#include "support/ftp/posix/realserver.h"

#include <gmock/gmock.h>

#include <tarnwell/text.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwell::test
{

class FtpHost : public testing::TestWithParam<FtpServerKind>
{
protected:
    FtpHost()
    {
        // Neither the root nor in it: to one of the servers that is the machine's own, and not the
        // login folder.
        for (const std::filesystem::path& path : {Stored({}).parent_path(), Stored({})})
        {
            std::filesystem::create_directory(path);
            // The server may be somebody else.
            std::filesystem::permissions(path, std::filesystem::perms::all);
        }
    }

    std::u16string Address(const std::u16string& path) const
    {
        return u"ftp://" + server.Host() + u"/w/t" + (path.empty() ? u"" : u"/" + path);
    }
    // Where the server keeps it.
    std::filesystem::path Stored(const std::u16string& path) const
    {
        const std::filesystem::path whole = server.Folder() / "w" / "t";
        return path.empty() ? whole : whole / EncodeName(path).value();
    }
    // With the options that log on in front.
    std::vector<std::u16string> LoggedOn(const std::vector<std::u16string>& arguments) const
    {
        std::vector<std::u16string> all = {u"--user", u"ftp",      u"--password",
                                           u"secret", u"--server", server.Host()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return all;
    }
    HostRun Run(const std::vector<std::u16string>& arguments) const
    {
        return RunHost(LoggedOn(arguments));
    }
    // What it prints, which must be all.
    std::string Printed(const std::vector<std::u16string>& arguments) const
    {
        const HostRun run = Run(arguments);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.exitCode, 0);
        return run.output;
    }

    const RealFtpServer server{GetParam()};
    const TempFolder folder;
};

} // namespace tarnwell::test
