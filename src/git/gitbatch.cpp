#include "git/gitbatch.h"

#include <algorithm>
#include <new>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view batchCommand = u"cat-file --batch-command";
// So many questions go out before the first answer is read: few enough to fit into the pipe.
constexpr std::size_t questionsAtOnce = 64;

class TextTaker final : public ContentTaker
{
public:
    explicit TextTaker(std::string& bytes) : bytes_(bytes) {}

    void Restart() override
    {
        bytes_.clear();
    }
    void Take(std::string_view bytes) override
    {
        if (bytes.size() > mostRecordBytes - bytes_.size())
            throw std::bad_alloc();
        bytes_ += bytes;
    }

private:
    std::string& bytes_;
};

} // namespace

std::vector<GitObject> GitBatch::Facts(const std::vector<std::string>& names, Patience& patience)
{
    std::vector<GitObject> found;
    Ask(
        [&](Session& session) {
            found.clear();
            while (found.size() < names.size())
            {
                const std::size_t end = std::min(names.size(), found.size() + questionsAtOnce);
                std::string questions;
                for (std::size_t i = found.size(); i < end; ++i)
                    questions += "info " + names[i] + "\n";
                session.Tell(questions);
                while (found.size() < end)
                    found.push_back(ReadFacts(session, patience));
            }
        },
        patience);
    return found;
}

GitObject GitBatch::Content(const std::string& name, ContentTaker& taker, Patience& patience)
{
    GitObject found;
    Ask(
        [&](Session& session) {
            taker.Restart();
            session.Tell("contents " + name + "\n");
            found = ReadFacts(session, patience);
            if (found.type.empty())
                return;
            taker.Expect(found.size);
            for (std::uint64_t left = found.size; left > 0;)
            {
                const std::string_view block = session.ReadSome(patience).substr(0, left);
                taker.Take(block);
                session.position += block.size();
                left -= block.size();
            }
            if (!session.ReadLine(patience).empty())
                ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
        },
        patience);
    return found;
}

GitObject GitBatch::Content(const std::string& name, std::string& bytes, Patience& patience)
{
    TextTaker taker(bytes);
    return Content(name, taker, patience);
}

void GitBatch::Ask(const std::function<void(Session&)>& question, Patience& patience)
{
    patience.Ask();
    for (int tries = 2; tries > 0; --tries)
    {
        // Who breaks off leaves half an answer behind, with which it goes.
        std::unique_ptr<Session> session = std::move(session_);
        if (!session)
            session = std::make_unique<Session>(StrictGitCall(item_.place, batchCommand));
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
            ThrowIfGitFailed(session->client.Finish(patience), item_);
            ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
        }
    }
}

void GitBatch::Session::Tell(const std::string& questions)
{
    if (!client.Write(questions))
        throw Gone();
}

std::string_view GitBatch::Session::ReadSome(Patience& patience)
{
    if (position == bytes.size())
    {
        bytes = client.Read(patience);
        position = 0;
        if (bytes.empty())
            throw Gone();
    }
    return std::string_view(bytes).substr(position);
}

std::string GitBatch::Session::ReadLine(Patience& patience)
{
    std::string line;
    for (;;)
    {
        const std::string_view block = ReadSome(patience);
        const std::size_t feed = block.find('\n');
        line += block.substr(0, feed);
        position += std::min(block.size(), feed == std::string_view::npos ? feed : feed + 1);
        // One that is too long is none of the client's, and isn't read to its end.
        if (feed != std::string_view::npos || line.size() > mostRecordBytes)
            return line;
    }
}

GitObject GitBatch::ReadFacts(Session& session, Patience& patience) const
{
    const std::string line = session.ReadLine(patience);
    if (const auto facts = ReadGitObjectLine(line))
        return {std::string(facts->id), std::string(facts->type), facts->size};
    if (line.ends_with(" missing") || line.ends_with(" ambiguous"))
        return {};
    ThrowStrictFailure(strictGit.source, badAnswer, item_.address);
}

} // namespace tarnwell
