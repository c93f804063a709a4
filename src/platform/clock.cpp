// The time of day, by the standard library's clock.
#include "platform/clock.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace fenmark::platform {

std::string utcNow() {
    using namespace std::chrono;
    const auto now = floor<seconds>(system_clock::now());
    const auto day = floor<days>(now);
    const year_month_day date(day);
    const hh_mm_ss time(now - day);
    const auto padded = [](std::int64_t value, std::size_t digits) {
        std::string text = std::to_string(value);
        return text.insert(0, digits - std::min(digits, text.size()), '0');
    };
    return padded(int{date.year()}, 4) + "-" + padded(unsigned{date.month()}, 2) + "-" +
           padded(unsigned{date.day()}, 2) + "T" + padded(time.hours().count(), 2) + ":" +
           padded(time.minutes().count(), 2) + ":" + padded(time.seconds().count(), 2) + "Z";
}

} // namespace fenmark::platform
