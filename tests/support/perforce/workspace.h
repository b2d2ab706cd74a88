// The workspaces of a depot that takes files: each a text file in its folder "workspaces", with a
// line for each fact.
//
//   root FOLDER
//   view PATH               the part of the depot that it has, without a slash at its end
//   have NUMBER PATH
//   opened ACTION TYPE PATH what the next "submit" takes
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace tarnwell::test::perforce
{

struct Opened
{
    std::string action;
    std::string type;
};

struct Workspace
{
    std::string name;
    std::string root;
    std::string view;
    std::map<std::string, int> have; // by depot path
    std::map<std::string, Opened> opened;
};

// In the depot's folder. Throws a Failure if there is none of that name.
Workspace LoadWorkspace(const std::filesystem::path& folder, const std::string& name);
void SaveWorkspace(const std::filesystem::path& folder, const Workspace& workspace);
void RemoveWorkspace(const std::filesystem::path& folder, const std::string& name);

// Where it has a depot's file. Throws a Failure for one that isn't in its view. Names have the
// characters of revisions encoded in the depot, and plain on the disk.
std::filesystem::path LocalPath(const Workspace& workspace, const std::string& depotPath);
std::string DepotPath(const Workspace& workspace, const std::filesystem::path& local);

// Of UTF-8.
std::filesystem::path PathOf(const std::string& text);

} // namespace tarnwell::test::perforce
