// The lines of a SIMA file.
#include "exchange/sima_lines.h"

#include "exchange/text.h"
#include "sima/text/cp932.h"
#include "sima/text/number.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fenmark::exchange {

namespace {

// Widths that readers by column expect.
constexpr std::size_t kNumberColumns = 5;
constexpr std::size_t kNameColumns = 20;
constexpr std::size_t kMetresColumns = 14;
constexpr int kFewestDecimals = 3;
constexpr double kRounding = 1e-7; // metres

std::string_view blanks(std::size_t width, std::size_t used) {
    static constexpr std::string_view kBlanks = "                    ";
    return kBlanks.substr(0, width > used ? std::min(width - used, kBlanks.size()) : 0);
}

} // namespace

std::string exactMetres(double value) {
    std::array<char, 400> buffer;
    const auto [end, error] = writePlainReal(buffer.data(), buffer.data() + buffer.size(), value);
    std::string text(buffer.data(), end);
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
    return decimals < kFewestDecimals ? fixedReal(value, kFewestDecimals) : text;
}

std::string roundedMetres(double value) {
    constexpr int kMostDecimals = 6;
    double unit = 1000.0;
    for (int decimals = kFewestDecimals; decimals <= kMostDecimals; ++decimals, unit *= 10.0) {
        if (std::abs(value - std::round(value * unit) / unit) <= kRounding) {
            return fixedReal(value, decimals);
        }
    }
    return fixedReal(value, 9);
}

SimaLines& SimaLines::name(std::string_view utf8) {
    name_.assign(utf8);
    for (char& c : name_) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            c = ' ';
            ++controls_;
        }
    }
    encoded_.clear();
    sima::encodeCp932(encoded_, name_);
    replaced_ += static_cast<std::size_t>(std::count(encoded_.begin(), encoded_.end(), '?') -
                                          std::count(name_.begin(), name_.end(), '?'));
    // A reader takes a field that holds a quote for a quoted one, and a field of blanks for an empty one.
    const bool onlyBlanks = !encoded_.empty() && sima::trim(encoded_).empty();
    if (onlyBlanks || encoded_.find_first_of(",\"") != std::string::npos) {
        out_ << '"';
        for (const char c : encoded_) {
            out_ << c;
            if (c == '"') {
                out_ << c;
            }
        }
        out_ << "\",";
        return *this;
    }
    out_ << encoded_ << (columns_ ? blanks(kNameColumns, encoded_.size()) : std::string_view()) << ',';
    return *this;
}

SimaLines& SimaLines::number(std::int32_t value) {
    std::array<char, 16> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    out_ << blanks(kNumberColumns, digits.size()) << digits << ',';
    return *this;
}

SimaLines& SimaLines::metres(std::string_view value) {
    // An empty field stays empty: blanks would be a value.
    out_ << (value.empty() ? std::string_view() : blanks(kMetresColumns, value.size())) << value << ',';
    return *this;
}

} // namespace fenmark::exchange
