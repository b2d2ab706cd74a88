#include "e2e/json.h"

#include "e2e/hostrun.h"

#include <tarnwell/text.h>

#include <stdexcept>

namespace tarnwell::test
{

namespace
{

class Parser
{
public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::vector<JsonMember> ParseLine()
    {
        std::vector<JsonMember> members = ParseObject();
        if (position_ != text_.size())
            Refuse("something behind the object");
        return members;
    }

private:
    [[noreturn]] void Refuse(const std::string& why) const
    {
        throw std::runtime_error("not JSON: " + why + " at " + std::to_string(position_) + " of " +
                                 std::string(text_));
    }

    char Peek() const
    {
        return position_ < text_.size() ? text_[position_] : '\0';
    }

    void Expect(char wanted)
    {
        if (Peek() != wanted)
            Refuse(std::string("no ") + wanted);
        ++position_;
    }

    std::vector<JsonMember> ParseObject()
    {
        std::vector<JsonMember> members;
        Expect('{');
        while (Peek() != '}')
        {
            if (!members.empty())
                Expect(',');
            const std::string name = ParseText();
            Expect(':');
            members.push_back(ParseValue(name));
        }
        Expect('}');
        return members;
    }

    JsonMember ParseValue(const std::string& name)
    {
        if (Peek() == '"')
            return {name, ParseText(), true};
        const std::size_t start = position_;
        if (Peek() == '{')
            ParseObject();
        else
            ParseBareWord();
        return {name, std::string(text_.substr(start, position_ - start)), false};
    }

    void ParseBareWord()
    {
        const std::size_t end = text_.find_first_of(",}", position_);
        const std::string_view word = text_.substr(position_, end - position_);
        const bool isNumber = !word.empty() &&
                              word.find_first_not_of("0123456789") == std::string_view::npos &&
                              (word == "0" || word[0] != '0');
        if (!isNumber && word != "true" && word != "false" && word != "null")
            Refuse("no value");
        position_ += word.size();
    }

    std::string ParseText()
    {
        std::string value;
        Expect('"');
        while (Peek() != '"')
        {
            if (position_ >= text_.size())
                Refuse("an open text");
            if (Peek() == '\\')
                value += ParseEscape();
            else
                value += ParseCharacter();
        }
        Expect('"');
        return value;
    }

    std::string ParseCharacter()
    {
        const auto [point, bytes] = detail::DecodePoint(text_.substr(position_));
        if (bytes == 0 || point < 0x20)
            Refuse("a bad character");
        position_ += bytes;
        return std::string(text_.substr(position_ - bytes, bytes));
    }

    std::string ParseEscape()
    {
        const std::string_view escape = text_.substr(position_, 6);
        if (escape.starts_with("\\\"") || escape.starts_with("\\\\"))
        {
            position_ += 2;
            return std::string(1, escape[1]);
        }
        if (escape.size() < 6 || escape[1] != 'u' ||
            escape.find_first_not_of("0123456789abcdef", 2) != std::string_view::npos)
            Refuse("a bad escape");
        position_ += 6;
        const unsigned long unit = std::stoul(std::string(escape.substr(2)), nullptr, 16);
        return unit < 0x80 ? std::string(1, static_cast<char>(unit)) : std::string(escape);
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

} // namespace

JsonLine::JsonLine(std::string_view line) : members_(Parser(line).ParseLine()) {}

std::vector<std::string> JsonLine::Names() const
{
    std::vector<std::string> names;
    for (const JsonMember& member : members_)
        names.push_back(member.name);
    return names;
}

bool JsonLine::Has(std::string_view name) const
{
    for (const JsonMember& member : members_)
    {
        if (member.name == name)
            return true;
    }
    return false;
}

std::string JsonLine::Text(std::string_view name) const
{
    if (!Find(name).isText)
        throw std::runtime_error(std::string(name) + " is no text");
    return Find(name).value;
}

std::string JsonLine::Raw(std::string_view name) const
{
    if (Find(name).isText)
        throw std::runtime_error(std::string(name) + " is a text");
    return Find(name).value;
}

const JsonMember& JsonLine::Find(std::string_view name) const
{
    for (const JsonMember& member : members_)
    {
        if (member.name == name)
            return member;
    }
    throw std::runtime_error("no member " + std::string(name));
}

std::vector<JsonLine> JsonLinesOf(std::string_view output)
{
    std::vector<JsonLine> lines;
    for (const std::string& line : LinesOf(output))
        lines.emplace_back(line);
    return lines;
}

} // namespace tarnwell::test
