// Where the fuzzer comes in.
#include "support/target.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    tarnwell::fuzz::Try(std::string_view(reinterpret_cast<const char*>(bytes), size));
    return 0;
}
