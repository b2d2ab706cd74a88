#include "platform/posix/xml/plainpath.h"

#include <algorithm>

namespace tarnwell::posix
{
namespace
{

bool IsName(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char unit) { return unit >= 'a' && unit <= 'z'; });
}

} // namespace

std::optional<PlainPath> PlainPath::From(std::string_view expression)
{
    PlainPath path;
    if (!expression.starts_with("./"))
        return std::nullopt;
    expression.remove_prefix(2);
    for (std::size_t slash = expression.find('/'); slash != std::string_view::npos;
         slash = expression.find('/'))
    {
        if (!IsName(expression.substr(0, slash)))
            return std::nullopt;
        path.elements_.emplace_back(expression.substr(0, slash));
        expression.remove_prefix(slash + 1);
    }
    if (expression == "text()")
        return path;
    if (!expression.starts_with('@') || !IsName(expression.substr(1)))
        return std::nullopt;
    path.attribute_ = expression.substr(1);
    return path;
}

pugi::xpath_node PlainPath::FirstIn(const pugi::xml_node& node, std::size_t step) const
{
    if (step < elements_.size())
    {
        for (const pugi::xml_node& child : node.children(elements_[step].c_str()))
        {
            if (const pugi::xpath_node found = FirstIn(child, step + 1))
                return found;
        }
        return {};
    }
    if (!attribute_.empty())
        return {node.attribute(attribute_.c_str()), node};
    return node.find_child([](const pugi::xml_node& child) {
        return child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
    });
}

} // namespace tarnwell::posix
