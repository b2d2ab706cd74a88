#include "support/costs.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <stdexcept>
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

Spread SpreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t quarter = values.size() / 4;
    return {values[quarter], MedianOf(values), values[values.size() - 1 - quarter]};
}

Spread RatioOf(const std::vector<double>& ours, const std::vector<double>& theirs)
{
    std::vector<double> ratios(ours.size());
    std::transform(ours.begin(), ours.end(), theirs.begin(), ratios.begin(), std::divides<>());
    return SpreadOf(std::move(ratios));
}

double PeakOf(const std::function<void()>& action)
{
    const pid_t child = fork();
    if (child == 0)
    {
        try
        {
            action();
            _exit(0);
        }
        catch (...)
        {
            _exit(1);
        }
    }
    rusage usage{};
    int status = 0;
    wait4(child, &status, 0, &usage);
    if (status != 0)
        throw std::runtime_error("what was to be measured has failed");
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

double PeakOfProgram(const std::vector<std::string>& arguments)
{
    return PeakOf([&] {
        std::vector<char*> pointers;
        for (const std::string& argument : arguments)
            pointers.push_back(const_cast<char*>(argument.c_str()));
        pointers.push_back(nullptr);
        dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        execvp(pointers[0], pointers.data());
        _exit(1);
    });
}

} // namespace tarnwell::bench
