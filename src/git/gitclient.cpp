#include "git/gitclient.h"

#include "runner/feed.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

// The client has ended.
struct Gone
{
};

} // namespace

void GitClient::Ask(const std::function<void(Session&)>& question, Patience& patience)
{
    patience.Ask();
    for (int tries = 2; tries > 0; --tries)
    {
        // Who breaks off leaves half an answer behind, with which it goes.
        std::unique_ptr<Session> session = std::move(session_);
        if (!session)
            session = std::make_unique<Session>(makeCall_(patience));
        try
        {
            question(*session);
            session_.swap(session);
            return;
        }
        catch (const Gone&)
        {
            // Told below, if it happens again.
        }
        if (tries == 1)
        {
            ThrowIfGitFailed(session->Client().Finish(patience), item_);
            ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
        }
    }
}

void GitClient::Session::Tell(const std::string& questions)
{
    if (!client_.Write(questions))
        throw Gone();
}

std::string_view GitClient::Session::ReadSome(Patience& patience)
{
    if (position_ == bytes_.size())
    {
        bytes_ = client_.Read(patience);
        position_ = 0;
        if (bytes_.empty())
            throw Gone();
    }
    return std::string_view(bytes_).substr(position_);
}

std::string GitClient::Session::ReadLine(Patience& patience)
{
    std::string line;
    for (;;)
    {
        const std::string_view block = ReadSome(patience);
        const std::size_t feed = block.find('\n');
        line += block.substr(0, feed);
        Take(std::min(block.size(), feed == std::string_view::npos ? feed : feed + 1));
        // One that is too long is none of the client's, and isn't read to its end.
        if (feed != std::string_view::npos || line.size() > mostRecordBytes)
            return line;
    }
}

} // namespace tarnwell
