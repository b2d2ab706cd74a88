// What is a part of one line to a server, and must not begin another.
#pragma once

#include "frame/messages.h"

#include <string>
#include <string_view>

namespace tarnwell
{

// Whether there is no control character in it.
bool FitsInLine(std::u16string_view text);

// Throws message `id`, which names the path, if that doesn't fit. Before anything is sent.
void RequireLine(const std::u16string& path, MessageId id);

} // namespace tarnwell
