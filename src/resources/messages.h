// The numbers of the module's texts.
#pragma once

#include <cstdint>

namespace tarnwell
{

enum class MessageId : std::uint16_t
{
#define TARNWELL_MESSAGE(name, id, english, japanese) name = id,
#include "resources/messages.inc"
#undef TARNWELL_MESSAGE
};

} // namespace tarnwell
