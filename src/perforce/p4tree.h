// Trees of revisions in Perforce depots.
#pragma once

#include "frame/hostuser.h"
#include "frame/tree.h"
#include "perforce/p4item.h"

namespace tarnwell
{

// `host` gives the credentials, and is told of refused ones.
std::unique_ptr<TreeReader> OpenP4Tree(const HostUIUser& host, P4Item item, Patience& patience);

} // namespace tarnwell
