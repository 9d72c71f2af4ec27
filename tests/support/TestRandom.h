#pragma once

#include <cstddef>
#include <random>
#include <vector>

/// Choices at random that are the same in every run with the same seed.
class TestRandom {
public:
    explicit TestRandom(unsigned seed) : engine_(seed) {}

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(engine_);
    }
    bool OnceIn(std::size_t times) { return Below(times) == 0; }
    template <class T> const T& OneOf(const std::vector<T>& choices) {
        return choices[Below(choices.size())];
    }

protected:
    std::mt19937 engine_;
};
