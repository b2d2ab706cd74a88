// Trees of revisions in Subversion repositories.
#pragma once

#include "frame/hostuser.h"
#include "frame/tree.h"

#include <optional>
#include <string>

namespace tarnwell
{

// What `path` was in `revision`, or in that which the path tells. `host` gives the credentials.
std::unique_ptr<TreeReader> OpenSvnTree(const HostUIUser& host, const std::u16string& path,
                                        const std::optional<std::u16string>& revision,
                                        Patience& patience);

} // namespace tarnwell
