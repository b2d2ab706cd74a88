// The depot that the stand-in for the Perforce client shows: a text file with a line for each fact,
// the words in it separated by tabs.
//
//   port SERVER             -p must be this, where it is given
//   user NAME PASSWORD      -u and -P must be those of a user, if there are any
//   server                  as a server and its user's client: what isn't told by options is told
//   by
//                           P4PORT, P4USER, P4PASSWD and P4CLIENT, and files can be put in
//   root FOLDER             of the workspace; a file is in it from its "have" on
//   file PATH               what follows is about this file, the oldest revision first; a server
//                           has them in order, and may have more than one such line for one
//   tag TEXT                a further line of its record, behind "... "
//   have NUMBER
//   rev NUMBER CHANGE ACTION SECONDS AUTHOR TYPE CONTENT    CONTENT is a file beside this one
//   desc TEXT               a line of that revision's description
//   note TEXT               a line behind the description
//   from PATH NUMBER        what that revision was moved or branched from
//   labelled NAME NUMBER    the label has this revision of the file
//   label NAME CHANGE       the label has what there was at the change
//   fail COMMAND WAY        what it does instead ("*": every command); see failures.h
//   output COMMAND FILE     what it prints instead, a file beside this one
//   bytes COMMAND FILE      the same, with the line ends as they are in the file
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tarnwell::test::perforce
{

struct Revision
{
    int number = 0;
    int change = 0;
    std::string action;
    long long time = 0; // Unix time
    std::string author; // USER@WORKSPACE
    std::string type;
    std::filesystem::path content;
    std::vector<std::string> description;
    std::vector<std::string> notes;
    std::string fromFile;
    int fromRevision = 0;

    bool IsDeleted() const
    {
        return action == "delete" || action == "move/delete";
    }
};

struct File
{
    std::string path;
    std::vector<std::string> tags;
    int have = 0;
    std::vector<Revision> revisions;
    std::map<std::string, int> labelled; // by label
};

struct Depot
{
    std::filesystem::path folder;
    std::string port;
    bool isServer = false;
    std::map<std::string, std::string> users;
    std::string root;
    std::map<std::string, int> labels;
    std::vector<File> files;
    std::map<std::string, std::string> failures; // by command
    std::map<std::string, std::filesystem::path> outputs;
    std::map<std::string, std::filesystem::path> bytes;
};

// The file "depot" in the folder. Throws if a line has another form.
Depot LoadDepot(const std::filesystem::path& folder);

// What a command asks about: a path that may hold "*", and a revision.
struct Spec
{
    std::string path;
    std::string revision; // with its mark, or empty
};

Spec ParseSpec(const std::string& text);

// Whether "*" in `pattern`, which never stands for a slash, makes it `path`.
bool Fits(const std::string& pattern, const std::string& path);

// The revision that `specifier` names; null if there is none. Every label names the latest.
const Revision* RevisionAt(const File& file, const std::string& specifier);

} // namespace tarnwell::test::perforce
