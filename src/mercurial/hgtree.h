// Trees of revisions in Mercurial repositories.
#pragma once

#include "frame/tree.h"

#include <memory>
#include <optional>
#include <string>

namespace tarnwell
{

std::unique_ptr<TreeReader> OpenHgTree(const std::u16string& path,
                                       const std::optional<std::u16string>& revision,
                                       Patience& patience);

} // namespace tarnwell
