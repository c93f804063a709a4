// Values that are not numbers, infinite, huge, tiny and negative, in every place: each call ends with a status. A hang is
// the runner's to report, which stops a test that goes on for ever.
#include "alignment/support_alignment.h"
#include "support/absurd_values.h"

using namespace fenmark::alignment_test;
using fenmark::test::kAbsurd;
using fenmark::test::kRealFields;

namespace {

// Whether what a function calls done holds numbers.
bool finite(const double p[2]) {
    return std::isfinite(p[0]) && std::isfinite(p[1]);
}

void walk(const Calelm& rec, const Calelm& other) {
    double p[2] = {0.0, 0.0};
    double q[2] = {0.0, 0.0};
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    for (const double s : {0.0, 10.0, -5.0, 1e9, 1e300, -1e300, kNotANumber, kInfinity, -kInfinity}) {
        if (ali_onl(&rec, s, p, &a) == 0) {
            EXPECT_TRUE(finite(p) && std::isfinite(a)) << "station " << s << " type " << rec.type;
        }
        if (ali_oflA(&rec, s, 1.0, 2.0, p) == 0) {
            EXPECT_TRUE(finite(p));
        }
    }
    const double points[][2] = {{0.0, 0.0}, {30.0, 40.0}, {kNotANumber, 1.0}, {1.0, kInfinity}, {1e300, -1e300}};
    for (const auto& point : points) {
        if (ali_proj(&rec, point, &a, q) == 0 && std::isfinite(rec.k1 + rec.k2)) {
            EXPECT_TRUE(std::isfinite(a));
        }
        chk_ang(&rec, point, 10.0, &a);
        get_moniDist(point, 1, &rec, &a);
    }
    if (ali_getl(&rec, &a) == 0 && rec.type != ALI_CLOTHOID) {
        EXPECT_TRUE(std::isfinite(a)) << "type " << rec.type;
    }
    CDsameA(&rec, &other);
    CDsameA(&other, &rec);
    jointCheck(&rec, &other);
    jointCheck(&other, &rec);
    Calelm out{};
    ali_pmov(&rec, 10.0, 1.0, &out);
    ali_tmov(&rec, p, 1.0, &out);
    ali_paraS(&rec, 5.0, &out);
    para_pmovr(&rec, 5.0, &out);
    ali_intp(&rec, &other, p, &a, &b, q, &c, &d);
    ali_intp(&other, &rec, p, &a, &b, q, &c, &d);
    ali_intp(&rec, &rec, p, &a, &b, q, &c, &d);
}

} // namespace

TEST(AbsurdRecords, EveryFieldOfEveryTypeEndsInAStatus) {
    const Calelm good[3] = {straightRecord(0.0, 0.0, 100.0, 50.0), arcFrom(0.0, 10.0, 0.5, 1.0, 80.0, 60.0),
                            clothoidFrom(5.0, 0.0, 0.4, -1.0, 100.0, 0.0, 120.0)};
    for (const Calelm& rec : good) {
        for (const Calelm& other : good) {
            for (const auto field : kRealFields) {
                for (const double value : kAbsurd) {
                    Calelm bad = rec;
                    bad.*field = value;
                    walk(bad, other);
                    for (int mode = 0; mode <= 2; ++mode) {
                        Calelm made = bad;
                        if (ali_mak(&made, mode) >= 0) {
                            EXPECT_TRUE(std::isfinite(made.sx + made.sy) || !std::isfinite(bad.sx + bad.sy));
                            EXPECT_FALSE(std::isnan(made.len)) << rec.type << " mode " << mode << " value " << value;
                        }
                    }
                }
            }
        }
    }
}

TEST(AbsurdRecords, TheSeriesEndsForEveryAngle) {
    for (const double A : kAbsurd) {
        for (const double tau : {kNotANumber, kInfinity, -kInfinity, 10.0, 55.0, 57.0, 100.0, 1e10, 1e300, 1e-320}) {
            double X = 0.0;
            double Y = 0.0;
            EXPECT_EQ(CDAcalxy(A, tau, &X, &Y), 0);
            double v[13];
            clothoidElements(A, tau, v);
            double w[7];
            CDcharLmA(A, tau, w);
        }
    }
    double X = 0.0;
    double Y = 0.0;
    CDAcalxy(100.0, kNotANumber, &X, &Y);
    EXPECT_TRUE(std::isnan(X));
    CDAcalxy(100.0, 1e10, &X, &Y);
    EXPECT_TRUE(std::isnan(X));
}

TEST(AbsurdRecords, AStationFarBeyondTheEndIsRefused) {
    const Calelm rec = clothoidFrom(0.0, 0.0, 0.4, -1.0, 100.0, 0.0, 120.0);
    double p[2];
    double t = 0.0;
    // Beyond about ten times A the series has no value at all.
    for (const double s : {1059.0, 1070.0, 2000.0, 1e6, 1e100}) {
        EXPECT_EQ(ali_onlA(&rec, s, p, &t), -1) << s;
    }
}

TEST(AbsurdRecords, RandomRecordsOfRandomBitsEnd) {
    Random random(51001);
    SCOPED_TRACE(random.trace());
    const auto value = [&] {
        switch (random.whole(0, 3)) {
        case 0:
            return kAbsurd[random.pick(static_cast<int>(std::size(kAbsurd)))];
        case 1:
            return std::ldexp(random.uniform(-1.0, 1.0), random.whole(-60, 60));
        default:
            return random.uniform(-300.0, 300.0);
        }
    };
    Calelm before{};
    for (int i = 0; i < 3000; ++i) {
        Calelm rec{};
        rec.type = static_cast<int16_t>(random.whole(1, 3));
        for (const auto field : kRealFields) {
            rec.*field = value();
        }
        rec.dir = random.sign();
        walk(rec, before);
        for (int mode = 0; mode <= 2; ++mode) {
            Calelm made = rec;
            ali_mak(&made, mode);
        }
        before = rec;
    }
    SUCCEED();
}
