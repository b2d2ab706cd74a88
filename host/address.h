// Addresses as the user types them, and the file systems that they belong to.
#pragma once

#include <tarnwell/classes.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::host
{

struct FileSystemKind
{
    const char16_t* name;
    const char16_t* className;
    // What a revision stands behind in an address; empty if there are none.
    std::u16string_view markers;
    GUID clsid;
    // Whether items can be looked up, and folders listed: the other kinds know files in their
    // working copies only, and can't say whether one exists.
    bool hasFolders;
    // Whether what is read of a file can be longer or shorter than its listed size, as keywords in
    // it are filled in and line ends made the platform's.
    bool translatesContent;
    // Whether equal ids of contents mean equal contents, also in two repositories.
    bool idsTellContents;
    // Whether "%" and two digits stand for another character in an address.
    bool decodesPercents;
};

// All six, the local one first.
std::span<const FileSystemKind> FileSystemKinds();

// What addresses of the others begin with: "svn://".
std::vector<std::u16string_view> AddressBeginnings();

struct Address
{
    const FileSystemKind* kind;
    std::u16string text;
};

// An address in two parts.
struct AddressParts
{
    // Without a slash at its end.
    std::u16string path;
    // With its marker; may be empty.
    std::u16string revision;
};

AddressParts PartsOf(const Address& address);

// Whether a tree's lists tell all that is known of an item. On Subversion's servers that would be a
// question for each.
bool ListsTellAll(const Address& address);

// An item's name, which may have slashes in it, as the addresses of this kind have it.
std::u16string InAddress(const FileSystemKind& kind, std::u16string_view name);

// The scheme chooses the file system, in any case of letters: whether that is right is the module's
// to say. What has none of the known schemes is a local path, but for some schemes of other
// programs: these throw UsageError with the one that may be meant. The paths of Git and Mercurial
// addresses become absolute, and may lack their two slashes: "git:src/a.c#HEAD" is
// "git:///home/me/project/src/a.c#HEAD".
Address ParseAddress(const std::u16string& text);

} // namespace tarnwell::host
