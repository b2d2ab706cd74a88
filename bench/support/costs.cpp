#include "support/costs.h"

#include <algorithm>
#include <chrono>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwell::bench
{

namespace
{

double ProcessorTime()
{
    double total = 0;
    for (const int whose : {RUSAGE_SELF, RUSAGE_CHILDREN})
    {
        rusage usage{};
        getrusage(whose, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime})
            total += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    }
    return total;
}

} // namespace

void Costs::Add(const std::function<void()>& action)
{
    const double before = ProcessorTime();
    const auto start = std::chrono::steady_clock::now();
    action();
    const auto end = std::chrono::steady_clock::now();
    time.push_back(std::chrono::duration<double>(end - start).count());
    processor.push_back(ProcessorTime() - before);
}

double MedianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double PeakOf(const std::function<void()>& action)
{
    const pid_t child = fork();
    if (child == 0)
    {
        action();
        _exit(0);
    }
    rusage usage{};
    wait4(child, nullptr, 0, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

} // namespace tarnwell::bench
