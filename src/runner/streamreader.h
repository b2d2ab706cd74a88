// Collecting all that a client writes to one of its streams.
#pragma once

#include "runner/bufferedreader.h"
#include "runner/thread.h"

#include <string>

namespace tarnwell
{

class StreamReaderThread : public BufferedReader, public Thread
{
public:
    using BufferedReader::BufferedReader;

    unsigned Run() noexcept override;

    // To be read after Wait only.
    std::u16string text;
    // False if memory was too short for the text, which is empty then.
    bool isWhole = true;
};

} // namespace tarnwell
