// Where two elements meet: figures, statuses, and the order of the outputs.
#include "meeting.h"
#include "support/exact_chain.h"

#include <algorithm>

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

Result lines(const Calelm& e1, const Calelm& e2) {
    Result r;
    r.status = ali_intpSS(&e1, &e2, r.p1, &r.a, &r.b);
    return r;
}

} // namespace

TEST(LineLine, IdenticalParallelAndDegenerate) {
    const Calelm line = straightRecord(0.0, 0.0, 100.0, 30.0);
    const Calelm shifted = straightRecord(0.0, 1.0, 100.0, 31.0);
    const Calelm east = straightRecord(5.0, 0.0, 5.0, 50.0);
    const Calelm east_shifted = straightRecord(6.0, 0.0, 6.0, 50.0);
    const Calelm back = straightRecord(100.0, 30.0, 0.0, 0.0);
    Calelm point = line;
    point.ex = point.sx;
    point.ey = point.sy;
    EXPECT_EQ(lines(line, line).status, -1);
    EXPECT_EQ(lines(line, back).status, -1);
    EXPECT_EQ(lines(line, shifted).status, -2);
    EXPECT_EQ(lines(east, east).status, -1);
    EXPECT_EQ(lines(east, east_shifted).status, -2);
    EXPECT_EQ(lines(line, point).status, -3);
    EXPECT_EQ(lines(point, line).status, -3);
    EXPECT_EQ(lines(line, shifted).p1[0], kUntouched);
    for (const Calelm& other : {line, shifted, point}) {
        EXPECT_EQ(call(ali_intp, line, other).status, -1);
    }
}

TEST(LineLine, PlacesAreToldByTheStatus) {
    const Calelm first = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Result both = lines(first, straightRecord(40.0, -10.0, 40.0, 10.0));
    EXPECT_EQ(both.status, 0);
    EXPECT_NEAR(both.p1[0], 40.0, kLengthBits);
    EXPECT_NEAR(both.p1[1], 0.0, kLengthBits);
    EXPECT_NEAR(both.a, 40.0, kLengthBits);
    EXPECT_NEAR(both.b, 10.0, kLengthBits);
    EXPECT_EQ(lines(first, straightRecord(40.0, 5.0, 40.0, 10.0)).status, 1);
    const Result behind = lines(first, straightRecord(-40.0, -10.0, -40.0, 10.0));
    EXPECT_EQ(behind.status, 2);
    EXPECT_NEAR(behind.a, -40.0, kLengthBits);
    EXPECT_NEAR(behind.b, 10.0, kLengthBits);
    EXPECT_EQ(lines(first, straightRecord(-40.0, 5.0, -40.0, 10.0)).status, 3);
    const Result beyond = lines(first, straightRecord(140.0, -10.0, 140.0, 10.0));
    EXPECT_EQ(beyond.status, 2);
    EXPECT_NEAR(beyond.a, 140.0, kLengthBits);
}

TEST(LineLine, TheDispatcherReportsACrossingOnBothOnly) {
    const Calelm first = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Result on = call(ali_intp, first, straightRecord(40.0, -10.0, 40.0, 10.0));
    EXPECT_EQ(on.status, 0);
    EXPECT_NEAR(on.a, 40.0, kLengthBits);
    EXPECT_EQ(on.p2[0], kUntouched);
    EXPECT_EQ(on.c, kUntouched);
    const Result off = call(ali_intp, first, straightRecord(-40.0, -10.0, -40.0, 10.0));
    EXPECT_EQ(off.status, -1);
    EXPECT_EQ(off.p1[0], kUntouched);
    EXPECT_EQ(off.a, kUntouched);
}

TEST(LineLine, RandomPairsMeetWhereTheirStationsSay) {
    Random random(55001);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm e1 = randomStraight(random, place);
            const Calelm e2 = randomStraight(random, place);
            const double sine = std::fabs(std::sin(e1.sang - e2.sang));
            const Result r = lines(e1, e2);
            if (r.status < 0 || sine < 1e-3) {
                continue;
            }
            const double allowed = 2e-5 + 1e-11 / sine;
            const double l1 = std::hypot(e1.ex - e1.sx, e1.ey - e1.sy);
            const double l2 = std::hypot(e2.ex - e2.sx, e2.ey - e2.sy);
            EXPECT_NEAR(r.p1[0], e1.sx + r.a * (e1.ex - e1.sx) / l1, allowed);
            EXPECT_NEAR(r.p1[1], e1.sy + r.a * (e1.ey - e1.sy) / l1, allowed);
            EXPECT_NEAR(r.p1[0], e2.sx + r.b * (e2.ex - e2.sx) / l2, allowed);
            EXPECT_NEAR(r.p1[1], e2.sy + r.b * (e2.ey - e2.sy) / l2, allowed);
            EXPECT_EQ((r.status & 2) == 0, r.a >= 0.0 && r.a <= ali_CAroundNum(l1));
            EXPECT_EQ((r.status & 1) == 0, r.b >= 0.0 && r.b <= ali_CAroundNum(l2));
        }
    }
}

TEST(LineArc, TheLowerStationOnTheLineComesFirst) {
    const Calelm arc = arcFrom(100.0, 0.0, 0.0, 1.0, 50.0, 300.0); // centre (100, -50), nearly a whole circle
    const Calelm line = straightRecord(0.0, -50.0, 200.0, -50.0);
    const Calelm back = straightRecord(200.0, -50.0, 0.0, -50.0);
    const Result r = call(ali_intpSR, line, arc);
    ASSERT_EQ(r.status, 2);
    EXPECT_NEAR(r.a, 50.0, 1e-5);
    EXPECT_NEAR(r.c, 150.0, 1e-5);
    EXPECT_NEAR(r.p1[0], 50.0, 1e-5);
    EXPECT_NEAR(r.b, 0.75 * kTwoPi * 50.0, 2e-5); // left turn: north end first, then west, south
    EXPECT_NEAR(r.d, 0.25 * kTwoPi * 50.0, 2e-5);
    const Result reversed = call(ali_intpSR, back, arc);
    ASSERT_EQ(reversed.status, 2);
    EXPECT_NEAR(reversed.a, 50.0, 1e-5);
    EXPECT_NEAR(reversed.p1[0], 150.0, 1e-5);
}

TEST(LineArc, ALineAlongXIsNeverBehindItsStart) {
    // Off this axis a crossing behind the start has a negative station and does not count.
    const Calelm arc = arcFrom(100.0, 0.0, 0.0, 1.0, 50.0, 300.0);
    const Calelm along_x = straightRecord(160.0, -50.0, 400.0, -50.0);
    const Result r = call(ali_intpSR, along_x, arc);
    EXPECT_EQ(r.status, 2);
    EXPECT_NEAR(r.a, 10.0, 1e-5);
    const Calelm oblique = straightRecord(160.0, -50.0, 400.0, -50.01);
    EXPECT_EQ(call(ali_intpSR, oblique, arc).status, -2);
}

TEST(LineArc, ATouchIsOneAndAMissNone) {
    const Calelm arc = arcFrom(0.0, 0.0, 0.3, 1.0, 50.0, 60.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlR(&arc, 30.0, p, &t), 0);
    const auto tangentAt = [&](double outwards) {
        const double x = p[0] + outwards * (p[0] - arc.k1) / 50.0;
        const double y = p[1] + outwards * (p[1] - arc.k2) / 50.0;
        return straightRecord(x - 20.0 * std::cos(t), y - 20.0 * std::sin(t), x + 20.0 * std::cos(t),
                              y + 20.0 * std::sin(t));
    };
    EXPECT_EQ(call(ali_intpSR, tangentAt(0.001), arc).status, -1);
    EXPECT_EQ(call(ali_intpSR, tangentAt(-0.001), arc).status, 2);
    // Half a circle about (70, 50) that comes down to y = 0.
    const Calelm half = arcRecord(20.0, 50.0, 120.0, 50.0, -1.0, 50.0);
    const Calelm line = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Result r = call(ali_intpSR, line, half);
    EXPECT_EQ(r.status, 1);
    EXPECT_NEAR(r.a, 70.0, kLengthRounding);
    EXPECT_NEAR(r.p1[1], 0.0, kLengthRounding);
    EXPECT_EQ(call(ali_intp, line, half).status, 0);
}

TEST(LineArc, ALineThatMissesByLessThanTheStepStillTouches) {
    Random random(55007);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 500; ++i) {
            // The line's rounded coefficients shift it by up to R / length times half a step.
            const double R = random.uniform(20.0, 200.0);
            const Calelm arc =
                arcFrom(place.x, place.y, random.uniform(0.01, 6.27), random.sign(), R, R * random.uniform(0.05, 5.0));
            const double s = random.uniform(0.2, 0.8) * arc.len;
            const double w = s / arc.par * -arc.dir; // azimuths run clockwise
            const double rx = (arc.sx - arc.k1) * std::cos(w) - (arc.sy - arc.k2) * std::sin(w);
            const double ry = (arc.sx - arc.k1) * std::sin(w) + (arc.sy - arc.k2) * std::cos(w);
            // 2e-6 outside the circle: less than the rounding of the line's own coefficients.
            const double out = 1.0 + 2e-6 / arc.par;
            const double px = arc.k1 + rx * out;
            const double py = arc.k2 + ry * out;
            const double tx = -ry / arc.par * 200.0;
            const double ty = rx / arc.par * 200.0;
            const Result r = call(ali_intpSR, straightRecord(px - tx, py - ty, px + tx, py + ty), arc);
            ASSERT_GE(r.status, 0);
            EXPECT_NEAR(r.b, s, 0.2);
        }
    }
}

TEST(LineArc, OutsideTheElementsIsToldApartFromAMiss) {
    const Calelm arc = arcFrom(0.0, 0.0, 0.0, 1.0, 50.0, 20.0);
    EXPECT_EQ(call(ali_intpSR, straightRecord(-40.0, -10.0, -41.0, -90.0), arc).status, -2);
    EXPECT_EQ(call(ali_intpSR, straightRecord(60.0, 0.0, 61.0, 50.0), arc).status, -1);
}

TEST(ArcArc, ConcentricArcs) {
    const Calelm arc = arcFrom(0.0, 0.0, 0.5, 1.0, 50.0, 60.0);
    Calelm wider = arc;
    wider.par = 60.0;
    Calelm apart = arc;
    apart.k1 += 101.0;
    EXPECT_EQ(call(ali_intpRR, arc, arc).status, -2);
    EXPECT_EQ(call(ali_intpRR, arc, wider).status, -3);
    EXPECT_EQ(call(ali_intpRR, arc, apart).status, -1);
    EXPECT_EQ(call(ali_intp, arc, arc).status, -2);
    EXPECT_EQ(call(ali_intp, arc, wider).status, -3);
    Calelm inside = arc;
    inside.par = 20.0;
    inside.k1 += 5.0;
    EXPECT_EQ(call(ali_intpRR, arc, inside).status, -1);
}

TEST(ArcArc, CirclesThatTouchWithinTheRoundingHaveOnePoint) {
    for (const double off : {0.0, 4e-6, -4e-6}) {
        // Both arcs pass through the touching point with the same tangent line: centres 50 and 80 m to either side.
        const Calelm first = arcFrom(-36000.0, 12000.0, 0.7, 1.0, 50.0, 30.0);
        double p[2];
        double t = 0.0;
        ASSERT_EQ(ali_onlR(&first, 15.0, p, &t), 0);
        Calelm second{};
        initCalelm(&second);
        second.type = ALI_ARC;
        second.dir = -1.0;
        second.par = 80.0;
        const double ux = (p[0] - first.k1) / std::hypot(p[0] - first.k1, p[1] - first.k2);
        const double uy = (p[1] - first.k2) / std::hypot(p[0] - first.k1, p[1] - first.k2);
        second.k1 = first.k1 + (130.0 + off) * ux;
        second.k2 = first.k2 + (130.0 + off) * uy;
        const double a = std::atan2(-uy, -ux);
        second.sx = second.k1 + 80.0 * std::cos(a - 0.3);
        second.sy = second.k2 + 80.0 * std::sin(a - 0.3);
        second.ex = second.k1 + 80.0 * std::cos(a + 0.3);
        second.ey = second.k2 + 80.0 * std::sin(a + 0.3);
        const Result r = call(ali_intpRR, first, second);
        EXPECT_EQ(r.status, 1) << off;
        EXPECT_NEAR(r.p1[0], p[0], 2e-5);
        EXPECT_NEAR(r.p1[1], p[1], 2e-5);
        EXPECT_EQ(r.a, r.c);
        EXPECT_EQ(call(ali_intp, first, second).status, 0);
    }
}

TEST(ArcArc, AMeetingAtAnArcsStartHasStationZero) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm first = arcFrom(0.0, 0.0, 0.5, dir, 50.0, 60.0);
        Calelm second = arcFrom(-20.0, 1.0, 0.5, 1.0, 80.0, 60.0);
        const double dx = 0.0 - second.ex;
        const double dy = 0.0 - second.ey;
        second.sx += dx;
        second.ex += dx;
        second.k1 += dx;
        second.sy += dy;
        second.ey += dy;
        second.k2 += dy;
        const Result r = call(ali_intpRR, first, second);
        ASSERT_GE(r.status, 0);
        EXPECT_NEAR(r.a, 0.0, 2e-5);
    }
}

TEST(LineClothoid, WithinAMetreOfTheParallelTangentCountsAsATouch) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm rec = clothoidFrom(0.0, 0.0, 1.0, dir, 100.0, 0.0, 100.0);
        double p[2];
        double t = 0.0;
        ASSERT_EQ(ali_onlA(&rec, 50.0, p, &t), 0);
        for (const double off : {0.9, -0.9}) {
            const double nx = std::sin(t) * off;
            const double ny = -std::cos(t) * off;
            const Calelm line = straightRecord(p[0] + nx - 30.0 * std::cos(t), p[1] + ny - 30.0 * std::sin(t),
                                               p[0] + nx + 30.0 * std::cos(t), p[1] + ny + 30.0 * std::sin(t));
            const Result r = call(ali_intpSA, line, rec);
            EXPECT_EQ(r.status, 1) << dir << " " << off;
            EXPECT_NEAR(r.b, 50.0, 1e-3);
            EXPECT_NEAR(r.a, 30.0, 0.03);
            EXPECT_NEAR(r.p1[0], p[0], 1e-3);
            EXPECT_NEAR(r.p1[1], p[1], 1e-3);
            EXPECT_EQ(call(ali_intp, line, rec).status, 0);
        }
    }
}

TEST(LineClothoid, EqualRadiiAreRefused) {
    const Calelm line = straightRecord(0.0, 0.0, 100.0, 10.0);
    Calelm rec = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 100.0);
    rec.r1 = rec.r2;
    EXPECT_EQ(call(ali_intpSA, line, rec).status, -1);
    EXPECT_EQ(call(ali_intpAA, rec, rec).status, -1);
    const Calelm arc = arcFrom(0.0, 0.0, 1.0, 1.0, 100.0, 50.0);
    EXPECT_EQ(call(ali_intpRA, arc, rec).status, -1);
    Calelm empty_arc = arc;
    empty_arc.k3 = 0.0;
    rec.r1 = 0.0;
    EXPECT_EQ(call(ali_intpRA, empty_arc, rec).status, -1);
}

TEST(ArcClothoid, EndsThatMeetTangentiallyCount) {
    // A clothoid that runs into an arc touches it at the joint.
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 120.0);
    const Calelm arc = arcFrom(clothoid.ex, clothoid.ey, clothoid.eang, 1.0, 120.0, 60.0);
    const Result r = call(ali_intpRA, arc, clothoid);
    ASSERT_GE(r.status, 0);
    EXPECT_NEAR(r.b, clothoid.len, 0.1);
    EXPECT_NEAR(r.a, 0.0, 0.1);
}

TEST(ClothoidClothoid, TheDispatcherKeepsItsOrderOfStations) {
    const Calelm e1 = clothoidFrom(0.0, 0.0, 0.2, 1.0, 100.0, 0.0, 100.0);
    Calelm e2 = clothoidFrom(0.0, 0.0, 1.7, -1.0, 80.0, 300.0, 90.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlA(&e1, 60.0, p, &t), 0);
    double q[2];
    ASSERT_EQ(ali_onlA(&e2, 20.0, q, &t), 0);
    e2.sx += p[0] - q[0];
    e2.ex += p[0] - q[0];
    e2.sy += p[1] - q[1];
    e2.ey += p[1] - q[1];
    const Result r = call(ali_intp, e1, e2);
    ASSERT_EQ(r.status, 0);
    EXPECT_NEAR(r.a, 60.0, kCrossing);
    EXPECT_NEAR(r.c, 20.0, kCrossing);
    EXPECT_EQ(r.b, kUntouched);
    EXPECT_EQ(r.d, kUntouched);
}

TEST(ClothoidClothoid, TwoElementsOfOneClothoidGiveTwoPointsOfTheirCommonStretch) {
    Random random(55006);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 50; ++i) {
            const Calelm e1 = randomClothoid(random, place);
            const Result same = call(ali_intpAA, e1, e1);
            EXPECT_EQ(same.status, 2) << exact::describe(e1);
            EXPECT_NEAR(same.a, same.c, 1e-3);
        }
    }
}

TEST(ClothoidClothoid, ACrossingInTheFlatBeginningIsFoundWhereTheCurveIs) {
    // The series takes the first A / 600 metres for the origin; the search goes on to the point where the curve is.
    const Calelm e1 = clothoidFrom(0.0, 0.0, 0.3, 1.0, 400.0, 0.0, 500.0);
    Calelm e2 = clothoidFrom(0.0, 0.0, 1.5, -1.0, 100.0, 200.0, 90.0);
    double q[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlA(&e2, 10.0, q, &t), 0);
    const double x = 0.35 * std::cos(0.3);
    const double y = 0.35 * std::sin(0.3);
    e2.sx += x - q[0];
    e2.ex += x - q[0];
    e2.sy += y - q[1];
    e2.ey += y - q[1];
    const Result r = call(ali_intpAA, e1, e2);
    ASSERT_EQ(r.status, 0);
    EXPECT_NEAR(r.a, 0.35, kCrossing);
    EXPECT_NEAR(r.c, 10.0, kCrossing);
}

TEST(LineClothoid, TwoCrossingsAreTwoAboveAMetreOfSagittaAndATouchBelow) {
    const Calelm rec = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 100.0);
    const auto chord = [&](double s1, double s2) {
        double p[2];
        double q[2];
        double t = 0.0;
        EXPECT_EQ(ali_onlA(&rec, s1, p, &t), 0);
        EXPECT_EQ(ali_onlA(&rec, s2, q, &t), 0);
        const double dx = q[0] - p[0];
        const double dy = q[1] - p[1];
        return straightRecord(p[0] - dx, p[1] - dy, q[0] + dx, q[1] + dy);
    };
    const Calelm deep = chord(20.0, 90.0); // sagitta about 3.4 m
    const Result r = call(ali_intpSA, deep, rec);
    ASSERT_EQ(r.status, 2);
    EXPECT_NEAR(r.b, 20.0, 1e-2);
    EXPECT_NEAR(r.d, 90.0, 1e-2);
    EXPECT_EQ(call(ali_intp, deep, rec).status, 1);
    const Calelm shallow = chord(50.0, 80.0); // sagitta about 0.7 m
    EXPECT_EQ(call(ali_intpSA, shallow, rec).status, 1);
    // The rule holds for a line in the curve's own direction only; run the other way the crossings are found.
    const Calelm against = straightRecord(shallow.ex, shallow.ey, shallow.sx, shallow.sy);
    const Result two = call(ali_intpSA, against, rec);
    ASSERT_EQ(two.status, 2);
    EXPECT_NEAR(two.b, 50.0, 1e-2);
    EXPECT_NEAR(two.d, 80.0, 1e-2);
}

TEST(ArcClothoid, EndsThatNearlyMeetCountWithinTheirTolerance) {
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 120.0);
    const auto arcAt = [](double x, double y, double azimuth) { return arcFrom(x, y, azimuth, 1.0, 60.0, 40.0); };
    // Start to start within 1e-3: the arc leaves squarely, away from the clothoid.
    const double side = 1.0 + kPi / 2.0;
    for (const double gap : {8e-4, 1.2e-3}) {
        const Calelm arc = arcAt(gap * std::cos(side), gap * std::sin(side), side);
        const Result r = call(ali_intpRA, arc, clothoid);
        if (gap < 1e-3) {
            ASSERT_GE(r.status, 0);
            EXPECT_NEAR(r.a, 0.0, 1e-9);
            EXPECT_NEAR(r.b, 0.0, 1e-9);
            EXPECT_NEAR(r.p1[0], 0.0, kLengthBits);
        } else {
            EXPECT_EQ(r.status, -1);
            EXPECT_EQ(r.p1[0], kUntouched);
        }
    }
    // Any other pair of ends within 1e-4: here the clothoid's sharp end with the arc's start.
    const double out = clothoid.eang + kPi / 2.0;
    for (const double gap : {8e-5, 1.2e-4}) {
        const Calelm arc = arcAt(clothoid.ex + gap * std::cos(out), clothoid.ey + gap * std::sin(out), out);
        const Result r = call(ali_intpRA, arc, clothoid);
        if (gap < 1e-4) {
            ASSERT_GE(r.status, 0);
            EXPECT_NEAR(r.a, 0.0, 1e-9);
            EXPECT_NEAR(r.b, clothoid.len, 1e-9);
        } else {
            EXPECT_EQ(r.status, -1);
        }
    }
}

// An arc is as much longer as an angle step at its centre is: 0.4 mm of a radius of 300 m.
TEST(ArcClothoid, AnArcThatBeginsOrEndsOnTheClothoidMeetsItThere) {
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 120.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlA(&clothoid, 40.0, p, &t), 0);
    for (const double dir : {1.0, -1.0}) {
        for (const double side : {0.5 * kPi, -0.5 * kPi}) {
            for (const bool begins : {true, false}) {
                for (const double gap : {0.0, 2e-4, 2e-3}) {
                    const double x = p[0] + gap * std::cos(t + side);
                    const double y = p[1] + gap * std::sin(t + side);
                    Calelm arc = arcFrom(x, y, t + side, dir, 300.0, 50.0);
                    if (!begins) {
                        CDreverA(&arc, 1);
                    }
                    const Result r = call(ali_intpRA, arc, clothoid);
                    if (gap > 1e-3) {
                        EXPECT_EQ(r.status, -1) << dir << ' ' << side << ' ' << begins;
                    } else {
                        ASSERT_GE(r.status, 0) << dir << ' ' << side << ' ' << begins << ' ' << gap;
                        EXPECT_NEAR(r.b, 40.0, kCrossing);
                        EXPECT_NEAR(r.a, begins ? 0.0 : 50.0, 1e-3);
                    }
                }
            }
        }
    }
}

TEST(ArcClothoid, AWholeCircleIsCrossedTwice) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm clothoid = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 120.0);
        double p[2];
        double t = 0.0;
        ASSERT_EQ(ali_onlA(&clothoid, 40.0, p, &t), 0);
        // About the point at station 40, radius 15: crossed at about 25 and 55.
        Calelm circle = arcFrom(p[0] + 15.0, p[1], dir == 1.0 ? 1.5 * kPi : 0.5 * kPi, dir, 15.0, kTwoPi * 15.0);
        circle.ex = circle.sx;
        circle.ey = circle.sy;
        const Result r = call(ali_intpRA, circle, clothoid);
        ASSERT_EQ(r.status, 2) << dir;
        EXPECT_NEAR(std::min(r.b, r.d), 25.0, 0.1);
        EXPECT_NEAR(std::max(r.b, r.d), 55.0, 0.1);
        EXPECT_NEAR(std::fabs(r.a - r.c), kPi * 15.0, 2.0);
    }
}
