// A real Subversion repository, made and changed by the real programs.
#pragma once

#include "support/tempfolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

class SvnRepository
{
public:
    SvnRepository();

    // On the disk, and as the client takes it.
    std::filesystem::path Path() const;
    std::string Url() const;
    // As the module takes it: the repository, or something in it.
    std::u16string Address(std::u16string_view path = {}) const;
    // The same with the repository as the client calls it: where that isn't a program of this
    // platform, it has a path of its own.
    std::u16string ListedAddress(std::u16string_view path = {}) const;

    // Each is one commit, and gives the revision's number.
    int Commit(const std::string& name, std::string_view bytes, const std::string& message = "m",
               const std::string& author = "Ann") const;
    int MakeFolder(const std::string& name) const;
    int Remove(const std::string& name, const std::string& message = "removed") const;
    int Rename(const std::string& from, const std::string& to, const std::string& message) const;
    // What "svnmucc" is to do, in one commit.
    int Change(const std::vector<std::string>& action, const std::string& author = "Ann",
               const std::string& message = "m") const;
    // With a property, whose value doesn't matter.
    int CommitMarked(const std::string& name, std::string_view bytes,
                     const std::string& property) const;
    int Latest() const;

    // Runs "svn" in a UTF-8 locale; what it prints, without the line feed at its end.
    std::string Svn(const std::vector<std::string>& arguments) const;
    // What "svnlook" prints: its command and options, and a path behind the repository.
    std::string Look(std::vector<std::string> arguments, const std::string& path = {}) const;
    // Puts a working copy of all of it, as it is now, into a folder.
    void CheckOut(const std::filesystem::path& folder) const;
    // Takes the author off a revision.
    void ForgetAuthor(int revision) const;
    // Writes a file of the repository's configuration.
    void Configure(const std::string& file, std::string_view text) const;

private:
    std::string Run(const std::string& program, const std::vector<std::string>& arguments) const;

    TempFolder folder_;
};

} // namespace tarnwell::test
