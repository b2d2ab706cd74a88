// What asks the stand-in for the Perforce client for histories in full.
#pragma once

#include "module/perforcetest.h"
#include "support/historysink.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class P4Histories : public PerforceClientTest
{
protected:
    P4Histories()
        : PerforceClientTest(
              "only the stand-in tells how it was called, and fails as it is told to")
    {
    }

    Outcome Read(const std::u16string& path, HistorySink& sink, HistoryOptions options = Wanted(),
                 const char16_t* revision = nullptr) const
    {
        const auto histories = system.As<IFileSystemHistory>();
        return OutcomeOf([&] {
            return histories->ReadHistory(Ole(path), reinterpret_cast<const OLECHAR*>(revision),
                                          &options, &sink);
        });
    }
    std::vector<HistoryEntry> History(const std::u16string& path, HistoryOptions options = Wanted(),
                                      const char16_t* revision = nullptr) const
    {
        HistorySink sink;
        EXPECT_THAT(Read(path, sink, options, revision), Succeeded());
        return sink.entries;
    }
    std::vector<std::u16string> Descriptions(const std::u16string& path,
                                             HistoryOptions options = Wanted(),
                                             const char16_t* revision = nullptr) const
    {
        std::vector<std::u16string> found;
        for (const HistoryEntry& entry : History(path, options, revision))
            found.push_back(entry.description);
        return found;
    }
    HRESULT Status(const std::u16string& path, const char16_t* revision = nullptr,
                   HistoryOptions options = Wanted()) const
    {
        HistorySink sink;
        const HRESULT status = Read(path, sink, options, revision).status;
        EXPECT_TRUE(sink.entries.empty() || status == S_OK);
        return status;
    }
    // The arguments of the runs that the call made.
    std::vector<std::string> RunsOf(const std::u16string& path, HistoryOptions options = Wanted(),
                                    const char16_t* revision = nullptr)
    {
        depot_.TakeRuns();
        HistorySink sink;
        Read(path, sink, options, revision);
        return depot_.TakeRuns();
    }
};

} // namespace tarnwell::test
