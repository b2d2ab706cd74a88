// The paths that only go down by names, as most questions do.
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::posix
{

// "./NAME/NAME/@NAME" or "./NAME/NAME/text()", with any number of elements. It finds what the
// library finds for the same path, without a set of nodes.
class PlainPath
{
public:
    // Nothing for a path of another form.
    static std::optional<PlainPath> From(std::string_view expression);

    // The value of the first in the order of the document, as seen from `node`; null if there is
    // none.
    const char* FirstIn(const pugi::xml_node& node) const
    {
        return FirstIn(node, 0);
    }

private:
    const char* FirstIn(const pugi::xml_node& node, std::size_t step) const;

    std::vector<std::string> elements_;
    std::string attribute_; // empty for a text
};

// Small letters, as all names that are asked for.
bool IsSmallLetterName(std::string_view text);

bool IsText(const pugi::xml_node& node);

} // namespace tarnwell::posix
