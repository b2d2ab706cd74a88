// Whether bytes are an XML document.
#pragma once

#include <string_view>

namespace tarnwell::posix
{

// As strictly as the parsers of other platforms see it: XML 1.0 in UTF-8 with namespaces, and
// without a document type.
bool IsWellFormed(std::string_view document);

} // namespace tarnwell::posix
