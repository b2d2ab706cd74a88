#include "runner/streamreader.h"

namespace tarnwell
{

unsigned StreamReaderThread::Run() noexcept
{
    try
    {
        text = ReadAll();
    }
    catch (...)
    {
        text.clear();
    }
    return 0;
}

} // namespace tarnwell
