#include "history.h"

#include "asked.h"
#include "output.h"
#include "revisionlines.h"
#include "text16.h"
#include "times.h"

#include <tarnwell/client/filesystem.hpp>

#include <algorithm>
#include <chrono>

namespace tarnwell::host
{

namespace
{

using Clock = std::chrono::steady_clock;

inline constexpr auto flushEvery = std::chrono::milliseconds(100);

// Numbers that are too large mean all.
std::uint32_t NumberIn(const std::optional<std::u16string>& digits, std::uint32_t other)
{
    if (!digits)
        return other;
    std::uint64_t number = 0;
    for (const char16_t digit : *digits)
        number = std::min<std::uint64_t>(number * 10 + (digit - u'0'), 0xFFFFFFFF);
    return static_cast<std::uint32_t>(number);
}

std::uint64_t TimeIn(const std::optional<std::u16string>& text, DayPart part)
{
    return text ? ParseTime(*text, part).value_or(0) : 0;
}

client::HistoryQuery QueryOf(const CommandLine& line)
{
    client::HistoryQuery query;
    query.skip = NumberIn(line.skip, 0);
    query.count = NumberIn(line.count, 0);
    query.since = TimeIn(line.since, DayPart::Begin);
    query.until = TimeIn(line.until, DayPart::End);
    query.follow = line.follow;
    query.workingCopy = line.workingCopy;
    return query;
}

RevisionFacts FactsOf(const client::HistoryEntry& entry)
{
    const auto text = [](const std::string& value) {
        return Known(client::Utf16(value));
    };
    return {text(entry.id),
            text(entry.description),
            text(entry.author),
            Known(entry.modifiedTime),
            Known(entry.revisionTime),
            text(entry.address),
            client::Utf16(entry.path)};
}

// Prints revisions without letting anybody wait for what is there.
class Lines
{
public:
    explicit Lines(bool json) : json_(json) {}

    bool Take(const client::HistoryEntry& entry)
    {
        PrintRevision(FactsOf(entry), json_);
        ++count_;
        Flush();
        return true;
    }

    bool GoesOn()
    {
        Flush();
        return host::GoesOn();
    }

    std::size_t Count() const
    {
        return count_;
    }

private:
    void Flush()
    {
        const Clock::time_point now = Clock::now();
        if (now - flushed_ < flushEvery)
            return;
        FlushOutput();
        flushed_ = now;
    }

    const bool json_;
    std::size_t count_ = 0;
    // Long ago: the first one is printed at once.
    Clock::time_point flushed_{};
};

// Why there is nothing, where nothing has failed.
std::u16string WhyNone(const CommandLine& line)
{
    std::u16string options(line.follow ? u"--follow" : u"");
    for (const auto& [name, value] :
         {std::pair(u"-n", &line.count), std::pair(u"--skip", &line.skip),
          std::pair(u"--since", &line.since), std::pair(u"--until", &line.until)})
    {
        if (*value)
            options += (options.empty() ? u"" : u", ") + (name + (u" " + **value));
    }
    return options.empty() ? Say(Word::NoRevisions) : Say(Word::NoRevisionsLeft, {options});
}

} // namespace

bool HasHistory(const Session& session, const Place& place)
{
    return !session.line.prescribed && client::FileSystem(place.fileSystem).HasHistory();
}

std::size_t PrintHistory(const Session& session, const Place& place)
{
    client::HistoryQuery query = QueryOf(session.line);
    // To the module 0 is all.
    const bool wantsNone = session.line.count && query.count == 0;
    query.count = wantsNone ? 1 : query.count;
    Lines lines(session.line.json);
    const auto take = [&](const client::HistoryEntry& entry) {
        return !wantsNone && lines.Take(entry);
    };
    Asked([&] {
        client::FileSystem(place.fileSystem).ReadHistory(place.address.text, query, take, [&] {
            return lines.GoesOn();
        });
    });
    if (lines.Count() == 0 && !session.line.json)
        Print(WhyNone(session.line) + u"\n");
    return lines.Count();
}

} // namespace tarnwell::host
