// The module's texts, laid out by the compiler.
#include "platform/texts.h"

#include "platform/posix/errors/lasterror.h"
#include "platform/posix/messages/languages.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tarnwell
{
namespace posix
{
namespace
{

struct Row
{
    unsigned id;
    std::u16string_view english;
    std::u16string_view japanese;
};

constexpr Row rows[] = {
#define TARNWELL_MESSAGE(name, id, english, japanese) {id, u"" english, u"" japanese},
#include "resources/messages.inc"
#undef TARNWELL_MESSAGE
};

static_assert(std::is_sorted(std::begin(rows), std::end(rows),
                             [](const Row& left, const Row& right) { return left.id < right.id; }));

// Of all that the platform's formatter knows.
constexpr bool HasInsertsOnly(std::u16string_view text)
{
    for (std::size_t at = 0; (at = text.find(u'%', at)) != std::u16string_view::npos; at += 2)
    {
        if (at + 1 == text.size() || text[at + 1] < u'1' || text[at + 1] > u'9')
            return false;
        const char16_t next = at + 2 == text.size() ? u' ' : text[at + 2];
        if (next == u'!' || (next >= u'0' && next <= u'9'))
            return false;
    }
    return true;
}

static_assert(std::all_of(std::begin(rows), std::end(rows), [](const Row& row) {
    return HasInsertsOnly(row.english) && HasInsertsOnly(row.japanese);
}));

} // namespace
} // namespace posix

LANGID ChooseLanguage(LANGID wanted)
{
    constexpr unsigned primaryLanguageMask = 0x3FF;
    const bool isJapanese = ((wanted ^ posix::japanese) & primaryLanguageMask) == 0;
    return isJapanese ? posix::japanese : posix::english;
}

} // namespace tarnwell

using namespace tarnwell::posix;

extern "C" BOOL LoadModuleText(unsigned id, LANGID language, std::u16string& text)
{
    text.clear();
    const Row* const row =
        std::lower_bound(std::begin(rows), std::end(rows), id,
                         [](const Row& each, unsigned i) { return each.id < i; });
    if (row == std::end(rows) || row->id != id)
        return Fail(ERROR_RESOURCE_NAME_NOT_FOUND);
    text = language == japanese ? row->japanese : row->english;
    return 1;
}

extern "C" BOOL FillInserts(const std::u16string& text, std::span<const std::u16string> inserts,
                            std::u16string& filled)
{
    filled.clear();
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] != u'%')
        {
            filled += text[i];
            continue;
        }
        const std::size_t number = ++i < text.size() ? std::size_t{text[i]} - u'1' : inserts.size();
        if (number >= inserts.size())
        {
            filled.clear();
            return Fail(ERROR_INVALID_PARAMETER);
        }
        filled += inserts[number];
    }
    return filled.empty() ? Fail(ERROR_NO_WORK_DONE) : 1;
}
