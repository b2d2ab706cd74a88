// What the user sees of a copy, and how it is cancelled.
#pragma once

#include <tarnwell/host.h>
#include <tarnwell/pointers.h>

#include <string>

namespace tarnwell::host
{

// Goes on until Ctrl-C. If standard error is a terminal, it shows there that the copy is alive:
// a moving bar, `what` and the seconds so far. (The module tells steps, not amounts.)
ComPtr<ICopyProgress> MakeCopyProgress(const std::u16string& what);

// For a copy of `total` bytes that asks after each block of `blockSize`: shows bytes and rate.
ComPtr<ICopyProgress> MakeBlockProgress(const std::u16string& what, std::uint64_t total,
                                        std::uint64_t blockSize);

} // namespace tarnwell::host
