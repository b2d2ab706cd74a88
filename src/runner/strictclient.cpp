#include "runner/strictclient.h"

#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "frame/trim.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

bool Fits(const StrictPhrase& phrase, std::u16string_view line)
{
    return line.size() >= phrase.beginning.size() + phrase.ending.size() &&
           line.starts_with(phrase.beginning) && line.ends_with(phrase.ending);
}

} // namespace

StrictFailure StrictFailureOf(std::u16string_view words, std::span<const StrictPhrase> phrases)
{
    while (!words.empty())
    {
        const std::u16string_view line = words.substr(0, words.find(u'\n'));
        words.remove_prefix(std::min(words.size(), line.size() + 1));
        const auto found = std::find_if(phrases.begin(), phrases.end(), [&](const auto& phrase) {
            return Fits(phrase, Trimmed(line));
        });
        if (found != phrases.end())
            return found->failure;
    }
    return otherFailure;
}

void ThrowIfStrictFailed(const ClientRow& row, const ClientOutcome& outcome,
                         std::span<const StrictPhrase> phrases, const StrictSubject& subject)
{
    if (outcome.exitCode == 0)
        return;
    const StrictFailure failure = StrictFailureOf(outcome.errors, phrases);
    const bool isRevision = failure.status == HistoryNoRevision;
    throw ComException(
        failure.status,
        FormatMessageById(failure.message, {isRevision ? subject.revision : subject.address,
                                            std::u16string(Trimmed(outcome.errors)),
                                            Decimal(static_cast<std::uint32_t>(outcome.exitCode))}),
        At(row.source));
}

void ThrowStrictFailure(const char16_t* source, const StrictFailure& failure,
                        const std::u16string& insert, const std::u16string& words)
{
    throw ComException(failure.status,
                       std::u16string(Trimmed(FormatMessageById(failure.message, {insert, words}))),
                       At(source));
}

std::u16string StrictText(const ClientRow& row, std::string_view bytes)
{
    std::u16string text = Decode(bytes, row.decoding);
    if (text.empty() && !bytes.empty())
        ThrowClientFailure(row, row.communication, GetLastError());
    return text;
}

} // namespace tarnwell
