// Any bytes as the records that the Perforce client prints, whole and in pieces, and what histories
// and trees make of them. The first byte says in what pieces.
#include "perforce/p4historyparser.h"
#include "perforce/p4marshal.h"
#include "perforce/p4names.h"
#include "perforce/p4treeparser.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

namespace
{

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
    for (const bool isWhole : {false, true})
    {
        const auto changes = P4FileLogReader().Next(record, isWhole);
        for (const P4Change& change : changes ? *changes : std::vector<P4Change>())
        {
            Expect(P4Number(change.id) && P4Number(change.revision), "numbers are numbers");
            Expect(!change.description.ends_with('\n'), "no line feed ends a description");
            Expect(change.path.starts_with("//"), "a path begins where depots do");
            Expect(BelowP4Folder(change.path, "//").has_value(), "a path is of a file's names");
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
    const auto records = ReadTwice(
        bytes, piece, [] { return P4RecordParser(); }, Same);
    for (const P4Record& record : records)
    {
        TryHistory(record);
        TryTree(record);
    }
}

} // namespace tarnwell::fuzz
