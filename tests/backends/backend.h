// The file systems as the suites in backends/suites and faults/everycall.cpp see them: a row each,
// which says how to make its data, how to address a name in it, and what the file system can do.
// What all of them promise is proved there, over every row; a backend's own tests keep what only
// that backend promises.
#pragma once

#include "backends/strict.h"
#include "support/fakehost.h"

#include <tarnwell/tarnwell.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

// What one file system keeps. Names have "/" between their parts.
class BackendData
{
public:
    BackendData() = default;
    BackendData(const BackendData&) = delete;
    BackendData& operator=(const BackendData&) = delete;
    virtual ~BackendData() = default;

    // The path or the address of a name; an empty name is the whole. `revision` is one that `Put`
    // gave, and empty for the latest.
    virtual std::u16string Address(std::u16string_view name,
                                   const std::u16string& revision = {}) const = 0;
    // Writes a file, in a folder that is there if the file system has folders. Gives the name of
    // the revision that this made, which is empty where there is no history.
    virtual std::u16string Put(std::u16string_view name, std::string_view bytes,
                               const std::string& description = "changed") = 0;
    // The same for many files, whose revisions nobody asks for: names and bytes.
    virtual void PutAll(const std::vector<std::pair<std::u16string, std::string>>& files);
    // Where the file system has folders: makes one in one that is there.
    virtual void MakeFolder(std::u16string_view name);
    // Where they are plain files or can be looked at as such: the file or folder of a name.
    virtual std::filesystem::path OnDisk(std::u16string_view name) const;
    // What is there, seen past the file system; asked where it writes.
    virtual bool Has(std::u16string_view name) const;
    virtual bool HasFolder(std::u16string_view name) const;
    virtual std::string Held(std::u16string_view name) const;
    // How revisions name the author; empty if that is what the row says.
    virtual std::u16string Author() const;
    // What the host answers when it is asked for credentials.
    virtual CredentialsAnswer Credentials() const;

    // Where the latest made hides the others: makes it the one that is seen.
    virtual void Show() const {}

    // The rest is asked where a file system tells histories in full, or shows trees. There a
    // revision has one id for all that it changed.

    // The id of the latest revision of all, in full.
    virtual std::u16string LatestId();
    // The address of a name in a revision with such an id. As `Address` unless told otherwise.
    virtual std::u16string AddressAt(std::u16string_view name, const std::u16string& id) const;
    // Other names for such a revision: tags, branches, short ids.
    virtual std::vector<std::u16string> OtherNamesOf(const std::u16string& id);
    // A name as histories tell it, and as trees of the whole do. The name unless told otherwise.
    virtual std::u16string NameInHistory(std::u16string_view name) const;
    virtual std::u16string NameInTree(std::u16string_view name) const;
    // Each is one revision.
    virtual void Remove(std::u16string_view name, const std::string& description);
    virtual void Rename(std::u16string_view from, std::u16string_view to,
                        const std::string& description);
    // Where the row has merges: two revisions put the file side by side, "here" and "aside", and
    // "merged" makes of both what neither has.
    virtual void PutMerge(std::u16string_view name);
    // Where the row has them. All that is put later may be in the same revision.
    virtual void PutLink(std::u16string_view name, std::string_view target);
    virtual void PutProgram(std::u16string_view name, std::string_view bytes);
};

template <class Data> std::unique_ptr<BackendData> MakeData()
{
    return std::make_unique<Data>();
}

// An address that a file system refuses, and how its message begins.
struct RefusedAddress
{
    std::u16string_view address;
    std::u16string_view message;
};

// A test that a platform's own part of a file system doesn't pass, and why.
struct NotShown
{
    std::string_view test; // as in "Listing.ASnapshotStays", perhaps with "/" and its parameter
    const char* why;
};

// Whose classes a file system's are: the local ones, or those that all systems of addresses share.
enum class Family
{
    Local,
    Addressed
};

// What `Open` does where its result has no place to go.
enum class OpenIntoNothing
{
    FailsWithText, // message 106
    FailsBare,
    Succeeds // all is done, and then dropped
};

// Which text of a revision says that it is the working copy, which is the first of a list.
enum class WorkingCopy
{
    None,
    Id,
    Description
};

struct Backend
{
    const char* name;
    const GUID& systemClass;
    Family family = Family::Addressed;
    std::unique_ptr<BackendData> (*makeData)();
    // Why nothing can be made here; empty if all is well. Null: there is always a way.
    std::string (*whyNot)() = nullptr;
    // What can't be shown on this platform.
    std::vector<NotShown> notShown = {};

    // Names that a file can have, to be listed and opened by.
    std::vector<std::u16string_view> names;
    std::vector<RefusedAddress> refused = {};
    // Whether names with control characters can be put.
    bool controlCharacters = false;

    // Folders, and the facts of files, which those without folders don't tell.
    bool folders = true;
    // Whether a folder can have nothing in it, and whether listing one that isn't there fails.
    bool emptyFolders = true;
    bool missingFoldersFail = true;
    // Whether a listing's files are in the revision that was read, which their names then end in.
    bool revisionsInListing = false;
    // Of the two, `IFile::Open` and all operations.
    bool writes = false;
    // Whether the file system answers to IFileSystemRevisions, and whether what is put a second
    // time leaves a revision of what was there.
    bool revisions = true;
    bool history = true;
    // Whether descriptions begin with the number of the change.
    bool changesInDescriptions = false;
    // Whether the name of an item shows the revision in its address.
    bool revisionsInNames = false;
    WorkingCopy workingCopy = WorkingCopy::None;
    // How revisions name the author that the row's data has.
    std::u16string_view author = {};
    // Histories told in full, and trees.
    Strict strict = {};
    OpenIntoNothing openIntoNothing = OpenIntoNothing::FailsBare;
    // Behind a message, in front of the line: where this file system throws.
    std::u16string_view source = {};

    // The client as it is called on the PATH, and what is said where it is missing; empty if there
    // is no client.
    std::string_view client = {};
    std::u16string_view clientMissing = {};

    // An address for which the host is asked, with nobody behind it, and what for; empty if there
    // are no credentials. Without an answer kind 1 goes on, others fail.
    std::u16string_view guarded = {};
    std::uint32_t credentialsKind = 0;
};

// The rows, each in backends/rows, in the order of their results.
extern const Backend localBackend;
extern const Backend perforceBackend;
extern const Backend gitBackend;
extern const Backend mercurialBackend;
extern const Backend subversionBackend;
extern const Backend ftpBackend;

std::vector<const Backend*> Backends();
// Those for which `can` holds.
template <class Predicate> std::vector<const Backend*> BackendsThat(Predicate can)
{
    std::vector<const Backend*> found = Backends();
    std::erase_if(found, [&](const Backend* backend) { return !can(*backend); });
    return found;
}

void PrintTo(const Backend* backend, std::ostream* out);

} // namespace tarnwell::test
