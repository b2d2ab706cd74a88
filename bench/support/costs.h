// What an action costs, and what to make of several times.
#pragma once

#include <functional>
#include <string>
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

// The middle of several values and the range of the half around it. There must be one.
struct Spread
{
    double low;
    double middle;
    double high;
};

Spread SpreadOf(std::vector<double> values);

// What each of `ours` is to the one of `theirs` beside it.
Spread RatioOf(const std::vector<double>& ours, const std::vector<double>& theirs);

// The largest memory in bytes of a process that does nothing but `action`. It begins with the
// memory of this one.
double PeakOf(const std::function<void()>& action);

// The same of a program that runs with its output dropped. Throws if it fails.
double PeakOfProgram(const std::vector<std::string>& arguments);

} // namespace tarnwell::bench
