#include "ftp/ftptree.h"

#include "frame/messages.h"
#include "ftp/ftpcommands.h"
#include "ftp/ftpline.h"
#include "ftp/ftpreply.h"
#include "ftp/ftpuri.h"
#include "platform/ftplinks.h"
#include "platform/wide.h"

#include <algorithm>
#include <vector>

namespace tarnwell
{

namespace
{

// Units of addresses that may wait: 64 MB. A server may show folders in folders without end.
constexpr std::size_t mostWaiting = 32U << 20;

class TreeDeletion
{
public:
    TreeDeletion(FTPSession& session, const HostUIUser& host) : session_(session), host_(host) {}

    void Run(const std::u16string& root)
    {
        Push(root);
        while (!waiting_.empty())
        {
            const FTPUri uri(waiting_.back().address);
            const std::u16string path = uri.GetPath();
            RequireLine(path, MessageId::DeleteFailed);
            if (waiting_.back().isEmptied)
            {
                Check(FtpRemoveDirectoryW(Connection(), Wide(path)), path);
                Pop();
            }
            else if (TriesFtpFoldersAsFiles() && DeleteUnlessFolder(path))
                Pop();
            else
                Enter(uri, path);
        }
    }

private:
    struct Folder
    {
        std::u16string address;
        bool isEmptied = false;
    };

    HINTERNET Connection()
    {
        return session_.Connection(host_);
    }

    // A folder is refused. Any other failure tells nothing of the item, and ends it all.
    bool DeleteUnlessFolder(const std::u16string& path)
    {
        if (FtpDeleteFileW(Connection(), Wide(path)))
            return true;
        const DWORD error = GetLastError();
        if (!WasRefused(error))
            ThrowInternetError(error, MessageId::DeleteFailed, {path});
        return false;
    }

    // The folder at the back: its files go now, and its folders come before it. It is listed to
    // its end first, since a connection has one listing at a time.
    void Enter(const Uri& uri, const std::u16string& path)
    {
        waiting_.back().isEmptied = true;
        const std::size_t first = waiting_.size();
        for (const std::shared_ptr<FSItem>& item : FtpList(session_, host_, uri))
        {
            if (item->isDirectory)
            {
                if (units_ + item->text.size() > mostWaiting)
                    ThrowInternetError(ERROR_NOT_ENOUGH_MEMORY, MessageId::DeleteFailed, {path});
                Push(item->text);
                continue;
            }
            const std::u16string file = FTPUri(item->text).GetPath();
            RequireLine(file, MessageId::DeleteFailed);
            Check(FtpDeleteFileW(Connection(), Wide(file)), file);
        }
        std::reverse(waiting_.begin() + static_cast<std::ptrdiff_t>(first), waiting_.end());
    }

    void Push(const std::u16string& address)
    {
        units_ += address.size();
        waiting_.push_back({address});
    }
    void Pop()
    {
        units_ -= waiting_.back().address.size();
        waiting_.pop_back();
    }

    static void Check(bool done, const std::u16string& path)
    {
        if (!done)
            ThrowLastInternetError(MessageId::DeleteFailed, path);
    }

    FTPSession& session_;
    const HostUIUser& host_;
    std::vector<Folder> waiting_; // the next one at the back
    std::size_t units_ = 0;
};

} // namespace

void FtpDeleteTree(FTPSession& session, const HostUIUser& host, const Uri& uri)
{
    TreeDeletion(session, host).Run(uri.GetText());
}

} // namespace tarnwell
