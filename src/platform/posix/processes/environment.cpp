#include "platform/posix/processes/environment.h"

#include "platform/posix/errors/lasterror.h"

#include <tarnwell/text.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <unistd.h>

namespace tarnwell::posix
{

std::optional<std::vector<std::string>> EncodeEnvironment(LPCWSTR block)
{
    std::vector<std::string> entries;
    for (std::u16string_view entry = block; !entry.empty(); entry = block)
    {
        std::optional<std::string> bytes = EncodeName(entry);
        if (!bytes)
            return std::nullopt;
        entries.push_back(std::move(*bytes));
        block += entry.size() + 1;
    }
    return entries;
}

namespace
{

std::u16string DecodeEnvironment()
{
    std::u16string block;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry)
    {
        AppendDecodedName(block, *entry);
        // An empty entry would be the end of the block.
        if (**entry != 0)
            block += u'\0';
    }
    return block;
}

} // namespace
} // namespace tarnwell::posix

using tarnwell::posix::Fail;

extern "C" LPWSTR GetEnvironmentStringsW()
{
    try
    {
        const std::u16string block = tarnwell::posix::DecodeEnvironment();
        const std::size_t size = (block.size() + 1) * sizeof(WCHAR);
        if (void* const copy = std::malloc(size))
            return static_cast<LPWSTR>(std::memcpy(copy, block.c_str(), size));
    }
    catch (const std::bad_alloc&)
    {
    }
    Fail(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

extern "C" BOOL FreeEnvironmentStringsW(LPWSTR block)
{
    std::free(block);
    return 1;
}
