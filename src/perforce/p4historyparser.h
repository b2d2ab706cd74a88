// Reading the records that the Perforce client prints of histories. Starts nothing, and takes any
// records.
#pragma once

#include "perforce/p4marshal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell
{

// A change of an item, in the client's bytes.
struct P4Change
{
    std::string id; // decimal digits
    std::string author;
    std::string description; // without line feeds at its end
    std::uint64_t time = 0;  // a FILETIME value
    std::string path;        // of a file, as the client takes it; empty otherwise
    std::string revision;    // of the file, decimal digits; empty otherwise
};

// Reads the revisions of the file that a record of "filelog" tells, the latest first, also while
// the record still comes: all of a file's revisions are one.
class P4FileLogReader
{
public:
    // Those that weren't given yet. While `isWhole` is false one has come as soon as the next one
    // has begun. Nothing if a revision has no number that is one.
    std::optional<std::vector<P4Change>> Next(const P4Record& record, bool isWhole);

private:
    std::size_t given_ = 0;
};

// The change that a record of "changes" tells. Nothing if it has no number that is one.
std::optional<P4Change> ReadP4Change(const P4Record& record);

} // namespace tarnwell
