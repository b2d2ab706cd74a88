// Lines of MLSD: facts, each closed by a semicolon, one blank, the name.
#include "platform/posix/internet/listingparser.h"

#include <algorithm>
#include <charconv>

namespace tarnwell::posix
{
namespace
{

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    });
    return lower;
}

// Of the blank between facts and name. A link's target among the facts may have blanks of its own.
std::size_t BlankOf(std::string_view line)
{
    const std::size_t first = line.find(' ');
    if (first == 0)
        return first;
    const std::size_t closed = line.find("; ");
    return closed == std::string_view::npos ? first : closed + 1;
}

// What is gathered of one line, before all of it is known.
struct Facts
{
    std::string type;
    std::optional<std::string> permissions;
    std::optional<unsigned> mode;
    ListedEntry entry;
};

// 0 if it can't be read.
std::uint64_t WholeNumber(std::string_view text)
{
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end ? number : 0;
}

// "20200131150405.678", in UTC.
void SetTime(ListedEntry& entry, std::string_view text)
{
    constexpr std::size_t length = 14;
    const auto part = [&](std::size_t at, std::size_t digits) {
        return Number(text.substr(std::min(at, text.size()), digits), digits);
    };
    const auto year = part(0, 4);
    const auto month = part(4, 2);
    const auto day = part(6, 2);
    const auto hour = part(8, 2);
    const auto minute = part(10, 2);
    const auto second = part(12, 2);
    const bool isWhole = year && month && day && hour && minute && second;
    const bool hasFraction = text.size() > length && text[length] == '.';
    if (!isWhole || (text.size() != length && !hasFraction))
        return;
    entry.time = MomentOf(*year, *month, *day, {*hour, *minute, *second});
    constexpr std::size_t digits = 9;
    std::string fraction(hasFraction ? text.substr(length + 1, digits) : "");
    fraction.resize(digits, '0');
    entry.fraction = static_cast<std::uint32_t>(WholeNumber(fraction));
}

void SetFact(Facts& facts, const std::string& name, std::string_view value)
{
    if (name == "type")
        facts.type = Lower(value);
    else if (name == "size")
        facts.entry.size = WholeNumber(value);
    else if (name == "modify")
        SetTime(facts.entry, value);
    else if (name == "perm")
        facts.permissions = Lower(value);
    else if (name == "unix.mode")
    {
        unsigned mode = 0;
        const char* const end = value.data() + value.size();
        constexpr int octal = 8;
        if (std::from_chars(value.data(), end, mode, octal).ptr == end && !value.empty())
            facts.mode = mode;
    }
}

bool IsReadOnly(const Facts& facts)
{
    constexpr unsigned writeBits = 0222;
    if (facts.permissions)
        return facts.permissions->find_first_of("aw") == std::string::npos;
    return facts.mode && (*facts.mode & writeBits) == 0;
}

} // namespace

std::optional<ListedEntry> ParseFactLine(std::string_view line)
{
    const std::size_t blank = BlankOf(line);
    if (blank == std::string_view::npos)
        return std::nullopt;
    Facts facts;
    for (std::string_view rest = line.substr(0, blank); !rest.empty();)
    {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        const std::string_view fact = rest.substr(0, end);
        const std::size_t equals = fact.find('=');
        if (equals == std::string_view::npos)
            return std::nullopt;
        SetFact(facts, Lower(fact.substr(0, equals)), fact.substr(equals + 1));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const std::string_view name = line.substr(blank + 1);
    if (facts.type == "cdir" || facts.type == "pdir" || !IsPlainName(name))
        return std::nullopt;
    facts.entry.name = name;
    facts.entry.isUtc = true;
    facts.entry.isFolder = facts.type == "dir";
    facts.entry.isLink =
        facts.type.starts_with("os.unix=slink") || facts.type.starts_with("os.unix=symlink");
    facts.entry.isReadOnly = IsReadOnly(facts);
    return std::move(facts.entry);
}

} // namespace tarnwell::posix
