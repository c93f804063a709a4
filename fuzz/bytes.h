// Takes values off the front of a fuzzer's input; what lies behind its end is 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace fenmark::fuzz {

class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return left_.empty(); }
    std::string_view rest() const { return left_; }

    template <class T>
    T take() {
        T value{};
        const std::size_t size = left_.size() < sizeof value ? left_.size() : sizeof value;
        if (size != 0) {
            std::memcpy(&value, left_.data(), size);
        }
        left_.remove_prefix(size);
        return value;
    }
    // 0 to count - 1; 0 if count is 0.
    std::size_t index(std::size_t count) { return count == 0 ? 0 : take<std::uint16_t>() % count; }
    std::string_view text(std::size_t size) {
        const std::string_view taken = left_.substr(0, size);
        left_.remove_prefix(taken.size());
        return taken;
    }
    // A real: one that is hard on formulas, a plain one of some survey, or any bits at all.
    double real() {
        static constexpr double kHard[] = {0.0,    -0.0,   1.0,    -1.0,  0.5,    1e-3,  1e-6,     1e-9,  1e-17, 1e-320,
                                           1e15,   1e17,   1e155,  1e300, -1e300, 1e308, -1e308,   3e-5,  1e5,   -1e5,
                                           1e-300, 2000.0, 3.1415, 1e9,   -1e9,   1e-12, 6.283185, 1e100, 400.0};
        const auto kind = take<std::uint8_t>();
        if (kind < 128) {
            return static_cast<double>(take<std::int16_t>()) / 16.0;
        }
        if (kind < 192) {
            return kHard[kind % (sizeof kHard / sizeof kHard[0])];
        }
        return take<double>();
    }

  private:
    std::string_view left_;
};

} // namespace fenmark::fuzz
