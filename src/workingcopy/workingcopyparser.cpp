#include "workingcopy/workingcopyparser.h"

#include "frame/messages.h"
#include "frame/trim.h"
#include "runner/decoding.h"
#include "runner/numbers.h"
#include "runner/outputfile.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarnwell
{

namespace
{

// Takes the next line from `rest`, without its line feed and without a carriage return at its end.
// Nothing at the end of the input, and where an empty line looks like it.
std::optional<std::string_view> TakeLine(std::string_view& rest)
{
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (line.empty())
        return std::nullopt;
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// Takes lines up to the closing one, which isn't given. Nothing if the input ends, or has an empty
// line, in front of it.
std::optional<std::string_view> TakeDescription(std::string_view& rest)
{
    const std::string_view all = rest;
    for (;;)
    {
        const std::size_t size = all.size() - rest.size();
        const std::optional<std::string_view> line = TakeLine(rest);
        if (!line)
            return std::nullopt;
        if (*line == "!")
            return all.substr(0, size);
    }
}

// A record as it stands in the file.
struct RecordBytes
{
    std::string_view id;
    std::string_view author;
    std::string_view time;
    std::string_view description; // lines
};

// Nothing for a record that breaks off.
std::optional<RecordBytes> TakeRecord(std::string_view& rest)
{
    const auto id = TakeLine(rest);
    const auto author = id ? TakeLine(rest) : std::nullopt;
    const auto time = author ? TakeLine(rest) : std::nullopt;
    const auto description = time ? TakeDescription(rest) : std::nullopt;
    if (!description)
        return std::nullopt;
    return RecordBytes{*id, *author, *time, *description};
}

std::u16string DescriptionOf(std::string_view lines)
{
    std::u16string description;
    while (const std::optional<std::string_view> line = TakeLine(lines))
    {
        if (!description.empty())
            description += u'\n';
        const std::size_t first = line->find_first_not_of(" \r\n\t");
        if (first != std::string_view::npos)
            AppendDecoded(description, line->substr(first), Decoding::Utf8);
    }
    return description;
}

RevisionRecord WorkingCopyRecord(const std::u16string& path)
{
    RevisionRecord record;
    record.description = FormatMessageById(MessageId::WorkingCopy);
    record.uri = path;
    return record;
}

// A client's log, and where its records begin.
class Log
{
public:
    Log(std::string bytes, const std::u16string& path, std::u16string address,
        Descriptions descriptions)
        : bytes_(std::move(bytes)), address_(std::move(address)), descriptions_(descriptions),
          workingCopy_(WorkingCopyRecord(path))
    {
        std::size_t start = 0;
        std::string_view rest = bytes_;
        while (TakeRecord(rest))
            starts_.push_back(std::exchange(start, bytes_.size() - rest.size()));
    }

    std::size_t Size() const
    {
        return starts_.empty() ? 0 : 1 + starts_.size();
    }

    RevisionRecord RecordAt(std::size_t index) const
    {
        if (index == 0)
            return workingCopy_;
        std::string_view rest = std::string_view(bytes_).substr(starts_[index - 1]);
        const RecordBytes bytes = *TakeRecord(rest);
        RevisionRecord record;
        record.id = Decode(bytes.id, Decoding::Utf8);
        record.author = Decode(bytes.author, Decoding::Utf8);
        record.description = DescriptionOf(bytes.description);
        // Its beginning is trimmed already.
        if (descriptions_ == Descriptions::Trimmed)
            record.description.resize(Trimmed(record.description).size());
        record.modifiedTime = UnixTimeToFileTime(Decode(bytes.time, Decoding::Utf8));
        record.revisionTime = record.modifiedTime;
        record.uri = address_ + record.id;
        return record;
    }

private:
    const std::string bytes_;
    const std::u16string address_; // of the file, up to the id
    const Descriptions descriptions_;
    const RevisionRecord workingCopy_;
    std::vector<std::size_t> starts_;
};

} // namespace

RevisionList ReadWorkingCopyLog(std::u16string_view scheme, const std::u16string& path, HANDLE file,
                                Descriptions descriptions)
{
    const auto log = std::make_shared<const Log>(
        ReadOutput(file), path, std::u16string(scheme) + u"://" + path + u"#", descriptions);
    return {log->Size(), [log](std::size_t index) {
                return log->RecordAt(index);
            }};
}

} // namespace tarnwell
