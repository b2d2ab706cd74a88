#include "support/windows/recording.h"

#include <tarnwell/text.h>

#include <sstream>

namespace tarnwell::test
{

Recording::Recording()
    : variable_("TARNWELL_RELAY_RECORD", EncodeName(folder_ / u"record").value().c_str())
{
}

RecordedRun Recording::Run() const
{
    std::istringstream record(ReadBytes(folder_ / u"record"));
    const auto next = [&](std::string& text) -> std::istream& {
        return std::getline(record, text, '\0');
    };
    RecordedRun run;
    next(run.commandLine);
    next(run.folder);
    next(run.inputSize);
    for (std::string entry; next(entry);)
        run.environment.push_back(entry);
    return run;
}

} // namespace tarnwell::test
