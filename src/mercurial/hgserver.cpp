#include "mercurial/hgserver.h"

#include "runner/feed.h"

#include <algorithm>
#include <new>

namespace tarnwell
{

namespace
{

// Of a very long error text the beginning will do.
constexpr std::size_t mostErrors = std::size_t{64} * 1024;

void Append(std::string& text, std::string_view bytes)
{
    if (bytes.size() > mostRecordBytes - text.size())
        throw std::bad_alloc();
    text += bytes;
}

} // namespace

ClientOutcome HgServer::Run(const std::vector<std::string>& arguments, const HgOutput& output,
                            const std::function<void()>& restart, Patience& patience)
{
    patience.Ask();
    for (int tries = restart ? 2 : 1; tries > 0; --tries)
    {
        // Who breaks off leaves half an answer behind, with which it goes.
        std::unique_ptr<Session> session = std::move(session_);
        try
        {
            if (!session)
            {
                session = std::make_unique<Session>(HgServerCall(item_, patience));
                ReadGreeting(*session, patience);
            }
            ClientOutcome outcome = RunOnce(session, arguments, output, patience);
            session_.swap(session);
            return outcome;
        }
        catch (const Gone&)
        {
            // Told below, if it happens again.
        }
        if (tries == 1)
            ThrowIfHgFailed(session->client.Finish(patience), item_);
        else
            restart();
    }
    ThrowBadAnswer();
}

std::string HgServer::Answer(const std::vector<std::string>& arguments, Patience& patience)
{
    std::string answer;
    const auto take = [&](std::string_view bytes) {
        Append(answer, bytes);
        return true;
    };
    ThrowIfHgFailed(Run(
                        arguments, take, [&] { answer.clear(); }, patience),
                    item_);
    return answer;
}

void HgServer::ReadGreeting(Session& session, Patience& patience) const
{
    std::string greeting;
    for (;;)
    {
        const HgPiece piece = ReadPiece(session, patience);
        if (piece.channel != 'o')
            ThrowBadAnswer();
        Append(greeting, piece.bytes);
        if (piece.isWhole)
            break;
    }
    if (!IsHgGreeting(greeting))
        ThrowBadAnswer();
}

HgPiece HgServer::ReadPiece(Session& session, Patience& patience) const
{
    for (;;)
    {
        if (const std::optional<HgPiece> piece = session.channels.Next())
            return *piece;
        if (session.channels.IsBroken())
            ThrowBadAnswer();
        session.bytes = session.client.Read(patience);
        if (session.bytes.empty())
            throw Gone();
        session.channels.Feed(session.bytes);
    }
}

ClientOutcome HgServer::RunOnce(std::unique_ptr<Session>& session,
                                const std::vector<std::string>& arguments, const HgOutput& output,
                                Patience& patience) const
{
    session->client.Write(HgCommandMessage(arguments));
    std::string errors;
    std::string result;
    for (;;)
    {
        const HgPiece piece = ReadPiece(*session, patience);
        switch (piece.channel)
        {
        case 'o':
            if (!output(piece.bytes))
            {
                session.reset();
                return {0, {}};
            }
            break;
        case 'e':
            errors += piece.bytes.substr(0, mostErrors - std::min(mostErrors, errors.size()));
            break;
        case 'r':
            result += piece.bytes.substr(0, 5);
            break;
        case 'I':
        case 'L':
            session->client.Write(noHgInput);
            break;
        default:
            break;
        }
        if (piece.channel == 'r' && piece.isWhole)
            break;
    }
    const std::optional<std::int32_t> code = ReadHgResult(result);
    if (!code)
        ThrowBadAnswer();
    return {*code, HgText(errors)};
}

void HgServer::ThrowBadAnswer() const
{
    ThrowStrictFailure(strictHg.source, badAnswer, item_.address);
}

} // namespace tarnwell
