// The text that a failed call leaves in the calling thread's error information.
#pragma once

#include <tarnwell/com.h>

#include <optional>
#include <string>

namespace tarnwell::test
{

struct PublishedError
{
    GUID interfaceId;
    std::u16string source;
    std::u16string text;
};

// Takes the error information out; nothing if there is none.
std::optional<PublishedError> TakeError();

// The text alone, taken out; "(none)" if there is none.
std::u16string TakeErrorText();

void ClearError();

// A text that ends in a position in the source, with "N" for the number of the line.
std::u16string WithoutLine(std::u16string text);

// Without the carriage returns that some systems put into line ends.
std::u16string WithLineFeeds(std::u16string text);

} // namespace tarnwell::test
