// Reading what the Subversion client prints of items, when it is asked as `svntree` does. Starts
// nothing, and takes any bytes.
#pragma once

#include "subversion/svnxml.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwell
{

// What `info` tells of an item, in the client's bytes.
struct SvnItemFacts
{
    std::string url;  // as the client writes it, with its special characters encoded
    std::string root; // of the repository; the same
    std::string path; // from the root on, with "/" in between and not encoded; empty for the root
    std::string revision;          // the one that it was looked at in; empty: never committed
    std::string changedRevision;   // the one that changed it last, likewise
    std::uint64_t changedTime = 0; // a FILETIME value
    bool isFolder = false;
    std::uint64_t size = 0; // in bytes, where it is told
};
// Nothing if this is no such element.
std::optional<SvnItemFacts> ReadSvnInfo(const SvnElement& entry);

// An entry of a listing.
struct SvnEntry
{
    std::string name; // with "/" in between
    bool isFolder = false;
    std::uint64_t size = 0;
};
// Nothing if this is no such element, or has a name that can't be one.
std::optional<SvnEntry> ReadSvnEntry(const SvnElement& entry);

// What properties say of a file.
struct SvnMarks
{
    std::string url; // of the file
    bool isExecutable = false;
    bool isSpecial = false; // a link, mostly
    bool hasKeywords = false;
    bool hasLineEnds = false; // of a kind of their own

    bool HasAny() const
    {
        return isExecutable || isSpecial || hasKeywords || hasLineEnds;
    }
};
// Nothing if this is no such element.
std::optional<SvnMarks> ReadSvnMarks(const SvnElement& target);

// With the bytes for which a URL has "%" and two digits; every other "%" is one.
std::string DecodeSvnUrl(std::string_view url);
// Whether this can be the name of an item, with "/" in between: no part of it is empty, "." or
// "..", and there is no NUL.
bool IsSvnName(std::string_view path);
// With all encoded but letters, digits, "/" and a few that never mean anything.
std::string EncodeSvnPath(std::string_view path);

// What a link's content is behind: it has this in front of the path that it leads to.
inline constexpr std::string_view svnLinkStart = "link ";

} // namespace tarnwell
