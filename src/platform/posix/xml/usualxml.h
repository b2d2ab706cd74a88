// Documents that are plainly well formed, as nearly all are that programs print.
#pragma once

#include "platform/xml.h"

#include <string_view>
#include <vector>

namespace tarnwell::posix
{

// Whether the strict parser would take the document, for those of which that can be told at a tenth
// of its price: elements, attributes, text and the five characters with names, in ASCII names
// without a namespace. False says nothing.
bool IsUsualXml(std::string_view document);

// The same. Puts the elements that can be left out as `unasked` says, in the document's order, into
// `found`. One that has an element `unasked.parent` in it isn't among them, as that is asked about.
bool IsUsualXml(std::string_view document, const XmlUnasked& unasked,
                std::vector<std::string_view>& found);

} // namespace tarnwell::posix
