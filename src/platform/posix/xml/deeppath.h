// The paths to an attribute of an element that may be anywhere in a document.
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwell::posix
{

// "//NAME/NAME/@NAME", with any number of elements. It finds what the library finds for the same
// path, and goes no further.
class DeepPath
{
public:
    // Nothing for a path of another form.
    static std::optional<DeepPath> From(std::string_view expression);

    // The value of the first in the order of the document to which `node` belongs; null if there is
    // none.
    const char* FirstIn(const pugi::xml_node& node) const;

private:
    // Whether the path's elements lead to `node`.
    bool LeadsTo(pugi::xml_node node) const;

    std::vector<std::string> elements_; // the last one first
    std::string attribute_;
};

} // namespace tarnwell::posix
