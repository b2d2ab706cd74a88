#include "platform/pathrules.h"

namespace tarnwell
{

const PathRules& platformPathRules = windowsPathRules;

} // namespace tarnwell
