#include "module/outcome.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{

void PrintTo(const Outcome& outcome, std::ostream* out)
{
    *out << "status " << std::hex << static_cast<std::uint32_t>(outcome.status) << std::dec;
    if (outcome.error)
        *out << " and \"" << EncodeName(outcome.error->text).value_or("?") << "\"";
    else
        *out << " and no text";
}

} // namespace tarnwell::test
