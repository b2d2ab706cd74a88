// Any bytes as what Mercurial's command server says, whole and in pieces.
#include "mercurial/hgchannels.h"
#include "mercurial/hgstrict.h"
#include "support/target.h"

#include <algorithm>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

struct Message
{
    char channel;
    std::string text;
    std::uint32_t wanted;

    friend bool operator==(const Message&, const Message&) = default;
};

struct Read
{
    std::vector<Message> messages;
    bool isBroken;
    bool isBetween;

    friend bool operator==(const Read&, const Read&) = default;
};

Read ReadIn(std::string_view bytes, std::size_t piece)
{
    HgChannels channels;
    Read read{};
    bool isNew = true;
    while (!bytes.empty())
    {
        channels.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (const std::optional<HgPiece> next = channels.Next())
        {
            if (isNew)
                read.messages.push_back({next->channel, {}, next->wanted});
            read.messages.back().text += next->bytes;
            isNew = next->isWhole;
        }
    }
    read.isBroken = channels.IsBroken();
    read.isBetween = channels.IsBetween();
    return read;
}

} // namespace

void Try(std::string_view bytes)
{
    const Read whole = ReadIn(bytes, bytes.size());
    Expect(whole == ReadIn(bytes, 1) && whole == ReadIn(bytes, 7),
           "pieces are read as the whole is");
    std::size_t size = 0;
    for (const Message& message : whole.messages)
    {
        size += 5 + message.text.size();
        Expect(message.text.empty() || (message.channel >= 'a' && message.channel <= 'z'),
               "a wish has no text");
    }
    Expect(size <= bytes.size(), "nothing is made up");
    Expect(whole.isBroken || !whole.isBetween || size == bytes.size(), "nothing is left out");
    IsHgGreeting(bytes);
    LeavesHgSettings(bytes);
    Expect(ReadHgResult(bytes).has_value() == (bytes.size() == 4), "a result has one size");
    const std::string quoted = HgQuoted(bytes);
    Expect(quoted.find_first_of("\"{}'$", 1) == quoted.size() - 1, "a name ends where it ends");
}

} // namespace tarnwell::fuzz
