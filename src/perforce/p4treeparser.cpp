#include "perforce/p4treeparser.h"

#include <algorithm>
#include <array>

namespace tarnwell
{

namespace
{

constexpr std::array<std::string_view, 9> bases = {
    "text", "binary", "symlink", "apple", "resource", "unicode", "utf16", "utf8", "tempobj"};

constexpr std::array<std::string_view, 4> textBases = {"text", "unicode", "utf16", "utf8"};

// Revisions with these leave nothing to be read.
constexpr std::array<std::string_view, 4> endings = {"delete", "move/delete", "purge", "archive"};

bool Holds(std::string_view letters, char letter)
{
    return letters.find(letter) != std::string_view::npos;
}

} // namespace

// Old types have their letters in front of the base.
P4Type ReadP4Type(std::string_view text)
{
    const std::size_t plus = text.find('+');
    const std::string_view name = text.substr(0, plus);
    std::string letters(plus == std::string_view::npos ? std::string_view()
                                                       : text.substr(plus + 1));
    const auto* const base = std::find_if(
        bases.begin(), bases.end(), [&](std::string_view each) { return name.ends_with(each); });
    if (base != bases.end())
        letters += name.substr(0, name.size() - base->size());
    const std::string_view kind = base != bases.end() ? *base : std::string_view();
    return {kind == "symlink", Holds(letters, 'x'), Holds(letters, 'k'),
            std::find(textBases.begin(), textBases.end(), kind) != textBases.end()};
}

std::optional<P4File> ReadP4File(const P4Record& record)
{
    P4File file;
    file.path = record.Text("depotFile");
    const std::string& action = record.Text("headAction");
    if (!file.path.starts_with("//") || action.empty())
        return std::nullopt;
    file.type = ReadP4Type(record.Text("headType"));
    file.size = P4Number(record.Text("fileSize")).value_or(0);
    file.digest = record.Text("digest");
    file.isThere = std::find(endings.begin(), endings.end(), action) == endings.end();
    return file;
}

std::optional<std::string> ReadP4Folder(const P4Record& record)
{
    const std::string& path = record.Text("dir");
    if (!path.starts_with("//"))
        return std::nullopt;
    return path;
}

std::optional<std::string_view> BelowP4Folder(std::string_view path, std::string_view folder)
{
    const bool isRoot = folder == "//";
    const std::size_t start = folder.size() + (isRoot ? 0 : 1);
    if (!path.starts_with(folder) || path.size() <= start || path[start - 1] != '/')
        return std::nullopt;
    const std::string_view below = path.substr(start);
    for (std::string_view rest = below; !rest.empty();)
    {
        const std::size_t slash = rest.find('/');
        const std::string_view part = rest.substr(0, slash);
        const bool isLast = slash == std::string_view::npos;
        if (part.empty() || part == "." || part == ".." || Holds(part, '\0') ||
            (!isLast && slash + 1 == rest.size()))
            return std::nullopt;
        rest.remove_prefix(isLast ? rest.size() : slash + 1);
    }
    return below;
}

} // namespace tarnwell
