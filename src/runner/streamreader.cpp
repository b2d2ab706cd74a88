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
        isWhole = false;
    }
    return 0;
}

} // namespace tarnwell
