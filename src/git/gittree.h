// Trees of revisions in Git repositories.
#pragma once

#include "frame/tree.h"
#include "git/gititem.h"

namespace tarnwell
{

std::unique_ptr<TreeReader> OpenGitTree(GitItem item, Patience& patience);

} // namespace tarnwell
