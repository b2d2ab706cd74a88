// Documents that are plainly well formed, as nearly all are that programs print.
#pragma once

#include <string_view>

namespace tarnwell::posix
{

// Whether the strict parser would take the document, for those of which that can be told at a tenth
// of its price: elements, attributes, text and the five characters with names, in ASCII names
// without a namespace. False says nothing.
bool IsUsualXml(std::string_view document);

} // namespace tarnwell::posix
