#include "support/ftp/memorytree.h"

#include <algorithm>

namespace tarnwell::test
{
namespace
{

std::string FolderOfPath(const std::string& path)
{
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

std::string LeafOfPath(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace

std::string MemoryTree::Resolve(std::string_view current, std::string_view path)
{
    std::string whole(path.starts_with('/') ? "" : current);
    whole += '/';
    whole += path;
    std::string resolved;
    for (std::size_t at = 0; at < whole.size();)
    {
        const std::size_t end = std::min(whole.find('/', at), whole.size());
        const std::string part = whole.substr(at, end - at);
        if (part == "..")
            resolved.erase(std::min(resolved.rfind('/'), resolved.size()));
        else if (!part.empty() && part != ".")
            resolved += "/" + part;
        at = end + 1;
    }
    return resolved.empty() ? "/" : resolved;
}

const MemoryTree::Entry* MemoryTree::Find(const std::string& path) const
{
    const auto found = entries_.find(path);
    return found == entries_.end() ? nullptr : &found->second;
}

bool MemoryTree::IsFolder(const std::string& path) const
{
    const Entry* const entry = Find(path);
    return entry != nullptr && entry->isFolder;
}

bool MemoryTree::MakeFolder(const std::string& path)
{
    return IsFolder(FolderOfPath(path)) && entries_.try_emplace(path, Entry{true, {}}).second;
}

bool MemoryTree::WriteFile(const std::string& path, std::string bytes)
{
    if (!IsFolder(FolderOfPath(path)) || IsFolder(path))
        return false;
    entries_[path] = {false, std::move(bytes)};
    return true;
}

bool MemoryTree::Append(const std::string& path, std::string_view bytes)
{
    const auto found = entries_.find(path);
    if (found == entries_.end() || found->second.isFolder)
        return false;
    found->second.bytes += bytes;
    return true;
}

bool MemoryTree::DeleteFile(const std::string& path)
{
    return Find(path) != nullptr && !IsFolder(path) && entries_.erase(path) == 1;
}

bool MemoryTree::RemoveFolder(const std::string& path)
{
    return path != "/" && IsFolder(path) && Children(path).empty() && entries_.erase(path) == 1;
}

std::vector<std::string> MemoryTree::Children(const std::string& folder) const
{
    std::vector<std::string> children;
    for (const auto& [path, entry] : entries_)
    {
        if (path != "/" && FolderOfPath(path) == folder)
            children.push_back(path);
    }
    return children;
}

std::string MemoryTree::List(const std::string& folder) const
{
    std::string text;
    for (const std::string& path : Children(folder))
    {
        const Entry& entry = entries_.at(path);
        text += entry.isFolder ? "drwxr-xr-x   2" : "-rw-r--r--   1";
        text += " ftp      ftp      " + std::to_string(entry.bytes.size()) + " Feb 01  2020 " +
                LeafOfPath(path) + "\r\n";
    }
    return text;
}

std::string MemoryTree::ListFacts(const std::string& folder) const
{
    std::string text = "type=cdir;modify=20200201030405; .\r\ntype=pdir; ..\r\n";
    for (const std::string& path : Children(folder))
    {
        const Entry& entry = entries_.at(path);
        text += entry.isFolder ? "type=dir;"
                               : "type=file;size=" + std::to_string(entry.bytes.size()) + ";";
        text += "modify=20200201030405;perm=adfrwelcmp; " + LeafOfPath(path) + "\r\n";
    }
    return text;
}

} // namespace tarnwell::test
