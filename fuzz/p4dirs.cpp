// Any bytes as the Perforce client's report of folders.
#include "perforce/p4parser.h"
#include "support/p4output.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    const FSItems items = CheckP4Listing(bytes, ReadDirs);
    const std::string text = "\n" + WithoutReturns(bytes);
    std::size_t depots = 0;
    for (std::size_t at = text.find("\n//"); at != std::string::npos;
         at = text.find("\n//", at + 1))
        ++depots;
    Expect(items.size() == depots, "each line of a depot is a folder, and no other is");
    for (const auto& item : items)
        Expect(item->isDirectory && !item->isReadOnly && item->size == 0, "a folder is one");
}

} // namespace tarnwell::fuzz
