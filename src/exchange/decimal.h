// Exact decimals of coordinates, for figures that must agree with a hand calculation to the last digit.
//
// A coordinate is the decimal number that its file has, and a 64-bit real only stands for it: the shortest decimal that
// reads back to the real. Products and areas are summed as whole numbers, so no rounding happens before the last step.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace fenmark::exchange {

__extension__ typedef __int128 Wide; // the sum of products of two coordinates in micrometres

// A length in whole micrometres; what lies beyond the sixth decimal is rounded half away from zero.
class Decimal {
  public:
    Decimal() = default;
    // Nothing if the value is not finite or 10,000 km or more from zero.
    static std::optional<Decimal> of(double metres);

    std::int64_t micrometres() const { return micro_; }
    // With 0 to 6 decimals, rounded half away from zero; never "-0".
    [[nodiscard]] std::string text(int decimals) const;

    friend Decimal operator-(const Decimal& a, const Decimal& b) { return Decimal(a.micro_ - b.micro_); }
    friend bool operator==(const Decimal&, const Decimal&) = default;

  private:
    explicit Decimal(std::int64_t micro) : micro_(micro) {}

    std::int64_t micro_ = 0;
};

// The decimal number that the real stands for with that many decimals, rounded once, half away from zero; never "-0". The
// value is finite.
[[nodiscard]] std::string roundedText(double value, int decimals);

// An area in units of 1e-12 m2.
struct DecimalArea {
    Wide units = 0;

    // With six decimals, rounded half away from zero; never "-0.000000".
    [[nodiscard]] std::string text() const;
    [[nodiscard]] DecimalArea absolute() const { return {units < 0 ? -units : units}; }
};
DecimalArea product(const Decimal& a, const Decimal& b);
// Half of the area, rounded once to six decimals.
[[nodiscard]] DecimalArea halfOf(const DecimalArea& area);

// The registered area of a lot from its area with six decimals: cut, never rounded. Residential land and mineral springs
// keep two decimals, and so does everything up to 10 m2; other land keeps none.
[[nodiscard]] std::string registeredArea(const std::string& area, bool residential);

// The distance over two differences with three decimals, cut or rounded half up; exact, so that a side of 5 m is not 4.999.
enum class SideRule { Cut, Round };
[[nodiscard]] std::string sideText(const Decimal& dx, const Decimal& dy, SideRule rule);

} // namespace fenmark::exchange
