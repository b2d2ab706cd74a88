#include "perforce/p4parser.h"

#include "frame/text.h"
#include "frame/trim.h"
#include "perforce/p4values.h"
#include "runner/numbers.h"

#include <algorithm>
#include <optional>

namespace tarnwell
{

namespace
{

constexpr std::u16string_view tagStart = u"... ";

// The tags of one file, as far as anybody asks for them.
struct TagBlock
{
    bool isEmpty = true; // no tag at all
    bool isDeleted = false;
    FSItem item;

    void Store(std::u16string_view key, std::u16string_view value);
};

FSItem File()
{
    FSItem item;
    item.modifiedTime = UnixTimeToFileTime({});
    item.isReadOnly = true;
    return item;
}

// A later value of the same tag takes an earlier one's place. Numbers have 32 bits, so that a file
// of 2 GiB or more shows one byte less than that; a size of "qd", as some servers print for one
// that they can't tell, is no number and so 0.
void TagBlock::Store(std::u16string_view key, std::u16string_view value)
{
    isEmpty = false;
    if (key == u"depotFile")
        item.text = value;
    else if (key == u"headAction")
        isDeleted = value == u"delete";
    else if (key == u"headTime")
        item.modifiedTime = UnixTimeToFileTime(value);
    else if (key == u"headRev")
        item.revision = static_cast<std::uint32_t>(LeadingNumber(value));
    else if (key == u"fileSize")
        item.size = static_cast<std::uint64_t>(std::int64_t{LeadingNumber(value)});
}

// A tag without a value is none.
void StoreLine(TagBlock& block, std::u16string_view line)
{
    const std::u16string_view tag = line.substr(tagStart.size());
    const std::size_t blank = tag.find(u' ');
    if (blank != std::u16string_view::npos)
        block.Store(tag.substr(0, blank), TrimmedLeft(tag.substr(blank)));
}

// Ends the block.
void AddFile(FSItems& items, TagBlock& block)
{
    if (!block.isEmpty && !block.isDeleted)
        items.push_back(std::make_shared<FSItem>(std::move(block.item)));
    block = {.item = File()};
}

std::uint64_t TimeOf(const P4Revision& revision)
{
    const auto part = [&](std::size_t i) {
        return static_cast<WORD>(LeadingNumber(revision.time[i]));
    };
    return FileTimeOf({part(0), part(1), 0, part(2), part(3), part(4), part(5), 0}).value_or(0);
}

std::optional<P4Revision> KeptRevisionIn(std::u16string_view line)
{
    std::optional<P4Revision> revision = FindP4Revision(line);
    if (revision && revision->action == u"delete")
        revision.reset();
    return revision;
}

// The lines run together, each without its first unit, which is as a rule a tab. `line` is then the
// line beginning with "..." that ended it, or empty.
std::u16string ReadDescription(BufferedReader& output, std::u16string& line)
{
    std::u16string description;
    while (output.ReadLine(line) && !line.starts_with(u"..."))
    {
        if (line.size() > 1)
            description.append(line, 1);
    }
    return description;
}

std::u16string WithChange(std::u16string change, std::u16string description)
{
    std::replace(description.begin(), description.end(), u'\t', u' ');
    return description.empty() ? change : std::move(change) + u": " + description;
}

// `revision` stands in `line`, which is then what ended its description.
RevisionRecord ReadRecord(const P4Revision& revision, BufferedReader& output, std::u16string& line)
{
    RevisionRecord record;
    record.id = revision.id;
    record.author = revision.author;
    record.modifiedTime = TimeOf(revision);
    record.revisionTime = record.modifiedTime;
    std::u16string change(revision.change);
    record.description = WithChange(std::move(change), ReadDescription(output, line));
    return record;
}

} // namespace

FSItems ReadFstat(BufferedReader& output)
{
    FSItems items;
    TagBlock block{.item = File()};
    for (std::u16string line; output.ReadLine(line);)
    {
        if (line.starts_with(tagStart))
            StoreLine(block, line);
        else
            AddFile(items, block);
    }
    AddFile(items, block);
    return items;
}

FSItems ReadDirs(BufferedReader& output)
{
    FSItems items;
    for (std::u16string line; output.ReadLine(line);)
    {
        if (!line.starts_with(u"//"))
            continue;
        auto item = std::make_shared<FSItem>();
        item->text = std::move(line);
        item->modifiedTime = UnixTimeToFileTime({});
        item->isDirectory = true;
        items.push_back(std::move(item));
    }
    return items;
}

P4FileLog ReadFileLog(BufferedReader& output)
{
    P4FileLog log;
    if (!output.ReadLine(log.depotFile))
        return log;
    for (std::u16string line; output.ReadLine(line);)
    {
        while (const std::optional<P4Revision> revision = KeptRevisionIn(line))
            log.records.push_back(ReadRecord(*revision, output, line));
    }
    return log;
}

std::u16string ReadHave(BufferedReader& output)
{
    std::u16string line;
    output.ReadLine(line);
    return std::u16string(FindP4LocalPath(line).value_or(std::u16string_view()));
}

P4Printed ReadPrint(BufferedReader& output)
{
    output.SkipAll();
    return {};
}

} // namespace tarnwell
