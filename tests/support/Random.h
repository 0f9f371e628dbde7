// tests/support/Random.h: numbers and choices for tests that try many; the same ones in each run.
#pragma once
#include <cstdint>
#include <iterator>
#include <random>

namespace test {

class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}

    template <class Number> Number below(Number n) {  // 0 to n - 1
        return static_cast<Number>(m_engine() % static_cast<std::uint32_t>(n));
    }
    bool oneIn(std::uint32_t n) { return below(n) == 0; }
    template <class List> const auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }

private:
    std::mt19937 m_engine;
};

}  // namespace test
