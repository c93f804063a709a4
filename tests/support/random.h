// The random source of tests and benchmarks.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace fenmark::test {

// A seed gives the same cases everywhere, which the distributions of the standard library do not promise. With
// SCOPED_TRACE(random.trace()) every failure names it; FENMARK_TEST_SEED chooses another.
class Random {
  public:
    explicit Random(std::uint64_t seed) : seed_(chosen(seed)), engine_(seed_) {}

    std::uint64_t seed() const { return seed_; }
    std::string trace() const { return "seed " + std::to_string(seed_); }

    double uniform(double low, double high) {
        return low + (high - low) * static_cast<double>(engine_() >> 11) * 0x1.0p-53;
    }
    // Small values as likely as large ones.
    double scaled(double low, double high) { return std::exp(uniform(std::log(low), std::log(high))); }
    double sign() { return (engine_() >> 40 & 1) != 0 ? 1.0 : -1.0; }
    bool coin() { return sign() > 0.0; }
    // From 0 to count - 1.
    int pick(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
    // Both ends included.
    int whole(int low, int high) { return low + pick(high - low + 1); }

  private:
    static std::uint64_t chosen(std::uint64_t seed) {
        const char* given = std::getenv("FENMARK_TEST_SEED");
        return given != nullptr ? std::strtoull(given, nullptr, 10) : seed;
    }

    std::uint64_t seed_;
    std::mt19937_64 engine_;
};

} // namespace fenmark::test
