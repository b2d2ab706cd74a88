// Trees of revisions in Git repositories.
#pragma once

#include "frame/tree.h"
#include "git/gitplace.h"

namespace tarnwell
{

std::unique_ptr<TreeReader> OpenGitTree(const std::u16string& path,
                                        const std::optional<std::u16string>& revision,
                                        Patience& patience);

} // namespace tarnwell
