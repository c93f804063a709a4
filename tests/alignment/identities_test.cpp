// What must not change a result: running an element the other way, mirroring it, moving it there and back.
#include "support/exact_chain.h"
#include "support_alignment.h"

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

Calelm randomCurve(Random& random, Place place, int i) {
    return i % 3 == 0   ? randomStraight(random, place)
           : i % 3 == 1 ? randomArc(random, place, 5.0)
                        : randomClothoid(random, place);
}

// The mirror image on the map: east and west exchanged.
Calelm mirrored(const Calelm& e) {
    Calelm out = e;
    out.sy = -e.sy;
    out.ey = -e.ey;
    out.sang = kTwoPi - e.sang;
    out.eang = kTwoPi - e.eang;
    if (e.type != ALI_STRAIGHT) {
        out.dir = -e.dir;
    }
    if (e.type == ALI_ARC) {
        out.k2 = -e.k2;
    }
    return out;
}

// Points that a function rounds to 1e-5 m after a different chain of operations.
constexpr double kOneStep = 1.1e-5;
// Tangents rounded to 1.389e-6 after a different chain of operations; those within 1e-5 of a full turn become 0.
constexpr double kOneAngleStep = 1.1e-5;

} // namespace

TEST(Identities, TheReversedElementHasTheSamePointsAndOppositeTangents) {
    Random random(58001);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1500; ++i) {
            const Calelm rec = randomCurve(random, place, i);
            const Calelm back = exact::reversed(rec);
            const double s = random.uniform(0.01, 0.99) * rec.len;
            double p[2];
            double q[2];
            double t = 0.0;
            double u = 0.0;
            ASSERT_EQ(ali_onl(&rec, s, p, &t), 0);
            ASSERT_EQ(ali_onl(&back, rec.len - s, q, &u), 0);
            // An arc's ends are rounded, and its station counts from one of them.
            const double allowed = rec.type == ALI_CLOTHOID ? kLengthBits : rec.type == ALI_ARC ? 3e-5 : kOneStep;
            EXPECT_NEAR(p[0], q[0], allowed);
            EXPECT_NEAR(p[1], q[1], allowed);
            EXPECT_LT(angleBetween(t, u + kPi), kOneAngleStep);
            const Calelm again = exact::reversed(back);
            EXPECT_TRUE(exact::same_element(rec, again, 0.0, 1e-15));
        }
    }
}

TEST(Identities, TheMirroredElementHasMirroredPoints) {
    Random random(58002);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1500; ++i) {
            const Calelm rec = randomCurve(random, place, i);
            const Calelm image = mirrored(rec);
            const double s = random.uniform(0.01, 0.99) * rec.len;
            double p[2];
            double q[2];
            double t = 0.0;
            double u = 0.0;
            ASSERT_EQ(ali_onl(&rec, s, p, &t), 0);
            ASSERT_EQ(ali_onl(&image, s, q, &u), 0);
            const double allowed = rec.type == ALI_CLOTHOID ? kLengthBits : kOneStep;
            EXPECT_NEAR(p[0], q[0], allowed);
            EXPECT_NEAR(p[1], -q[1], allowed);
            EXPECT_LT(angleBetween(t, -u), kOneAngleStep);
            // A point 5 m off has its mirrored foot at the same station.
            double off[2] = {p[0] + 5.0 * std::sin(t), p[1] - 5.0 * std::cos(t)};
            double off_image[2] = {off[0], -off[1]};
            double station = 0.0;
            double station_image = 0.0;
            double foot[2];
            const int status = ali_proj(&rec, off, &station, foot);
            ASSERT_EQ(ali_proj(&image, off_image, &station_image, foot), status);
            if (status == 0) {
                EXPECT_NEAR(station, station_image, kFootStation);
            }
        }
    }
}

TEST(Identities, MovingBothElementsMovesTheirMeeting) {
    Random random(58003);
    SCOPED_TRACE(random.trace());
    int met = 0;
    for (int i = 0; i < 4500; ++i) {
        const Calelm e1 = randomCurve(random, kPlaces[0], i);
        const Calelm e2 = randomCurve(random, kPlaces[0], i / 3);
        double p[2];
        double q[2];
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;
        double d = 0.0;
        const bool two_clothoids = e1.type == ALI_CLOTHOID && e2.type == ALI_CLOTHOID;
        const bool line_and_clothoid = e1.type + e2.type == ALI_STRAIGHT + ALI_CLOTHOID && e1.type != e2.type;
        if (ali_intp(&e1, &e2, p, &a, &b, q, &c, &d) != 0) {
            continue;
        }
        double on[2];
        double t1 = 0.0;
        double t2 = 0.0;
        ASSERT_EQ(ali_onl(&e1, a, on, &t1), 0);
        if (ali_onl(&e2, two_clothoids ? c : b, on, &t2) != 0 || std::fabs(std::sin(t1 - t2)) < 0.1) {
            continue; // flat crossings swing with the rounding of the move
        }
        Calelm m1{};
        Calelm m2{};
        ali_pmov(&e1, 37000.0, 2.5, &m1);
        ali_pmov(&e2, 37000.0, 2.5, &m2);
        double pm[2];
        double am = 0.0;
        double bm = 0.0;
        ASSERT_EQ(ali_intp(&m1, &m2, pm, &am, &bm, q, &c, &d), 0);
        const double allowed = line_and_clothoid ? 3e-3 : 1e-3;
        EXPECT_NEAR(pm[0] - p[0], 37000.0 * std::cos(2.5), allowed);
        EXPECT_NEAR(pm[1] - p[1], 37000.0 * std::sin(2.5), allowed);
        EXPECT_NEAR(am, a, allowed);
        ++met;
    }
    EXPECT_GT(met, 100);
}
