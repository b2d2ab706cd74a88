// Permissions mean nothing to root. What is to meet them runs on a thread that has given up root's
// rights; the thread alone, as the raw system calls do it.
#pragma once

#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace tarnwell::test
{

template <class Body> void AsNobody(Body body)
{
    constexpr unsigned nobody = 65534;
    std::thread([&] {
        if (geteuid() == 0)
        {
            syscall(SYS_setresgid, nobody, nobody, nobody);
            syscall(SYS_setresuid, nobody, nobody, nobody);
        }
        body();
    }).join();
}

} // namespace tarnwell::test
