// What differs between two files, or between two folders.
#pragma once

#include "side.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarnwell::host
{

enum class Verdict
{
    Equal,
    Different,
    // One is a file, the other a folder.
    KindDiffers,
    // One is a link.
    LinkDiffers,
    OnlyLeft,
    OnlyRight,
    // The two could not be compared.
    Failed,
};

struct Finding
{
    // Below the folders that were named, with "/" between; for two files the left one's name.
    std::u16string name;
    Verdict verdict;
    // In bytes; nothing for folders and for what isn't known.
    std::optional<std::uint64_t> leftSize;
    std::optional<std::uint64_t> rightSize;
    // Nothing also where only the sizes were compared.
    std::optional<std::uint64_t> firstDifference;
    std::optional<Failure> failure;
};

using TellFinding = std::function<void(const Finding&)>;

struct FolderRules
{
    // Names at any depth that are left out on both sides.
    std::vector<std::u16string> excluded;
    // Whether files of unequal listed size are different without being read.
    bool trustsSizes;
};

// Reads both files to their ends, unless ids, or sizes where these are trusted, say enough. What is
// in two folders isn't looked at. Throws Failure.
Finding CompareItems(const Side& left, const Side& right, bool trustsSizes);

// Pairs by name, without the part of it that tells a revision, and goes into folders that both
// sides have; a folder that is a link isn't entered. Findings come in the order of names, one
// for each pair and each name without a partner. What fails below the two folders is a finding,
// named "?" where it has no name; a failure to read these themselves is thrown.
void CompareFolders(const Side& left, const Side& right, const FolderRules& rules,
                    const TellFinding& tell);

} // namespace tarnwell::host
