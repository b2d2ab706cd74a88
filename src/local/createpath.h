// Making a folder with its missing ancestors.
#pragma once

#include "frame/publish.h"

#include <string>

namespace tarnwell
{

// Makes each level of `path` in turn. Levels that exist, and levels that may not be made, are
// passed over, so that a refusal at the last level goes unnoticed, on purpose. A failure is
// published for `reporter` with the level at which it happened.
HRESULT CreateFolderPath(const std::u16string& path, const Reporter& reporter);

} // namespace tarnwell
