#include "support/perforceserver.h"

#include "support/environmentvalue.h"
#include "support/perforcedepot.h"
#include "support/realperforce.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{

std::unique_ptr<PerforceServer> PerforceServer::Make()
{
    if (IsReal())
        return std::make_unique<RealPerforce>();
    auto depot = std::make_unique<PerforceDepot>();
    depot->Tell("port\t" + depot->Port());
    return depot;
}

bool PerforceServer::IsReal()
{
    return EnvironmentValue::Of("TARNWELL_PERFORCE_LIVE").has_value();
}

std::u16string PerforceServer::Address(const std::string& path) const
{
    return u"p4://" + DecodeName(Base() + (path.empty() ? "" : "/" + path));
}

} // namespace tarnwell::test
