// A place of its own on a real Perforce server: what "p4" on the PATH reaches with the caller's
// settings (P4PORT, P4USER and a login). Nobody has run the tests so yet but with the stand-in in
// the place of both (tests/perforce/live).
#pragma once

#include "support/environmentvalue.h"
#include "support/perforceserver.h"
#include "support/tempfolder.h"

#include <map>
#include <string>
#include <vector>

namespace tarnwell::test
{

class RealPerforce final : public PerforceServer
{
public:
    // Makes a workspace for a new folder below TARNWELL_PERFORCE_LIVE, a folder of a depot such as
    // //depot/tests. What is submitted stays on the server.
    RealPerforce();
    ~RealPerforce() override;

    std::string Base() const override;
    std::string Author() const override;
    // P4PORT, which must be set.
    std::string Port() const override;
    using PerforceServer::Submit;
    int Submit(const std::string& path, std::string_view bytes,
               const std::string& description) override;
    int Remove(const std::string& path) override;
    std::filesystem::path Sync(const std::string& path) override;
    void LoseWorkspace() override;

private:
    int Finish(const std::string& path, const std::string& description);
    void Leave(const std::string& path, int revision);
    std::string P4(const std::vector<std::string>& arguments, const std::string& input = {}) const;
    std::filesystem::path Local(const std::string& path) const;

    const TempFolder root_;
    const std::string name_; // of the workspace, and of the folder
    const EnvironmentValue workspace_;
    // The last revision of each file that was submitted, and the one that was asked to be in the
    // workspace.
    struct Revisions
    {
        int last = 0;
        int had = 0;
    };
    std::map<std::string, Revisions> files_;
};

} // namespace tarnwell::test
