// The files and folders that a server of the tests shows.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

// Paths begin with a "/" and have none at their end, but for the root.
class MemoryTree
{
public:
    struct Entry
    {
        bool isFolder = false;
        std::string bytes = {};
    };

    // What `path` means in the folder `current`.
    static std::string Resolve(std::string_view current, std::string_view path);

    const Entry* Find(const std::string& path) const;
    bool IsFolder(const std::string& path) const;
    // These say whether it could be done: an entry's folder must be there.
    bool MakeFolder(const std::string& path);
    bool WriteFile(const std::string& path, std::string bytes);
    bool Append(const std::string& path, std::string_view bytes);
    bool DeleteFile(const std::string& path);
    // Only an empty one.
    bool RemoveFolder(const std::string& path);

    // As "ls -l" lists a folder, all of 1 February 2020, in the order of names.
    std::string List(const std::string& folder) const;
    // As MLSD does, all of 1 February 2020, 3:04:05.
    std::string ListFacts(const std::string& folder) const;

private:
    std::vector<std::string> Children(const std::string& folder) const;

    std::map<std::string, Entry> entries_ = {{"/", {true, {}}}};
};

} // namespace tarnwell::test
