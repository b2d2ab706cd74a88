#include "address.h"

#include "system.h"

#include <string_view>

namespace tarnwell::host
{

namespace
{

const FileSystemKind kinds[] = {
    {u"local", u"Win32FileSystem", CLSID_Win32FileSystem, true},
    {u"p4", u"P4FileSystem", CLSID_P4FileSystem, true},
    {u"svn", u"SVNFileSystem", CLSID_SVNFileSystem, true},
    {u"ftp", u"FTPFileSystem", CLSID_FTPFileSystem, true},
    {u"hg", u"HGFileSystem", CLSID_HGFileSystem, false},
    {u"git", u"GITFileSystem", CLSID_GITFileSystem, false},
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

Address ParseAddress(const std::u16string& text)
{
    for (const Scheme& scheme : schemes)
    {
        if (!text.starts_with(scheme.beginning))
            continue;
        if (scheme.kind->hasFolders)
            return {scheme.kind, text};
        const std::u16string_view rest = std::u16string_view(text).substr(scheme.beginning.size());
        return {scheme.kind, AbsoluteAddress(scheme.beginning, rest)};
    }
    return {&local, text};
}

} // namespace tarnwell::host
