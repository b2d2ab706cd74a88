// What a stand-in for a client was asked.
#pragma once

#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <tarnwell/text.h>

#include <string>
#include <vector>

namespace tarnwell::test
{

// Text as it is recorded.
inline std::string Bytes(const std::u16string& text)
{
    return EncodeName(text).value();
}

// All texts are UTF-8.
struct RecordedRun
{
    std::string commandLine; // as it arrived
    std::string folder;
    std::string inputSize; // in bytes, to its end
    std::vector<std::string> environment;
};

// For as long as it lives, stand-ins record their runs.
class Recording
{
public:
    Recording();

    // The last one. Throws if there was none.
    RecordedRun Run() const;

private:
    const TempFolder folder_;
    const EnvironmentValue variable_;
};

} // namespace tarnwell::test
