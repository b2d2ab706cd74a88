// What a row says of histories told in full (history.h) and of trees (trees.h). The suites for them
// are histories, trees and strictfailures; a row that answers to neither says why.
#pragma once

#include <tarnwell/tarnwell.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

class BackendData;

// A way in which a question fails: made in data of the test's own, in which "text.txt" was put.
struct MadeFailure
{
    const char* what;
    HRESULT status;
    std::u16string_view message;               // its beginning, in English
    std::u16string (*make)(BackendData& data); // gives the path that is asked for
};

struct Strict
{
    // Whether the file system answers to IFileSystemHistory, and to IFileSystemTrees.
    bool histories = false;
    bool trees = false;
    // Whether it answers to both, and is tried elsewhere; then both are false here.
    bool elsewhere = false;
    // Why it isn't tried here for both; empty if it is.
    const char* whyNot = "";

    // Names of files beyond the row's, for these suites only.
    std::vector<std::u16string_view> names = {};
    // Texts that name no revision, or several.
    std::vector<std::u16string_view> noRevisions = {u"nosuch", u"-x", u"--all", u"a..b",
                                                    u"^main",  u"\n", u"a b",   u"HEAD --all"};
    // Whether a file's history goes on before a deletion, which is one of its revisions.
    bool beyondDeletions = true;
    // Whether merges that change a file are among its revisions where it is followed, as they are
    // elsewhere. Null where the system has no merges.
    std::optional<bool> mergesWhereFollowed = {};
    // Whether `IFileSystem::GetFile` opens a file by a name that it had before.
    bool oldNamesOpen = true;
    // Whether there is a present state on the disk (HistoryWorkingCopy).
    bool workingCopies = false;
    // Whether revisions hold links, and whether they tell that a file is a program.
    bool links = false;
    bool programs = false;
    // Whether contents have ids of their own.
    bool contentIds = true;
    // Whether one client stays for all of a tree's small questions.
    bool clientStays = false;
    // Failures beyond those that all file systems have alike.
    std::vector<MadeFailure> failures = {};
};

} // namespace tarnwell::test
