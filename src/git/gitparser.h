// Reading what the Git client prints.
#pragma once

#include "workingcopy/workingcopyparser.h"

namespace tarnwell
{

// The subject of a commit is its description.
RevisionList ReadGitLog(const std::u16string& path, HANDLE file);

} // namespace tarnwell
