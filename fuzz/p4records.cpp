// Any bytes as the records that the Perforce client prints, whole and in pieces, and what histories
// and trees make of them. The first byte says in what pieces.
#include "perforce/p4historyparser.h"
#include "perforce/p4marshal.h"
#include "perforce/p4names.h"
#include "perforce/p4treeparser.h"
#include "support/target.h"

#include <algorithm>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

struct Read
{
    std::vector<P4Record> records;
    bool isComplete = false;
};

Read ReadIn(std::string_view bytes, std::size_t piece)
{
    P4RecordParser parser;
    Read read;
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (std::optional<P4Record> record = parser.Next())
            read.records.push_back(std::move(*record));
    }
    read.isComplete = parser.IsComplete();
    return read;
}

bool Same(const P4Record& left, const P4Record& right)
{
    for (const char* const key : {"code", "data", "severity", "generic", "depotFile", "rev0",
                                  "change0", "desc0", "change", "desc", "dir"})
    {
        if (left.Has(key) != right.Has(key) || left.Text(key) != right.Text(key))
            return false;
    }
    return true;
}

void TryHistory(const P4Record& record)
{
    if (const auto changes = ReadP4FileLog(record))
    {
        for (const P4Change& change : *changes)
        {
            Expect(P4Number(change.id) && P4Number(change.revision), "numbers are numbers");
            Expect(!change.description.ends_with('\n'), "no line feed ends a description");
            Expect(change.path.starts_with("//"), "a path begins where depots do");
        }
    }
    if (const auto change = ReadP4Change(record))
        Expect(P4Number(change->id).has_value(), "a change has a number");
}

void TryTree(const P4Record& record)
{
    const auto file = ReadP4File(record);
    const auto folder = ReadP4Folder(record);
    for (const std::string& path : {file ? file->path : "", folder.value_or("")})
    {
        const auto below = BelowP4Folder(path, "//depot");
        if (!below)
            continue;
        Expect(!below->empty() &&
                   ("/" + std::string(*below) + "/").find("/../") == std::string::npos,
               "no name leads out of its folder");
        Expect(below->find("//") == std::string_view::npos, "no part of a name is empty");
        Expect(P4Decoded(P4Encoded(P4Decoded(*below))) == P4Decoded(*below),
               "names come back from the client's form");
    }
}

} // namespace

void Try(std::string_view bytes)
{
    if (bytes.empty())
        return;
    const std::size_t piece = 1 + static_cast<unsigned char>(bytes[0]);
    bytes.remove_prefix(1);
    const Read whole = ReadIn(bytes, bytes.size());
    const Read pieces = ReadIn(bytes, piece);
    Expect(whole.isComplete == pieces.isComplete, "pieces are as complete as the whole");
    Expect(std::equal(whole.records.begin(), whole.records.end(), pieces.records.begin(),
                      pieces.records.end(), Same),
           "pieces are read as the whole is");
    for (const P4Record& record : whole.records)
    {
        TryHistory(record);
        TryTree(record);
    }
}

} // namespace tarnwell::fuzz
