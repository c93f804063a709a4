// Compares the conversions that stand in where the standard library has none with those of this machine's library, on
// random values of many kinds. Built with FENMARK_DOUBLE_CONVERSION; prints the first difference and ends with 1.
#include "values/real_text.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::uint64_t kSeed = 20240611;
constexpr int kRandomValues = 200000;
constexpr std::size_t kRoom = 1200;

int failures = 0;

void same(const char* what, double value, const std::string& ours, const std::string& standard) {
    if (ours != standard && failures++ < 10) {
        std::printf("%s of %a: '%s', the standard library '%s'\n", what, value, ours.c_str(), standard.c_str());
    }
}

template <typename Write>
std::string text(Write write) {
    static char buffer[kRoom];
    const std::to_chars_result result = write(buffer, buffer + kRoom);
    return std::string(buffer, result.ptr);
}

void compareWriting(double value) {
    same("shortest", value, text([&](char* f, char* l) { return fenmark::writeReal(f, l, value); }),
         text([&](char* f, char* l) { return std::to_chars(f, l, value); }));
    same("plain", value, text([&](char* f, char* l) { return fenmark::writePlainReal(f, l, value); }),
         text([&](char* f, char* l) { return std::to_chars(f, l, value, std::chars_format::fixed); }));
    for (const int decimals : {0, 1, 2, 3, 4, 6, 9, 12, 15}) {
        same("fixed", value, text([&](char* f, char* l) { return fenmark::writeFixedReal(f, l, value, decimals); }),
             text([&](char* f, char* l) { return std::to_chars(f, l, value, std::chars_format::fixed, decimals); }));
    }
    same("scientific", value, text([&](char* f, char* l) { return fenmark::writeScientificReal(f, l, value, 3); }),
         text([&](char* f, char* l) { return std::to_chars(f, l, value, std::chars_format::scientific, 3); }));
}

void compareReading(const std::string& from) {
    double ours = -7.0;
    double standard = -7.0;
    const std::from_chars_result a = fenmark::readReal(from.data(), from.data() + from.size(), ours);
    const std::from_chars_result b = std::from_chars(from.data(), from.data() + from.size(), standard);
    if ((a.ptr != b.ptr || a.ec != b.ec ||
         std::bit_cast<std::uint64_t>(ours) != std::bit_cast<std::uint64_t>(standard)) &&
        failures++ < 10) {
        std::printf("reading '%s': %a to %ld, the standard library %a to %ld\n", from.c_str(), ours,
                    static_cast<long>(a.ptr - from.data()), standard, static_cast<long>(b.ptr - from.data()));
    }
}

} // namespace

int main() {
    std::mt19937_64 random(kSeed);
    std::vector<double> values{0.0,       -0.0,
                               0.5,       1.5,
                               2.5,       0.125,
                               0.375,     1e15,
                               1e16,      9007199254740992.0,
                               1e21,      1e22,
                               1e23,      1e-5,
                               1e-4,      123e3,
                               123e18,    1e300,
                               5e-324,    0.1,
                               1.0 / 3.0, 36173.0625,
                               1e5,       100000.5,
                               1.25e-7,   4503599627370497.5,
                               INFINITY,  -INFINITY};
    for (int i = 0; i < kRandomValues; ++i) {
        const double spread = static_cast<double>(random() >> 11) * 0x1p-53;
        switch (i % 4) {
        case 0: // any bits
            values.push_back(std::bit_cast<double>(random()));
            break;
        case 1: // coordinates
            values.push_back((spread - 0.5) * 2e5);
            break;
        case 2: // millimetres, and halves of them
            values.push_back(std::round((spread - 0.5) * 4e8) / 2000.0);
            break;
        default: // sums of few powers of two, which fall between two texts
            values.push_back(std::round((spread - 0.5) * 1e6) / 1024.0);
        }
    }
    for (const double value : values) {
        if (!std::isnan(value)) {
            compareWriting(value);
            if (std::isfinite(value)) {
                compareReading(text([&](char* f, char* l) { return std::to_chars(f, l, value); }) + ",");
            }
        }
    }
    for (const char* from : {"",
                             "-",
                             "+1",
                             " 1",
                             "1e",
                             "1e+",
                             "1.e3",
                             ".5",
                             "-.5x",
                             ".",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "0e999",
                             "00012.50",
                             "0.1e-1",
                             "12345678901234567890123456789",
                             "1E5",
                             "2.2250738585072012e-308",
                             "0x10",
                             "1,5",
                             "9007199254740993",
                             "1e5e5",
                             "--1"}) {
        compareReading(from);
    }
    std::printf("%zu values compared, %d differences\n", values.size(), failures);
    return failures == 0 ? 0 : 1;
}
