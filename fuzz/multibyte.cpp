// Any bytes as what a program prints: text, with a mark for each thing that is none.
#include "platform/wide.h"
#include "support/target.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace tarnwell::fuzz
{

namespace
{

int Convert(std::string_view bytes, char16_t* units, int room)
{
    return MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()),
                               Wide(units), room);
}

// Through memory of just the size that is asked for.
std::u16string Converted(std::string_view bytes)
{
    if (bytes.empty())
        return {};
    const int count = Convert(bytes, nullptr, 0);
    Expect(count > 0 && count <= static_cast<int>(bytes.size()), "bytes give units, not more");
    const std::unique_ptr<char16_t[]> units(new char16_t[static_cast<std::size_t>(count)]);
    Expect(Convert(bytes, units.get(), count) == count, "the units fit the room asked for");
    if (count > 1)
    {
        const std::unique_ptr<char16_t[]> fewer(new char16_t[static_cast<std::size_t>(count - 1)]);
        SetLastError(ERROR_SUCCESS);
        Expect(Convert(bytes, fewer.get(), count - 1) == 0 &&
                   GetLastError() == ERROR_INSUFFICIENT_BUFFER,
               "less room is too little");
    }
    return {units.get(), static_cast<std::size_t>(count)};
}

// What the text is where bytes that are none of a character have a unit each.
bool IsAllText(std::u16string_view name)
{
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        if ((name[i] & 0xFC00) == 0xD800)
            ++i;
        else if ((name[i] & 0xFC00) == 0xDC00)
            return false;
    }
    return true;
}

} // namespace

void Try(std::string_view bytes)
{
    const std::u16string text = Converted(bytes);
    const std::optional<std::string> back = EncodeName(text);
    Expect(back.has_value(), "no half of a pair stands alone");
    Expect(Converted(*back) == text, "the text is read as itself");
    const std::u16string name = DecodeName(bytes);
    if (IsAllText(name))
        Expect(text == name && *back == bytes, "what is all text is taken as it is");
    else
        Expect(text.find(u'\xFFFD') != std::u16string::npos, "what is no text is marked");

    // Whatever comes first doesn't reach past a character of one byte.
    const std::size_t middle = bytes.size() / 2;
    const std::string parted =
        std::string(bytes.substr(0, middle)) + '|' + std::string(bytes.substr(middle));
    Expect(Converted(parted) ==
               Converted(bytes.substr(0, middle)) + u'|' + Converted(bytes.substr(middle)),
           "each part is read for itself");
}

} // namespace tarnwell::fuzz
