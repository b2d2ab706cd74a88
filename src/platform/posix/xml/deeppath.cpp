#include "platform/posix/xml/deeppath.h"

#include "platform/posix/xml/plainpath.h"

#include <algorithm>

namespace tarnwell::posix
{
namespace
{

// The node behind `node` in the order of the document; null behind the last.
pugi::xml_node NodeBehind(pugi::xml_node node)
{
    if (const pugi::xml_node child = node.first_child())
        return child;
    for (; node; node = node.parent())
    {
        if (const pugi::xml_node next = node.next_sibling())
            return next;
    }
    return node;
}

} // namespace

std::optional<DeepPath> DeepPath::From(std::string_view expression)
{
    const std::size_t attribute = expression.rfind("/@");
    if (!expression.starts_with("//") || attribute == std::string_view::npos)
        return std::nullopt;
    DeepPath path;
    path.attribute_ = expression.substr(attribute + 2);
    bool isPlain = IsSmallLetterName(path.attribute_);
    expression = expression.substr(1, attribute - 1);
    while (!expression.empty())
    {
        const std::size_t slash = expression.rfind('/');
        const std::string_view name = expression.substr(slash + 1);
        isPlain &= IsSmallLetterName(name);
        path.elements_.emplace_back(name);
        expression = expression.substr(0, slash);
    }
    return isPlain ? std::optional(std::move(path)) : std::nullopt;
}

const char* DeepPath::FirstIn(const pugi::xml_node& node) const
{
    for (pugi::xml_node each = node.root(); each; each = NodeBehind(each))
    {
        if (!LeadsTo(each))
            continue;
        if (const pugi::xml_attribute attribute = each.attribute(attribute_.c_str()))
            return attribute.value();
    }
    return nullptr;
}

bool DeepPath::LeadsTo(pugi::xml_node node) const
{
    return std::all_of(elements_.begin(), elements_.end(), [&](const std::string& name) {
        const bool isIt = name == node.name();
        node = node.parent();
        return isIt;
    });
}

} // namespace tarnwell::posix
