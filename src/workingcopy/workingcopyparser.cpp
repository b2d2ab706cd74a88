#include "workingcopy/workingcopyparser.h"

#include "frame/messages.h"
#include "frame/trim.h"
#include "runner/bufferedreader.h"
#include "runner/numbers.h"

#include <optional>

namespace tarnwell
{

namespace
{

// Nothing if the input ends, or has an empty line, in front of the closing line.
std::optional<std::u16string> ReadDescription(BufferedReader& reader)
{
    std::u16string description;
    std::u16string line;
    while (reader.ReadLine(line))
    {
        if (line == u"!")
            return description;
        if (!description.empty())
            description += u'\n';
        description += TrimmedLeft(line);
    }
    return std::nullopt;
}

std::optional<RevisionRecord> ReadRecord(BufferedReader& reader, Descriptions descriptions)
{
    RevisionRecord record;
    std::u16string time;
    if (!reader.ReadLine(record.id) || !reader.ReadLine(record.author) || !reader.ReadLine(time))
        return std::nullopt;
    std::optional<std::u16string> description = ReadDescription(reader);
    if (!description)
        return std::nullopt;
    if (descriptions == Descriptions::Trimmed)
        description->assign(Trimmed(*description));
    record.description = std::move(*description);
    record.modifiedTime = UnixTimeToFileTime(time);
    record.revisionTime = record.modifiedTime;
    return record;
}

RevisionRecord WorkingCopyRecord(const std::u16string& path)
{
    RevisionRecord record;
    record.description = FormatMessageById(MessageId::WorkingCopy);
    record.uri = path;
    return record;
}

} // namespace

std::vector<RevisionRecord> ReadWorkingCopyLog(std::u16string_view scheme,
                                               const std::u16string& path, HANDLE file,
                                               Descriptions descriptions)
{
    const std::u16string address = std::u16string(scheme) + u"://" + path + u"#";
    BufferedReader reader(file, Decoding::Utf8);
    std::vector<RevisionRecord> records;
    while (std::optional<RevisionRecord> record = ReadRecord(reader, descriptions))
    {
        if (records.empty())
            records.push_back(WorkingCopyRecord(path));
        record->uri = address + record->id;
        records.push_back(std::move(*record));
    }
    return records;
}

} // namespace tarnwell
