// Reading the history that the Subversion client prints when it is asked for one as `svnhistory`
// does. Starts nothing, and takes any bytes.
#pragma once

#include "subversion/svnxml.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell
{

// What a revision did to a path. Paths begin with "/".
struct SvnChange
{
    char action = '\0'; // "A", "M", "D" or "R"
    std::string path;
    std::string copiedFrom; // empty: from nowhere
};

// A revision, in the client's bytes. What the server doesn't tell is empty, or 0.
struct SvnRevision
{
    std::string number;
    std::string author;
    std::string description; // without line feeds at its end
    std::uint64_t time = 0;  // a FILETIME value
    std::vector<SvnChange> changes;
};

class SvnHistoryParser
{
public:
    void Feed(std::string_view bytes)
    {
        reader_.Feed(bytes);
    }

    // The next revision, if it has come as a whole and is one.
    std::optional<SvnRevision> Next();

    // When there is no next one: whether a whole history has come, and nothing but revisions.
    bool IsComplete() const
    {
        return !isBad_ && reader_.IsComplete();
    }

private:
    SvnXmlReader reader_{"logentry"};
    bool isBad_ = false;
};

// The path that an item had in front of this revision, whose changes may have copied it, or a
// folder that it is in, from elsewhere. Paths begin with "/".
std::string SvnPathBefore(const SvnRevision& revision, std::string path);

// Whether the revision has taken the item away, or a folder that it was in.
bool RemovesPath(const SvnRevision& revision, std::string_view path);

// Whether this is a revision's number: digits, and no more than a number has.
bool IsSvnNumber(std::string_view text);

} // namespace tarnwell
