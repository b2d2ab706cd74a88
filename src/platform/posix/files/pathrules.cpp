#include "platform/pathrules.h"

namespace tarnwell
{

const PathRules& platformPathRules = posixPathRules;

} // namespace tarnwell
