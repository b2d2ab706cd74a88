// Times, and what to make of several.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace tarnwell::bench
{

template <class Action> double SecondsOf(Action&& action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The value in the middle, or between the two in the middle. There must be one.
inline double MedianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace tarnwell::bench
