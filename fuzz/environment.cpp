// Any block of variables as the host's environment.
#include "platform/posix/processes/environment.h"
#include "runner/environment.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <iterator>

namespace tarnwell::fuzz
{

namespace
{

using Texts = std::vector<std::u16string>;

constexpr const char16_t* set[] = {u"LC_ALL=C.UTF-8", u"HGPLAINEXCEPT="};

// Line feeds stand between the entries. An empty one would be the end of the block.
Texts EntriesIn(std::u16string_view text)
{
    Texts entries;
    while (!text.empty())
    {
        const std::size_t end =
            std::min(text.find_first_of(std::u16string_view(u"\n\0", 2)), text.size());
        if (end > 0)
            entries.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + 1));
    }
    return entries;
}

std::u16string BlockOf(const Texts& entries)
{
    std::u16string block;
    for (const std::u16string& entry : entries)
        block.append(entry).push_back(u'\0');
    return block.empty() ? block : block + u'\0';
}

bool BeginsWithGit(std::u16string_view name)
{
    constexpr std::u16string_view prefix = u"GIT_";
    return name.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), name.begin(), [](char16_t a, char16_t b) {
               return a == b || (b >= u'a' && b <= u'z' && a == b - u'a' + u'A');
           });
}

Texts Expected(const Texts& entries)
{
    Texts expected;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(expected),
                 [](const std::u16string& entry) {
                     const std::u16string name = entry.substr(0, entry.find(u'='));
                     return !BeginsWithGit(name) && name != u"LC_ALL" && name != u"HGPLAINEXCEPT";
                 });
    expected.insert(expected.end(), std::begin(set), std::end(set));
    return expected;
}

} // namespace

void Try(std::string_view bytes)
{
    const Texts entries = EntriesIn(DecodeName(bytes));
    const std::u16string block = BlockOf(entries);
    Expect(ChangedEnvironment(block.c_str(), u"", {}) == block, "what isn't changed stays");
    const std::u16string changed = ChangedEnvironment(block.c_str(), u"GIT_", set);
    Expect(changed == BlockOf(Expected(entries)), "only the named variables go, and the set come");

    const auto native = posix::EncodeEnvironment(changed.c_str());
    Expect(native.has_value(), "what came from bytes goes back to bytes");
    Texts back;
    for (const std::string& entry : *native)
        back.push_back(DecodeName(entry));
    Expect(BlockOf(back) == changed, "and comes back");
}

} // namespace tarnwell::fuzz
