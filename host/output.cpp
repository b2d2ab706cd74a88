#include "output.h"

#include "errors.h"
#include "system.h"
#include "text16.h"
#include "words.h"

#include <cstdlib>
#include <utility>

namespace tarnwell::host
{

namespace
{

inline constexpr std::size_t keptBack = 0x10000;

std::string pending;

bool IsControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

std::string Styled(const std::string& text, Style style, bool terminalObeys)
{
    const bool isColoured = terminalObeys && WantsColours(std::getenv("NO_COLOR"));
    return isColoured ? Coloured(text, style) : text;
}

// Messages have the line ends of the platform.
std::u16string Lines(std::u16string_view text)
{
    std::u16string lines;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text.substr(i, 2) != u"\r\n")
            lines += text[i];
    }
    return lines;
}

} // namespace

std::u16string Masked(std::u16string_view text, LineFeeds lineFeeds)
{
    std::u16string result(text);
    for (char16_t& unit : result)
    {
        if (IsControl(unit) && (unit != u'\n' || lineFeeds == LineFeeds::Masked))
            unit = u'?';
    }
    return result;
}

void Print(std::u16string_view text, Style style)
{
    const bool isTerminal = OutputIsTerminal();
    const std::string bytes =
        ToUtf8(isTerminal ? Masked(text, LineFeeds::Kept) : std::u16string(text));
    PrintBytes(Styled(bytes, style, OutputObeysSequences()));
    // Somebody is waiting for it.
    if (isTerminal && bytes.ends_with('\n'))
        FlushOutput();
}

void PrintBytes(std::string_view bytes)
{
    pending += bytes;
    if (pending.size() >= keptBack)
        FlushOutput();
}

void FlushOutput()
{
    const std::string bytes = std::exchange(pending, {});
    if (!bytes.empty() && !WriteOutput(bytes))
        throw Failure{E_FAIL, Say(Word::OutputUnwritable)};
}

void PrintError(std::u16string_view text, Style style)
{
    // A failure to write the output must not hide the one that is being told.
    WriteOutput(std::exchange(pending, {}));
    const bool isTerminal = ErrorsAreTerminal();
    const std::string bytes =
        ToUtf8(isTerminal ? Masked(Lines(text), LineFeeds::Kept) : std::u16string(text));
    WriteErrors(Styled(bytes, style, ErrorsObeySequences()));
}

std::u16string Shown(std::u16string_view name)
{
    return OutputIsTerminal() ? Masked(name, LineFeeds::Masked) : std::u16string(name);
}

} // namespace tarnwell::host
