#include "subversion/svnxml.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tarnwell
{

namespace
{

constexpr std::string_view prologueStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"";
constexpr std::string_view prologueEnd = "?>";
constexpr std::size_t longestPrologue = 1000; // bytes; behind its words are only blanks
constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view nameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_:0123456789-.";
constexpr std::size_t firstCharacters = 54; // those of them that a name may begin with
// The client's documents are flat.
constexpr std::size_t deepest = 16;

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(blanks) == std::string_view::npos;
}

// The name at the start of `text`, which is taken away; empty without one.
std::string_view TakeName(std::string_view& text)
{
    const std::size_t end = std::min(text.find_first_not_of(nameCharacters), text.size());
    const std::string_view name = text.substr(0, end);
    if (name.empty() || nameCharacters.find(name.front()) >= firstCharacters)
        return {};
    text.remove_prefix(end);
    return name;
}

// Whether there were any.
bool TakeBlanks(std::string_view& text)
{
    const std::size_t end = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(end);
    return end > 0;
}

// False for what is no character of a document.
bool AppendCharacter(std::uint32_t code, std::string& text)
{
    const bool isCharacter = code == '\t' || code == '\n' || code == '\r' ||
                             (code >= 0x20 && code < 0xD800) || (code > 0xDFFF && code < 0xFFFE) ||
                             (code > 0xFFFF && code <= 0x10FFFF);
    if (isCharacter)
        detail::AppendUtf8(text, code);
    return isCharacter;
}

// What stands between "&" and ";".
bool AppendReference(std::string_view name, std::string& text)
{
    constexpr std::pair<std::string_view, char> known[] = {
        {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    for (const auto& [word, character] : known)
    {
        if (name == word)
        {
            text += character;
            return true;
        }
    }
    if (!name.starts_with('#'))
        return false;
    const bool isHexadecimal = name.starts_with("#x");
    name.remove_prefix(isHexadecimal ? 2 : 1);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), code, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == name.data() + name.size() && AppendCharacter(code, text);
}

// Replaces references and line ends. In an attribute's value every literal blank becomes a space.
// False for what can't stand there.
bool AppendCharacters(std::string_view raw, bool isValue, std::string& text)
{
    if (!isValue && raw.find("]]>") != std::string_view::npos)
        return false;
    text.reserve(text.size() + raw.size());
    while (!raw.empty())
    {
        const std::size_t plain =
            std::min(raw.find_first_of(isValue ? "&\r\n\t<" : "&\r<"), raw.size());
        text += raw.substr(0, plain);
        raw.remove_prefix(plain);
        if (raw.empty())
            break;
        const char special = raw.front();
        if (special == '<')
            return false;
        raw.remove_prefix(1);
        if (special == '&')
        {
            const std::size_t end = raw.find(';');
            if (end == std::string_view::npos || !AppendReference(raw.substr(0, end), text))
                return false;
            raw.remove_prefix(end + 1);
            continue;
        }
        if (special == '\r' && raw.starts_with('\n'))
            raw.remove_prefix(1);
        text += isValue ? ' ' : '\n';
    }
    return true;
}

// The attributes behind an element's name. False for what are none.
bool ReadAttributes(std::string_view text, SvnElement& element)
{
    for (;;)
    {
        const bool hasBlank = TakeBlanks(text);
        if (text.empty())
            return true;
        const std::string_view name = hasBlank ? TakeName(text) : std::string_view();
        TakeBlanks(text);
        if (name.empty() || element.Attribute(name) != nullptr || !text.starts_with('='))
            return false;
        text.remove_prefix(1);
        TakeBlanks(text);
        if (text.empty() || (text.front() != '"' && text.front() != '\''))
            return false;
        const std::size_t end = text.find(text.front(), 1);
        if (end == std::string_view::npos)
            return false;
        auto& [key, value] = element.attributes.emplace_back(name, std::string());
        if (!AppendCharacters(text.substr(1, end - 1), true, value))
            return false;
        text.remove_prefix(end + 1);
    }
}

} // namespace

const std::string* SvnElement::Attribute(std::string_view wanted) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& each) { return each.first == wanted; });
    return found == attributes.end() ? nullptr : &found->second;
}

const SvnElement* SvnElement::Child(std::string_view wanted) const
{
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const SvnElement& each) { return each.name == wanted; });
    return found == children.end() ? nullptr : &*found;
}

const std::string* SvnElement::ChildText(std::string_view wanted) const
{
    const SvnElement* const child = Child(wanted);
    return child == nullptr ? nullptr : &child->text;
}

std::optional<SvnElement> SvnXmlReader::Next()
{
    while (!found_ && ReadOne())
    {
    }
    return std::exchange(found_, std::nullopt);
}

bool SvnXmlReader::ReadOne()
{
    if (isBad_)
        return false;
    if (!hasPrologue_)
        return ReadPrologue();
    // First the "<" of the tag is looked for, then its ">", which may also stand in a value.
    const std::string_view bytes = feed_.Rest();
    for (; searched_ < bytes.size(); ++searched_)
    {
        const char byte = bytes[searched_];
        if (!inTag_)
        {
            searched_ = std::min(bytes.find('<', searched_), bytes.size());
            inTag_ = searched_ < bytes.size();
            if (!inTag_)
                break;
        }
        else if (quote_ != '\0')
            quote_ = byte == quote_ ? '\0' : quote_;
        else if (byte == '"' || byte == '\'')
            quote_ = byte;
        else if (byte == '>')
        {
            keptBytes_ += searched_;
            const bool isRead =
                (keptBytes_ <= most_ && ReadTag(bytes.substr(0, searched_))) || Fail();
            feed_.Drop(searched_ + 1);
            searched_ = 0;
            inTag_ = false;
            if (!IsKept())
                keptBytes_ = 0;
            return isRead;
        }
    }
    if (searched_ > most_ - std::min(most_, keptBytes_))
        return Fail();
    // Behind the root there are only blanks.
    if (hasRoot_ && open_.empty() && !inTag_)
    {
        if (!IsBlank(bytes))
            return Fail();
        feed_.Drop(bytes.size());
        searched_ = 0;
    }
    return false;
}

bool SvnXmlReader::ReadPrologue()
{
    const std::string_view bytes = feed_.Rest();
    const std::string_view start = bytes.substr(0, prologueStart.size());
    if (!prologueStart.starts_with(start))
        return Fail();
    const std::size_t end = bytes.substr(0, longestPrologue).find(prologueEnd);
    if (end == std::string_view::npos && bytes.size() >= longestPrologue)
        return Fail();
    if (end == std::string_view::npos || start.size() < prologueStart.size())
        return false;
    if (!IsBlank(bytes.substr(start.size(), end - start.size())))
        return Fail();
    hasPrologue_ = true;
    feed_.Drop(end + prologueEnd.size());
    return true;
}

// `token` is the text in front of a tag and the tag without its ">".
bool SvnXmlReader::ReadTag(std::string_view token)
{
    const std::size_t start = token.find('<');
    const std::string_view text = token.substr(0, start);
    std::string_view tag = token.substr(start + 1);
    if (open_.empty() && !IsBlank(text))
        return false;
    std::string dropped;
    if (!open_.empty() && !AppendCharacters(text, false, IsKept() ? open_.back().text : dropped))
        return false;
    if (tag.starts_with('/'))
    {
        tag.remove_prefix(1);
        const std::string_view name = TakeName(tag);
        return IsBlank(tag) && ReadEnd(name);
    }
    const bool isWhole = tag.ends_with('/');
    if (isWhole)
        tag.remove_suffix(1);
    return ReadStart(tag) && (!isWhole || ReadEnd(open_.back().name));
}

bool SvnXmlReader::ReadStart(std::string_view tag)
{
    const bool isSecondRoot = open_.empty() && hasRoot_;
    if (isSecondRoot || open_.size() == deepest)
        return false;
    SvnElement element;
    element.name = TakeName(tag);
    if (element.name.empty() || !ReadAttributes(tag, element))
        return false;
    hasRoot_ = true;
    open_.push_back(std::move(element));
    if (!IsKept() && open_.back().name == wanted_)
        kept_ = open_.size();
    return true;
}

bool SvnXmlReader::ReadEnd(std::string_view name)
{
    if (open_.empty() || open_.back().name != name)
        return false;
    SvnElement element = std::move(open_.back());
    open_.pop_back();
    if (kept_ == open_.size() + 1)
    {
        kept_ = 0;
        found_ = std::move(element);
    }
    else if (IsKept())
        open_.back().children.push_back(std::move(element));
    return true;
}

bool SvnXmlReader::IsKept() const
{
    return kept_ != 0;
}

bool SvnXmlReader::Fail()
{
    isBad_ = true;
    return false;
}

} // namespace tarnwell
