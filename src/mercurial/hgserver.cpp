#include "mercurial/hgserver.h"

#include <algorithm>
#include <new>

namespace tarnwell
{

namespace
{

// Nothing that is read as a whole is longer.
constexpr std::size_t mostBytes = std::size_t{1024} * 1024 * 1024;
// Of a very long error text the beginning will do.
constexpr std::size_t mostErrors = std::size_t{64} * 1024;

void Append(std::string& text, std::string_view bytes)
{
    if (bytes.size() > mostBytes - text.size())
        throw std::bad_alloc();
    text += bytes;
}

} // namespace

ClientOutcome HgServer::Run(const std::vector<std::string>& arguments, const HgOutput& output,
                            const std::function<void()>& restart, Patience& patience)
{
    patience.Ask();
    for (bool mayDie = static_cast<bool>(restart);; mayDie = false)
    {
        try
        {
            if (!client_)
                Start(patience);
            return RunOnce(arguments, output, patience);
        }
        catch (const Gone&)
        {
            // Told below, if it happens again.
        }
        catch (...)
        {
            // Who breaks off leaves half an answer behind.
            client_.reset();
            throw;
        }
        const std::unique_ptr<RunningClient> gone = std::move(client_);
        if (!mayDie)
        {
            ThrowIfHgFailed(gone->Finish(patience), item_);
            ThrowBadAnswer();
        }
        restart();
    }
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

void HgServer::Start(Patience& patience)
{
    client_ = std::make_unique<RunningClient>(strictHg, HgServerCall(item_, patience));
    channels_ = {};
    bytes_.clear();
    channels_.Feed(bytes_);
    std::string greeting;
    for (;;)
    {
        const HgPiece piece = ReadPiece(patience);
        if (piece.channel != 'o')
            ThrowBadAnswer();
        Append(greeting, piece.bytes);
        if (piece.isWhole)
            break;
    }
    if (!IsHgGreeting(greeting))
        ThrowBadAnswer();
}

HgPiece HgServer::ReadPiece(Patience& patience)
{
    for (;;)
    {
        if (const std::optional<HgPiece> piece = channels_.Next())
            return *piece;
        if (channels_.IsBroken())
            ThrowBadAnswer();
        bytes_ = client_->Read(patience);
        if (bytes_.empty())
            throw Gone();
        channels_.Feed(bytes_);
    }
}

ClientOutcome HgServer::RunOnce(const std::vector<std::string>& arguments, const HgOutput& output,
                                Patience& patience)
{
    client_->Write(HgCommandMessage(arguments));
    std::string errors;
    std::string result;
    for (;;)
    {
        const HgPiece piece = ReadPiece(patience);
        switch (piece.channel)
        {
        case 'o':
            if (!output(piece.bytes))
            {
                client_.reset();
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
            client_->Write(noHgInput);
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
