// Trees of local folders, as a snapshot of their volume has them.
#pragma once

#include "frame/tree.h"

#include <optional>
#include <string>

namespace tarnwell
{

std::unique_ptr<TreeReader> OpenLocalTree(const std::u16string& path,
                                          const std::optional<std::u16string>& revision,
                                          Patience& patience);

} // namespace tarnwell
