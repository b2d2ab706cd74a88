// A place of its own on a real Perforce server: what "p4" on the PATH reaches with the caller's
// settings (P4PORT, P4USER and a login). Nobody has run the tests so yet.
#pragma once

#include "support/environmentvalue.h"
#include "support/perforceserver.h"
#include "support/tempfolder.h"

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
    using PerforceServer::Submit;
    int Submit(const std::string& path, std::string_view bytes,
               const std::string& description) override;
    int Remove(const std::string& path) override;
    std::filesystem::path Sync(const std::string& path) override;

private:
    std::string P4(const std::vector<std::string>& arguments, const std::string& input = {}) const;
    std::filesystem::path Local(const std::string& path) const;

    const TempFolder root_;
    const std::string name_; // of the workspace, and of the folder
    const EnvironmentValue workspace_;
};

} // namespace tarnwell::test
