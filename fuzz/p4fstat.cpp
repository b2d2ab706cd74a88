// Any bytes as the Perforce client's report of files.
#include "perforce/p4parser.h"
#include "support/p4output.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    constexpr std::int64_t epoch = 116444736000000000;
    constexpr std::int64_t second = 10000000;
    constexpr std::int64_t smallest = -2147483648;
    constexpr std::int64_t largest = 2147483647;
    const auto isIn32Bits = [](std::int64_t number) {
        return number >= smallest && number <= largest;
    };
    for (const auto& item : CheckP4Listing(bytes, ReadFstat))
    {
        Expect(!item->isDirectory && item->isReadOnly, "a file can't be written");
        Expect(isIn32Bits(static_cast<std::int64_t>(item->size)), "a size has 32 bits");
        const auto time = static_cast<std::int64_t>(item->modifiedTime) - epoch;
        Expect(time % second == 0 && isIn32Bits(time / second), "a time is of 32 bits of seconds");
    }
}

} // namespace tarnwell::fuzz
