// Hosts call from threads with small stacks.
#pragma once

#include <functional>

namespace tarnwell::test
{

// Runs `call` on a thread with a stack of 256 KiB and waits for it.
void RunOnSmallStack(const std::function<void()>& call);

} // namespace tarnwell::test
