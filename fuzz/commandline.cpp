// Any values on a command line, and any text as one.
#include "platform/posix/processes/commandline.h"
#include "runner/commandline.h"
#include "support/target.h"

#include <tarnwell/text.h>

namespace tarnwell::fuzz
{

namespace
{

using Texts = std::vector<std::u16string>;

// Line feeds stand between the values.
Texts ValuesIn(std::u16string_view text)
{
    Texts values;
    for (;;)
    {
        const std::size_t end = text.find(u'\n');
        values.emplace_back(text.substr(0, end));
        if (end == std::u16string_view::npos)
            return values;
        text.remove_prefix(end + 1);
    }
}

std::u16string LineOf(const Texts& values)
{
    std::u16string line = u"\"program\"";
    for (const std::u16string& value : values)
        line += u" " + Quoted(value);
    return line;
}

} // namespace

void Try(std::string_view bytes)
{
    const std::u16string text = DecodeName(bytes);
    Texts values = ValuesIn(text);
    const std::u16string line = LineOf(values);
    Texts parts = posix::SplitCommandLine(line);
    values.insert(values.begin(), u"program");
    Expect(parts == values, "each quoted value is one argument, and the same");

    const bool isPlain = text.find(u'"') == std::u16string::npos && !text.ends_with(u'\\');
    if (isPlain)
        Expect(Quoted(text) == u"\"" + text + u"\"", "a plain value stands as it is");

    const Texts split = posix::SplitCommandLine(text);
    Expect(!split.empty(), "there is always a program");
    const Texts arguments(split.begin() + 1, split.end());
    const Texts again = posix::SplitCommandLine(LineOf(arguments));
    Expect(Texts(again.begin() + 1, again.end()) == arguments, "what was split can be quoted");
}

} // namespace tarnwell::fuzz
