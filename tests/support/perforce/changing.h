// The commands by which files come into a depot: of a stand-in that plays a server with a client
// of its user's, where the depot's description says so.
#pragma once

#include "support/perforce/depot.h"
#include "support/perforce/options.h"

namespace tarnwell::test::perforce
{

int ShowInfo(const Depot& depot, const Call& call);
int ChangeWorkspace(const Depot& depot, const Call& call);
int Sync(const Depot& depot, const Call& call);
int Add(const Depot& depot, const Call& call);
int Edit(const Depot& depot, const Call& call);
int Delete(const Depot& depot, const Call& call);
int Submit(const Depot& depot, const Call& call);

} // namespace tarnwell::test::perforce
