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

GitBatch::GitBatch(const PlacedItem& item)
    : item_(item),
      client_(item, [place = item.place](Patience&) { return StrictGitCall(place, batchCommand); })
{
}

std::vector<GitObject> GitBatch::Facts(const std::vector<std::string>& names, Patience& patience)
{
    std::vector<GitObject> found;
    client_.Ask(
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
    client_.Ask(
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
                session.Take(block.size());
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
