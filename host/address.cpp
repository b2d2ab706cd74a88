#include "address.h"

#include "arguments.h"
#include "system.h"

#include <algorithm>
#include <string_view>

namespace tarnwell::host
{

namespace
{

const FileSystemKind kinds[] = {
    {u"local", u"Win32FileSystem", u"", CLSID_Win32FileSystem, true, false, false, false},
    {u"p4", u"P4FileSystem", u"@#", CLSID_P4FileSystem, true, true, false, true},
    {u"svn", u"SVNFileSystem", u"@", CLSID_SVNFileSystem, true, true, false, true},
    {u"ftp", u"FTPFileSystem", u"", CLSID_FTPFileSystem, true, false, false, false},
    {u"hg", u"HGFileSystem", u"#", CLSID_HGFileSystem, false, false, true, false},
    {u"git", u"GITFileSystem", u"#", CLSID_GITFileSystem, false, false, true, false},
};
const FileSystemKind& local = kinds[0];
const FileSystemKind& perforce = kinds[1];
const FileSystemKind& subversion = kinds[2];
const FileSystemKind& ftp = kinds[3];
const FileSystemKind& mercurial = kinds[4];
const FileSystemKind& git = kinds[5];

struct Scheme
{
    std::u16string_view beginning;
    const FileSystemKind* kind;
};

const Scheme schemes[] = {
    {u"p4://", &perforce},
    {u"svn://", &subversion},
    {u"svnhttp://", &subversion},
    {u"svnhttps://", &subversion},
    {u"svnfile://", &subversion},
    {u"svn+ssh://", &subversion},
    {u"ftp://", &ftp},
    {u"hg:", &mercurial},
    {u"git:", &git},
};

struct ForeignScheme
{
    std::u16string_view beginning;
    const char16_t* meant;
};

const ForeignScheme foreignSchemes[] = {
    {u"http://", u"svnhttp://"},
    {u"https://", u"svnhttps://"},
    // What else it may mean is said in words.
    {u"file://", nullptr},
    {u"ssh://", u"svn+ssh://"},
};

// `beginning` is in small letters.
bool StartsInAnyCase(std::u16string_view text, std::u16string_view beginning)
{
    return text.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), text.begin(),
                      [](char16_t wanted, char16_t unit) {
                          const bool capital = unit >= u'A' && unit <= u'Z';
                          return wanted == (capital ? unit - u'A' + u'a' : unit);
                      });
}

void RefuseForeignScheme(const std::u16string& text)
{
    for (const ForeignScheme& scheme : foreignSchemes)
    {
        if (StartsInAnyCase(text, scheme.beginning))
            throw UsageError{{Word::ForeignScheme,
                              {text, scheme.meant == nullptr ? Say(Word::FileSchemeMeant)
                                                             : std::u16string(scheme.meant)}}};
    }
}

// "git:a", "git://a" and "git:///home/a" have the path "a", "a" and "/home/a".
std::u16string_view WorkingCopyPath(std::u16string_view afterColon)
{
    if (afterColon.starts_with(u"//"))
        afterColon.remove_prefix(2);
    return afterColon;
}

// Only the last "#" begins a revision, as in the module.
std::u16string AbsoluteAddress(std::u16string_view scheme, std::u16string_view afterColon)
{
    const std::u16string_view path = WorkingCopyPath(afterColon);
    const std::size_t marker = path.rfind(u'#');
    const std::u16string file = AbsolutePath(std::u16string(path.substr(0, marker)));
    const std::u16string_view revision =
        marker == std::u16string_view::npos ? std::u16string_view() : path.substr(marker);
    return std::u16string(scheme) + u"//" + file + std::u16string(revision);
}

} // namespace

std::span<const FileSystemKind> FileSystemKinds()
{
    return kinds;
}

std::vector<std::u16string_view> AddressBeginnings()
{
    std::vector<std::u16string_view> beginnings;
    for (const Scheme& scheme : schemes)
        beginnings.push_back(scheme.beginning);
    return beginnings;
}

// Of working copies the last marker begins the revision wherever it stands; else it must stand in
// the last name.
AddressParts PartsOf(const Address& address)
{
    const std::u16string& text = address.text;
    const std::size_t marker = text.find_last_of(address.kind->markers);
    const std::size_t slash = text.rfind(u'/');
    const bool isRevision =
        marker != std::u16string::npos &&
        (!address.kind->hasFolders ||
         (marker > slash && text.find(u"://") != slash - 2 && slash != std::u16string::npos));
    AddressParts parts{text.substr(0, isRevision ? marker : text.size()),
                       isRevision ? text.substr(marker) : std::u16string()};
    while (parts.path.size() > 1 && parts.path.back() == u'/')
        parts.path.pop_back();
    return parts;
}

bool ListsTellAll(const Address& address)
{
    return address.kind != &subversion || StartsInAnyCase(address.text, u"svnfile:");
}

std::u16string InAddress(const FileSystemKind& kind, std::u16string_view name)
{
    constexpr std::u16string_view digits = u"0123456789ABCDEFabcdef";
    std::u16string text;
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        text += name[i];
        const std::u16string_view next = name.substr(i + 1, 2);
        const bool isCode = name[i] == u'%' && next.size() == 2 &&
                            next.find_first_not_of(digits) == std::u16string_view::npos;
        if (isCode && kind.decodesPercents)
            text += u"25";
    }
    return text;
}

Address ParseAddress(const std::u16string& text)
{
    for (const Scheme& scheme : schemes)
    {
        if (!StartsInAnyCase(text, scheme.beginning))
            continue;
        if (scheme.kind->hasFolders)
            return {scheme.kind, text};
        const std::u16string_view whole = text;
        return {scheme.kind, AbsoluteAddress(whole.substr(0, scheme.beginning.size()),
                                             whole.substr(scheme.beginning.size()))};
    }
    RefuseForeignScheme(text);
    return {&local, text};
}

} // namespace tarnwell::host
