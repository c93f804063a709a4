// The clothoid series against its plain summation and against 30-digit values, and the relations of the clothoid.
#include "alignment/clothoid/series.h"
#include "support_alignment.h"

#include <bit>
#include <fstream>
#include <sstream>

using namespace fenmark::alignment_test;
using fenmark::alignment::clothoidPointPasses;
using fenmark::alignment::Point;

namespace {

// The series as the tables give it: every power by the power function, every factorial built afresh in each pass.
// Slow, and the reference for the digits and the number of passes.
int plainSeries(double A, double tau, double& X, double& Y) {
    X = Y = 0.0;
    if (tau < 1.389e-6) {
        return 0;
    }
    const double s = A / std::sqrt(2.0);
    double sum_x = 0.0;
    double sum_y = 0.0;
    double before_x = 0.0;
    double before_y = 0.0;
    for (int n = 1;; ++n) {
        const volatile double exponent = 2.0 * n; // kept from the compiler, which would multiply for the exponent 2
        const double p = std::pow(tau, exponent);
        double even = 1.0;
        for (int i = 1; i <= 2 * n; ++i) {
            even *= i;
        }
        double odd = 1.0;
        for (int i = 1; i <= 2 * n + 1; ++i) {
            odd *= i;
        }
        const double sign = n % 2 == 1 ? -1.0 : 1.0;
        sum_x += sign * p / ((4.0 * n + 1.0) * even);
        sum_y += sign * p / ((4.0 * n + 3.0) * odd);
        X = (sum_x + 1.0) * s * 2.0 * std::sqrt(tau);
        Y = (sum_y + 1.0 / 3.0) * s * 2.0 * std::pow(tau, 1.5);
        if (std::fabs(X - before_x) < 1e-4 && std::fabs(Y - before_y) < 1e-4) {
            return n;
        }
        before_x = X;
        before_y = Y;
    }
}

std::int64_t unitsApart(double a, double b) {
    const auto x = std::bit_cast<std::int64_t>(a);
    const auto y = std::bit_cast<std::int64_t>(b);
    return x > y ? x - y : y - x;
}

constexpr std::int64_t kMostUnits = 4;

struct Reference {
    double tau;
    double x;
    double y;
};

std::vector<Reference> references() {
    std::ifstream file(FENMARK_SOURCE_DIR "/tests/alignment/data/clothoid_series.txt");
    std::vector<Reference> all;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::istringstream words(line);
        std::string tau;
        std::string x;
        std::string y;
        words >> tau >> x >> y;
        all.push_back(
            {std::strtod(tau.c_str(), nullptr), std::strtod(x.c_str(), nullptr), std::strtod(y.c_str(), nullptr)});
    }
    return all;
}

} // namespace

TEST(ClothoidSeries, EqualsThePlainSummationInDigitsAndPasses) {
    Random random(53001);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 20000; ++i) {
        const double A = std::exp(random.uniform(std::log(0.01), std::log(1e7)));
        const double tau = i % 4 == 0 ? random.uniform(1.6, 6.0) : std::exp(random.uniform(std::log(1.4e-6), 0.6));
        double X = 0.0;
        double Y = 0.0;
        Point point;
        const int expected = plainSeries(A, tau, X, Y);
        ASSERT_EQ(clothoidPointPasses(A, tau, point), expected) << "A " << A << " tau " << tau;
        ASSERT_LE(unitsApart(point.x, X), kMostUnits) << "A " << A << " tau " << tau;
        ASSERT_LE(unitsApart(point.y, Y), kMostUnits) << "A " << A << " tau " << tau;
    }
}

TEST(ClothoidSeries, StopsAfterFourPassesAtHalfAndSixAtOneAndAHalf) {
    Point point;
    EXPECT_EQ(clothoidPointPasses(100.0, 0.5, point), 4);
    EXPECT_EQ(clothoidPointPasses(100.0, 1.5, point), 6);
    // The test already runs after the first term, so a short clothoid ends after one.
    EXPECT_EQ(clothoidPointPasses(1e-5, 0.5, point), 1);
}

TEST(ClothoidSeries, GivesTheReferenceValues) {
    const auto all = references();
    ASSERT_GE(all.size(), 20u);
    // The absolute stop at 1e-4 m leaves the next term away; for A = 1e8 that is below 1e-13 of A.
    constexpr double A = 1e8;
    constexpr double kRelative = 4e-13;
    for (const Reference& r : all) {
        double X = 0.0;
        double Y = 0.0;
        EXPECT_EQ(CDAcalxy(A, r.tau, &X, &Y), 0);
        EXPECT_NEAR(X / A, r.x, kRelative * r.x) << r.tau;
        EXPECT_NEAR(Y / A, r.y, kRelative * r.y + 1e-12 * (r.tau > 1.0 ? 1.0 : 0.0)) << r.tau;
        // At survey size the result is good to a hundredth of a millimetre.
        CDAcalxy(300.0, r.tau, &X, &Y);
        EXPECT_NEAR(X, 300.0 * r.x, 1e-5) << r.tau;
        EXPECT_NEAR(Y, 300.0 * r.y, 1e-5) << r.tau;
    }
}

TEST(ClothoidSeries, TheFigureOfTheTables) {
    double X = 0.0;
    double Y = 0.0;
    CDRcalxy(100.0, 100.0, &X, &Y);
    EXPECT_NEAR(X, 97.52877, kFiveDecimals);
    EXPECT_NEAR(Y, 16.37140, kFiveDecimals);
    CDAcalxy(100.0, 0.5, &X, &Y);
    EXPECT_NEAR(X, 97.52877, kFiveDecimals);
}

TEST(ClothoidSeries, CollapsesToTheOriginBelowTheAngleStep) {
    double X = 9.0;
    double Y = 9.0;
    CDAcalxy(100.0, 1.0e-6, &X, &Y);
    EXPECT_EQ(X, 0.0);
    EXPECT_EQ(Y, 0.0);
    CDAcalxy(100.0, std::nextafter(1.389e-6, 0.0), &X, &Y);
    EXPECT_EQ(X, 0.0);
    CDAcalxy(100.0, 1.389e-6, &X, &Y);
    EXPECT_NEAR(X, 100.0 * std::sqrt(2.0 * 1.389e-6), 1e-9);
    CDAcalxy(100.0, -0.5, &X, &Y);
    EXPECT_EQ(X, 0.0);
    EXPECT_EQ(Y, 0.0);
}

TEST(ClothoidSeries, GoesOnSmoothlyWhereThePlainSummationTakesOver) {
    using fenmark::alignment::kRecurrenceTau;
    Point below;
    Point above;
    clothoidPointPasses(100.0, kRecurrenceTau, below);
    clothoidPointPasses(100.0, std::nextafter(kRecurrenceTau, 3.0), above);
    EXPECT_NEAR(below.x, above.x, kLengthBits);
    EXPECT_NEAR(below.y, above.y, kLengthBits);
}

TEST(ClothoidRelations, InfiniteRadiusIsTheOrigin) {
    double X = 9.0;
    double Y = 9.0;
    EXPECT_EQ(CDRcalxy(100.0, 0.0, &X, &Y), 0);
    EXPECT_EQ(X, 0.0);
    EXPECT_EQ(Y, 0.0);
    X = Y = 9.0;
    EXPECT_EQ(CDLcalxy(100.0, 0.000009, &X, &Y), 0);
    EXPECT_EQ(X, 0.0);
    EXPECT_EQ(Y, 0.0);
    double v = 9.0;
    CDRang(100.0, 0.0, &v);
    EXPECT_EQ(v, 0.0);
    CDLang(100.0, 0.000009, &v);
    EXPECT_EQ(v, 0.0);
    CDAngR(100.0, 1.388e-6, &v);
    EXPECT_EQ(v, 0.0);
    CDRlen(100.0, 0.0, &v);
    EXPECT_EQ(v, 0.0);
}

TEST(ClothoidRelations, RadiusLengthAndAngleAgree) {
    Random random(53002);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 1000; ++i) {
        const double A = random.uniform(20.0, 500.0);
        const double R = A * random.uniform(0.57, 20.0);
        double L = 0.0;
        double tau = 0.0;
        double from_length = 0.0;
        double back = 0.0;
        CDRlen(A, R, &L);
        CDRang(A, R, &tau);
        CDLang(A, L, &from_length);
        CDAngR(A, tau, &back);
        EXPECT_NEAR(R * L, A * A, 1e-9 * A * A);
        EXPECT_NEAR(tau, L / (2.0 * R), kAngleBits);
        EXPECT_NEAR(from_length, tau, kAngleBits);
        EXPECT_NEAR(back, R, 1e-9 * R);
        double x1 = 0.0;
        double y1 = 0.0;
        double x2 = 0.0;
        double y2 = 0.0;
        CDRcalxy(A, R, &x1, &y1);
        CDLcalxy(A, L, &x2, &y2);
        EXPECT_NEAR(x1, x2, kLengthBits);
        EXPECT_NEAR(y1, y2, kLengthBits);
    }
}

TEST(ClothoidRelations, ShiftAndCentreAreZeroForARadiusOfTheLengthStep) {
    double tau = 9.0;
    double shift = 9.0;
    double Xm = 9.0;
    EXPECT_EQ(AelmAtri(100.0, 0.00001, &tau, &shift, &Xm), 0);
    EXPECT_EQ(tau, 0.0);
    EXPECT_EQ(shift, 0.0);
    EXPECT_EQ(Xm, 0.0);
    AelmAtri(100.0, 200.0, &tau, &shift, &Xm);
    EXPECT_EQ(tau, 0.125);
    // Shift L^2 / 24 R and Xm L / 2, first order of the tables.
    EXPECT_NEAR(shift, 50.0 * 50.0 / (24.0 * 200.0), 1e-3);
    EXPECT_NEAR(Xm, 25.0, 0.05);
}

TEST(ClothoidRelations, CharacteristicValuesHangTogether) {
    double v[7];
    for (double& value : v) {
        value = 9.0;
    }
    EXPECT_EQ(CDcharLmA(100.0, 0.0, v), 0);
    for (const double value : v) {
        EXPECT_EQ(value, 0.0);
    }
    const double A = 120.0;
    const double R = 150.0;
    CDcharLmA(A, R, v);
    double tau = 0.0;
    double shift = 0.0;
    double Xm = 0.0;
    double X = 0.0;
    double Y = 0.0;
    AelmAtri(A, R, &tau, &shift, &Xm);
    CDRcalxy(A, R, &X, &Y);
    EXPECT_DOUBLE_EQ(v[5], Xm);
    EXPECT_NEAR(v[6], R + shift, kLengthBits);
    EXPECT_NEAR(v[4], std::hypot(X, Y), kLengthBits);
    EXPECT_NEAR(v[2], (R + shift) * std::tan(tau) + Xm, kLengthBits);
    EXPECT_NEAR(v[3], (R + shift) / std::cos(tau) - R, kLengthBits);
    EXPECT_NEAR(v[0] + v[3] / std::sin(tau), v[2], kLengthBits);
    EXPECT_NEAR(v[1] * std::tan(tau), v[3], kLengthBits);
}

TEST(ClothoidRelations, ARadiusAtOrBelowTheLimitIsRefused) {
    EXPECT_EQ(CDchkAR(100.0, 56.0), -1);
    EXPECT_EQ(CDchkAR(100.0, 56.0000001), 0);
    EXPECT_EQ(CDchkAR(100.0, 56.1), 0);
    EXPECT_EQ(CDchkAR(100.0, 0.0), 0);
    EXPECT_EQ(CDchkAR(0.0, 100.0), -1);
    EXPECT_EQ(CDchkAR(100.0, -200.0), -1);
    EXPECT_EQ(CDchkAR(kNotANumber, 100.0), -1);
    EXPECT_EQ(CDchkAR(100.0, kNotANumber), -1);
}

TEST(PreciseClothoid, GivesTheReferenceValues) {
    for (const Reference& r : references()) {
        double v[13];
        ASSERT_EQ(clothoidElements(100.0, r.tau, v), 0);
        // The last term added is at most 1e-8, so the one left out is below 1e-9 of the length.
        const double allowed = 1e-9 * v[1];
        EXPECT_NEAR(v[4], 100.0 * r.x, allowed) << r.tau;
        EXPECT_NEAR(v[5], 100.0 * r.y, allowed) << r.tau;
    }
}

TEST(PreciseClothoid, HoldsFarBeyondRealElements) {
    // Integrals of cos and sin of u^2 / 2 from 0 to sqrt(2 tau), 30 digits of mpmath.quad, cut to 12.
    constexpr Reference kFar[] = {{8.0, 1.13313195878, 0.907513419953}, {25.0, 0.864744593978, 0.746587778835}};
    for (const Reference& r : kFar) {
        double v[13];
        ASSERT_EQ(clothoidElements(1.0, r.tau, v), 0);
        EXPECT_NEAR(v[4], r.x, 1e-8) << r.tau;
        EXPECT_NEAR(v[5], r.y, 1e-8) << r.tau;
    }
    double v[13];
    EXPECT_EQ(clothoidElements(1.0, 30.0, v), 0);
}

TEST(PreciseClothoid, ItsValuesHangTogether) {
    const double A = 80.0;
    const double tau = 0.7;
    double v[13];
    ASSERT_EQ(clothoidElements(A, tau, v), 0);
    EXPECT_EQ(v[0], A);
    EXPECT_EQ(v[6], tau);
    EXPECT_NEAR(v[1] * v[2], A * A, 1e-9);
    EXPECT_NEAR(v[2] * v[3], 1.0, 1e-15);
    EXPECT_NEAR(v[7], v[4] + v[5] * std::tan(tau), kLengthBits);
    EXPECT_NEAR(v[8], v[4] - v[5] / std::tan(tau), kLengthBits);
    EXPECT_NEAR(v[9] * std::sin(tau), v[5], kLengthBits);
    EXPECT_NEAR(v[10] * std::cos(tau), v[5], kLengthBits);
    EXPECT_NEAR(v[11], v[2] * std::cos(tau) + v[5] - v[2], kLengthBits);
    EXPECT_NEAR(v[12], v[4] - v[2] * std::sin(tau), kLengthBits);
}

TEST(PreciseClothoid, FlatBeginningHasNoRadiusAndNoShortTangent) {
    double v[13];
    ASSERT_EQ(clothoidElements(80.0, 0.9e-8, v), 0);
    EXPECT_EQ(v[2], 0.0);
    EXPECT_EQ(v[9], 0.0);
    EXPECT_EQ(v[8], v[4]);
    ASSERT_EQ(clothoidElements(80.0, 1.1e-8, v), 0);
    EXPECT_GT(v[2], 0.0);
    EXPECT_GT(v[9], 0.0);
    ASSERT_EQ(clothoidElements(80.0, 0.0, v), 0);
    EXPECT_EQ(v[4], 0.0);
}

TEST(PreciseClothoid, RefusesWhatIsNoClothoidAndWritesNothing) {
    double v[13];
    for (double& value : v) {
        value = 9.0;
    }
    EXPECT_EQ(clothoidElements(0.0, 0.5, v), -1);
    EXPECT_EQ(clothoidElements(-1.0, 0.5, v), -1);
    EXPECT_EQ(clothoidElements(100.0, -1e-12, v), -1);
    EXPECT_EQ(clothoidElements(100.0, kNotANumber, v), -1);
    EXPECT_EQ(clothoidElements(100.0, kInfinity, v), -1);
    EXPECT_EQ(clothoidElements(kInfinity, 0.5, v), -1);
    EXPECT_EQ(clothoidElements(100.0, std::nextafter(30.0, 31.0), v), -1);
    for (const double value : v) {
        EXPECT_EQ(value, 9.0);
    }
}
