#pragma once

#include <ctime>

/// Seconds that the processor works for an action: what else a busy machine does is not counted.
template <class Action> double ProcessorSecondsOf(const Action& action) {
    const std::clock_t start = std::clock();
    action();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Far above what work in proportion to its size takes, sanitized too, and far below what any other takes.
inline constexpr double InProportion = 20;
