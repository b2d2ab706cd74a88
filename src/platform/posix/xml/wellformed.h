// What the XML library lets pass though no XML document may have it.
#pragma once

#include <string_view>

namespace tarnwell::posix
{

// Whether every "&" outside of comments, sections and instructions names one of the five known
// characters or a character's number, and no control character but white space stands anywhere.
bool HasOnlyKnownCharacters(std::string_view document);

} // namespace tarnwell::posix
