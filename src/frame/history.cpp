#include "frame/history.h"

#include "frame/text.h"

#include <algorithm>

namespace tarnwell
{

namespace
{

HistoryOptions Checked(const HistoryOptions* given, const char16_t* source)
{
    constexpr std::uint32_t knownFlags = HistoryFollow | HistoryWorkingCopy;
    constexpr std::uint64_t firstTime = 1;
    if (given == nullptr)
        return {};
    if (given->size != sizeof *given || (given->flags & ~knownFlags) != 0)
    {
        throw ComException(E_INVALIDARG, FormatMessageById(MessageId::InvalidHistoryOptions),
                           At(source));
    }
    HistoryOptions options = *given;
    options.since = InWholeSeconds(options.since);
    // 0 would be no bound.
    options.until = std::max(InWholeSeconds(options.until), std::min(options.until, firstTime));
    return options;
}

} // namespace

bool HistoryTaker::Take(const HistoryRecord& record)
{
    const HistoryRevision revision{
        Wide(record.id),   Wide(record.author), Wide(record.description), Wide(record.address),
        Wide(record.path), record.modifiedTime, record.revisionTime};
    const HRESULT answer = sink_->Take(&revision);
    if (FAILED(answer))
        status_ = answer;
    return answer == S_OK;
}

HRESULT ReadHistoryForHost(const Reporter& reporter, const char16_t* source, const OLECHAR* path,
                           const OLECHAR* revision, const HistoryOptions* options,
                           IHistorySink* sink, const HistoryReader& read)
{
    if (sink == nullptr)
        return RefuseNull(reporter, NullPointer::Published);
    return AtBoundary(reporter, [&] {
        HistoryQuestion question{FromHost(path), std::nullopt, Checked(options, source)};
        if (revision != nullptr)
            question.revision = FromHost(revision);
        const auto held = ComPtr<IHistorySink>::Share(sink);
        Patience patience(sink, source);
        HistoryTaker taker(sink, patience);
        read(question, taker);
        return taker.Status();
    });
}

} // namespace tarnwell
