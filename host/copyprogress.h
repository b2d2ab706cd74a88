// What the user sees of a copy, and how it is cancelled.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <string>

namespace tarnwell::host
{

// Goes on until Ctrl-C. If standard error is a terminal, it shows there how far the copy is: bytes,
// rate and, where the module knows the whole, percent.
ComPtr<ICopyProgress> MakeCopyProgress(const std::u16string& what);

} // namespace tarnwell::host
