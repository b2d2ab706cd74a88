// What an action costs, and what to make of several times.
#pragma once

#include <functional>
#include <vector>

namespace tarnwell::bench
{

// Time after time, in seconds.
struct Costs
{
    std::vector<double> time;
    std::vector<double> processor; // of this process and of its children that have ended

    void Add(const std::function<void()>& action);
};

// The value in the middle, or between the two in the middle. There must be one.
double MedianOf(std::vector<double> values);

// The largest memory in bytes of a process that does nothing but `action`. It begins with the
// memory of this one.
double PeakOf(const std::function<void()>& action);

} // namespace tarnwell::bench
