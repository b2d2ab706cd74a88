// The rows of file systems whose addresses name files of a working copy.
#pragma once

#include "backends/backend.h"
#include "support/clients.h"

#include <exception>
#include <functional>

namespace tarnwell::test
{

// `R` is a repository whose files lie at `R / name`.
template <class R> class WorkingCopyData : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string& revision) const override
    {
        const std::u16string address = scheme_ + (repository_ / name);
        return revision.empty() ? address : address + u"#" + revision;
    }
    std::filesystem::path OnDisk(std::u16string_view name) const override
    {
        return repository_ / name;
    }

protected:
    explicit WorkingCopyData(std::u16string scheme) : scheme_(std::move(scheme)) {}

    // From Wine a link can't be removed once its file has gone, and trying has no end: the client
    // removes the work tree before the folder goes.
    void LeaveTreeBy(std::function<void()> command)
    {
        leave_.command = std::move(command);
    }

    const R repository_;

private:
    struct Leave
    {
        std::function<void()> command = [] {
        };
        Leave() = default;
        Leave(const Leave&) = delete;
        Leave& operator=(const Leave&) = delete;
        ~Leave()
        {
            try
            {
                command();
            }
            catch (const std::exception&)
            {
                // What is left is the folder's to remove.
            }
        }
    };

    const std::u16string scheme_; // with what stands in front of the path
    Leave leave_;                 // ends before the repository does
};

// The row, with what those of all working copies have alike.
inline Backend WorkingCopyRow(Backend row)
{
    row.whyNot = WhyNoClients;
    row.folders = false;
    row.revisionsInNames = true;
    row.workingCopy = WorkingCopy::Description;
    return row;
}

} // namespace tarnwell::test
