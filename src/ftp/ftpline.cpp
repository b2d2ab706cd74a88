#include "ftp/ftpline.h"

#include "frame/exception.h"
#include "frame/status.h"
#include "ftp/ftpuri.h"

#include <algorithm>

namespace tarnwell
{

bool FitsInLine(std::u16string_view text)
{
    return std::none_of(text.begin(), text.end(),
                        [](char16_t unit) { return unit < u' ' || unit == 0x7F; });
}

// No call was made whose reply could be told.
void RequireLine(const std::u16string& path, MessageId id)
{
    if (!FitsInLine(path))
        throw ComException(StatusFromError(ERROR_INVALID_PARAMETER), FormatMessageById(id, {path}),
                           At(ftpSource));
}

} // namespace tarnwell
