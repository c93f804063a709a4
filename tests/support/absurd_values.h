// Values that no survey has, and the places of a record that they can stand in: what tests of bad input share.
#pragma once

#include <fenmark/alignment/record.h>

#include <iterator>
#include <limits>

namespace fenmark::test {

inline constexpr double kAbsurd[] = {std::numeric_limits<double>::quiet_NaN(),
                                     std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity(),
                                     1e308,
                                     -1e308,
                                     1e300,
                                     -1e300,
                                     1e150,
                                     1e17,
                                     1e9,
                                     1e-7,
                                     1e-300,
                                     1e-320,
                                     0.0,
                                     -0.0,
                                     -1.0};

// The fields of a record that hold reals, in order.
inline constexpr double Calelm::*kRealFields[] = {&Calelm::sx,   &Calelm::sy, &Calelm::ex, &Calelm::ey,  &Calelm::dir,
                                                  &Calelm::par,  &Calelm::r1, &Calelm::r2, &Calelm::len, &Calelm::sang,
                                                  &Calelm::eang, &Calelm::k1, &Calelm::k2, &Calelm::k3};
inline constexpr int kRealFieldCount = static_cast<int>(std::size(kRealFields));

} // namespace fenmark::test
