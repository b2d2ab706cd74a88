// A depot of the stand-in for the Perforce client (support/perforce), which is in front of all
// others on the PATH for as long as it lives.
#pragma once

#include "support/environmentvalue.h"
#include "support/perforceserver.h"
#include "support/tempfolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::test
{

class PerforceDepot final : public PerforceServer
{
public:
    PerforceDepot();

    std::string Base() const override;
    std::string Author() const override;
    std::string Port() const override;
    using PerforceServer::Submit;
    int Submit(const std::string& path, std::string_view bytes,
               const std::string& description) override;
    int Remove(const std::string& path) override;
    std::filesystem::path Sync(const std::string& path) override;
    void LoseWorkspace() override;

    // Makes it the one that the client sees, where there are others.
    void Show() const;

    // The number of the latest change.
    int LatestChange() const
    {
        return changes_;
    }
    // Each is one change.
    int Remove(const std::string& path, const std::string& description);
    int Move(const std::string& from, const std::string& to, const std::string& description);
    // A file of this type.
    int SubmitAs(const std::string& type, const std::string& path, std::string_view bytes);

    // A line of the depot's description (support/perforce/depot.h): the last file's, where it is
    // about a file.
    void Tell(const std::string& line);
    // What the client prints for this command, instead of what it knows.
    void Print(const std::string& command, std::string_view text);
    // The same, with the line ends as they are.
    void PrintBytes(const std::string& command, std::string_view bytes);
    // A revision with all its facts: the words of a line "rev" but for the content.
    void AddRevision(const std::string& path, const std::string& words,
                     std::string_view bytes = {});

    // The whole command line of the last run, where programs see it.
    std::string CommandLine() const;
    // The runs so far, each as its arguments, separated by "|".
    std::vector<std::string> Runs() const;
    // The same without what was asked before.
    std::vector<std::string> TakeRuns();

private:
    struct File
    {
        std::string path;
        int revisions = 0;
        std::string lines;
        std::string bytes; // of the latest revision
    };

    void PrintAs(const std::string& kind, const std::string& command, std::string_view text);
    File& FileAt(const std::string& path);
    int Change(const std::string& path, const std::string& action, std::string_view bytes,
               const std::string& description, const std::string& type = "text");
    // Of a change that is there.
    void Record(int change, const std::string& path, const std::string& action,
                const std::string& type, std::string_view bytes, const std::string& description);
    void Write() const;

    const TempFolder folder_;
    const EnvironmentValue depot_;
    const EnvironmentValue path_;
    std::string general_;
    std::vector<File> files_;
    int changes_ = 0;
    int contents_ = 0;
};

} // namespace tarnwell::test
