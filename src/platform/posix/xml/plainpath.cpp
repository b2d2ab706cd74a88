#include "platform/posix/xml/plainpath.h"

#include <algorithm>

namespace tarnwell::posix
{
bool IsSmallLetterName(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char unit) { return unit >= 'a' && unit <= 'z'; });
}

bool IsText(const pugi::xml_node& node)
{
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

std::optional<PlainPath> PlainPath::From(std::string_view expression)
{
    PlainPath path;
    if (!expression.starts_with("./"))
        return std::nullopt;
    expression.remove_prefix(2);
    for (std::size_t slash = expression.find('/'); slash != std::string_view::npos;
         slash = expression.find('/'))
    {
        if (!IsSmallLetterName(expression.substr(0, slash)))
            return std::nullopt;
        path.elements_.emplace_back(expression.substr(0, slash));
        expression.remove_prefix(slash + 1);
    }
    if (expression == "text()")
        return path;
    if (!expression.starts_with('@') || !IsSmallLetterName(expression.substr(1)))
        return std::nullopt;
    path.attribute_ = expression.substr(1);
    return path;
}

const char* PlainPath::FirstIn(const pugi::xml_node& node, std::size_t step) const
{
    if (step < elements_.size())
    {
        const char* const name = elements_[step].c_str();
        for (pugi::xml_node child = node.child(name); child; child = child.next_sibling(name))
        {
            if (const char* const found = FirstIn(child, step + 1))
                return found;
        }
        return nullptr;
    }
    if (!attribute_.empty())
    {
        const pugi::xml_attribute attribute = node.attribute(attribute_.c_str());
        return attribute ? attribute.value() : nullptr;
    }
    const pugi::xml_node text = node.find_child(IsText);
    return text ? text.value() : nullptr;
}

} // namespace tarnwell::posix
