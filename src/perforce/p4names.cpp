#include "perforce/p4names.h"

#include <algorithm>
#include <array>

namespace tarnwell
{

namespace
{

struct Encoding
{
    char byte;
    std::string_view text;
};
// The characters that mean something in the client's paths.
constexpr std::array<Encoding, 4> encodings{
    {{'@', "%40"}, {'#', "%23"}, {'*', "%2A"}, {'%', "%25"}}};

const Encoding* EncodingAt(std::string_view text)
{
    const auto isHere = [&](const Encoding& encoding) {
        const std::string_view here = text.substr(0, encoding.text.size());
        return here == encoding.text || (encoding.byte == '*' && here == "%2a");
    };
    const auto* const found = std::find_if(encodings.begin(), encodings.end(), isHere);
    return found == encodings.end() ? nullptr : found;
}

const Encoding* EncodingOf(char byte)
{
    const auto* const found =
        std::find_if(encodings.begin(), encodings.end(),
                     [&](const Encoding& encoding) { return encoding.byte == byte; });
    return found == encodings.end() ? nullptr : found;
}

} // namespace

std::string P4Literal(std::string_view path)
{
    std::string literal;
    for (std::size_t at = 0; at < path.size(); ++at)
    {
        const Encoding* const encoding = EncodingOf(path[at]);
        const bool isEncoded = EncodingAt(path.substr(at)) != nullptr;
        if (encoding == nullptr || isEncoded)
            literal += path[at];
        else
            literal += encoding->text;
    }
    return literal;
}

bool IsP4Path(std::string_view path)
{
    constexpr std::string_view ends("\0\r\n", 3);
    if (path.find_first_of(ends) != std::string_view::npos ||
        path.find("...") != std::string_view::npos)
        return false;
    std::string_view rest = path.substr(2);
    while (!rest.empty())
    {
        const std::string_view part = rest.substr(0, rest.find('/'));
        if (part.empty() || part == "." || part == "..")
            return false;
        rest.remove_prefix(std::min(rest.size(), part.size() + 1));
    }
    return true;
}

std::u16string P4FolderOfAll(std::u16string_view local)
{
    constexpr std::u16string_view all = u"...";
    // A separator stands in front of it.
    if (!local.ends_with(all) || local.size() == all.size())
        return {};
    return std::u16string(local.substr(0, local.size() - all.size() - 1));
}

std::string P4Encoded(std::string_view path)
{
    std::string encoded;
    for (const char byte : path)
    {
        const Encoding* const encoding = EncodingOf(byte);
        encoding == nullptr ? encoded += byte : encoded += encoding->text;
    }
    return encoded;
}

std::string P4Decoded(std::string_view path)
{
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at)
    {
        const Encoding* const encoding = EncodingAt(path.substr(at));
        decoded += encoding == nullptr ? path[at] : encoding->byte;
        if (encoding != nullptr)
            at += encoding->text.size() - 1;
    }
    return decoded;
}

} // namespace tarnwell
