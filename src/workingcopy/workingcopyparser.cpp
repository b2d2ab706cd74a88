#include "workingcopy/workingcopyparser.h"

#include "frame/messages.h"
#include "frame/trim.h"
#include "runner/bufferedreader.h"
#include "runner/numbers.h"

namespace tarnwell
{

namespace
{

// False if the input ends, or has an empty line, in front of the closing line.
bool ReadDescription(BufferedReader& reader, std::u16string& description)
{
    std::u16string line;
    while (reader.ReadLine(line))
    {
        if (line == u"!")
            return true;
        line.erase(0, line.size() - TrimmedLeft(line).size());
        if (description.empty())
            description = std::move(line);
        else
            description.append(1, u'\n').append(line);
    }
    return false;
}

// False for a record that breaks off.
bool ReadRecord(BufferedReader& reader, Descriptions descriptions, RevisionRecord& record)
{
    std::u16string time;
    if (!reader.ReadLine(record.id) || !reader.ReadLine(record.author) || !reader.ReadLine(time) ||
        !ReadDescription(reader, record.description))
        return false;
    // Its beginning is trimmed already.
    if (descriptions == Descriptions::Trimmed)
        record.description.resize(Trimmed(record.description).size());
    record.modifiedTime = UnixTimeToFileTime(time);
    record.revisionTime = record.modifiedTime;
    return true;
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
    std::vector<RevisionRecord> records{WorkingCopyRecord(path)};
    while (ReadRecord(reader, descriptions, records.emplace_back()))
        records.back().uri = address + records.back().id;
    records.pop_back();
    if (records.size() == 1)
        records.clear();
    return records;
}

} // namespace tarnwell
