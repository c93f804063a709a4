// Where two elements meet: figures, the order of the outputs, and random pairs against an independent search.
#include "support/exact_chain.h"
#include "support_alignment.h"

#include <algorithm>
#include <vector>

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

constexpr double untouched = 12345.0;

struct Result {
    int status = 0;
    double p1[2] = {untouched, untouched};
    double p2[2] = {untouched, untouched};
    double a = untouched;
    double b = untouched;
    double c = untouched;
    double d = untouched;
};

template <typename Function>
Result call(Function function, const Calelm& e1, const Calelm& e2) {
    Result r;
    r.status = function(&e1, &e2, r.p1, &r.a, &r.b, r.p2, &r.c, &r.d);
    return r;
}

Result lines(const Calelm& e1, const Calelm& e2) {
    Result r;
    r.status = ali_intpSS(&e1, &e2, r.p1, &r.a, &r.b);
    return r;
}

// A crossing of two exact curves, by stations.
struct Meeting {
    double s1;
    double s2;
    double angle; // between the two tangents
};

struct Curve {
    exact::Pose start;
    exact::Shape shape;
    double length;
    std::vector<exact::Pose> samples;

    Curve(const Calelm& rec, int parts)
        : start(exact::start_of(rec)), shape(exact::shape_of(rec)),
          length(static_cast<double>(exact::length_of(exact::shape_of(rec)))) {
        if (rec.type == ALI_STRAIGHT) {
            // The record's azimuth is rounded; its points are what the line goes through.
            start.azimuth = exact::wrap_2pi(
                std::atan2(static_cast<exact::Real>(rec.ey) - rec.sy, static_cast<exact::Real>(rec.ex) - rec.sx));
        }
        for (int i = 0; i <= parts; ++i) {
            samples.push_back(at(length * i / parts));
        }
    }
    exact::Pose at(double s) const { return exact::pose_at(start, shape, s); }
};

// All crossings, by sampling both curves and Newton's method from every pair of samples whose segments cross.
// `sure` becomes false when a crossing lies so near an end, or crosses so flat, that the count hangs on the tolerance.
std::vector<Meeting> meetings(const Calelm& e1, const Calelm& e2, bool& sure) {
    constexpr int parts = 60;
    const Curve c1(e1, parts);
    const Curve c2(e2, parts);
    std::vector<Meeting> found;
    sure = true;
    const double reach = 0.75 * (c1.length + c2.length) / parts;
    for (int i = 0; i <= parts; ++i) {
        for (int j = 0; j <= parts; ++j) {
            const exact::Pose& p = c1.samples[static_cast<std::size_t>(i)];
            const exact::Pose& q = c2.samples[static_cast<std::size_t>(j)];
            if (std::hypot(static_cast<double>(p.x - q.x), static_cast<double>(p.y - q.y)) > reach) {
                continue;
            }
            double s1 = c1.length * i / parts;
            double s2 = c2.length * j / parts;
            bool converged = false;
            double angle = 0.0;
            for (int pass = 0; pass < 30 && !converged; ++pass) {
                const exact::Pose u = c1.at(s1);
                const exact::Pose v = c2.at(s2);
                const exact::Real dx = v.x - u.x;
                const exact::Real dy = v.y - u.y;
                const exact::Real det = std::sin(v.azimuth - u.azimuth);
                angle = std::fabs(std::asin(static_cast<double>(det)));
                if (std::fabs(static_cast<double>(det)) < 1e-6) {
                    break;
                }
                const exact::Real step1 = (dx * std::sin(v.azimuth) - dy * std::cos(v.azimuth)) / det;
                const exact::Real step2 = (dx * std::sin(u.azimuth) - dy * std::cos(u.azimuth)) / det;
                const auto clipped = [&](exact::Real step) {
                    return std::clamp(static_cast<double>(step), -2.0 * reach, 2.0 * reach);
                };
                s1 += clipped(step1);
                s2 += clipped(step2);
                converged = std::hypot(static_cast<double>(dx), static_cast<double>(dy)) < 1e-9;
            }
            // Near passes that do not meet, and ends that nearly do, make the count hang on tolerances.
            if (!converged) {
                sure = sure && angle > 0.02;
                continue;
            }
            constexpr double near = 0.01;
            if (std::fabs(s1) < near || std::fabs(s1 - c1.length) < near || std::fabs(s2) < near ||
                std::fabs(s2 - c2.length) < near) {
                sure = false;
            }
            if (s1 < 0.0 || s1 > c1.length || s2 < 0.0 || s2 > c2.length) {
                continue;
            }
            const bool known =
                std::any_of(found.begin(), found.end(), [&](const Meeting& m) { return std::fabs(m.s1 - s1) < 1e-4; });
            if (!known) {
                found.push_back({s1, s2, angle});
            }
        }
    }
    for (const Meeting& m : found) {
        sure = sure && m.angle > 0.02;
    }
    return found;
}

// Places two elements so that they meet, or nearly: the second is moved so that a point of it falls near one of the
// first.
void bringTogether(Random& random, const Calelm& first, Calelm& second) {
    double p[2];
    double q[2];
    double t = 0.0;
    ASSERT_EQ(ali_onl(&first, random.between(0.05, 0.95) * first.len, p, &t), 0);
    ASSERT_EQ(ali_onl(&second, random.between(0.05, 0.95) * second.len, q, &t), 0);
    const double dx = p[0] - q[0];
    const double dy = p[1] - q[1];
    second.sx += dx;
    second.sy += dy;
    second.ex += dx;
    second.ey += dy;
    if (second.type == ALI_ARC) {
        second.k1 += dx;
        second.k2 += dy;
    }
}

// Compares a result with the exact crossings. Stations come as s1, s2 of the first and of the second point.
void compare(const std::vector<Meeting>& expected, const Result& r, double s1_first, double s2_first, double s1_second,
             double s2_second, double allowed) {
    const std::size_t count = r.status < 0 ? 0 : r.status == 2 ? 2 : 1;
    ASSERT_EQ(count, std::min<std::size_t>(expected.size(), 2u));
    const auto known = [&](double s1, double s2) {
        return std::any_of(expected.begin(), expected.end(), [&](const Meeting& m) {
            const double room = allowed * (1.0 + 1.0 / std::sin(m.angle));
            return std::fabs(m.s1 - s1) < room && std::fabs(m.s2 - s2) < room;
        });
    };
    if (count >= 1) {
        EXPECT_TRUE(known(s1_first, s2_first)) << s1_first << " " << s2_first;
    }
    if (count == 2) {
        EXPECT_TRUE(known(s1_second, s2_second)) << s1_second << " " << s2_second;
    }
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
    EXPECT_EQ(lines(line, shifted).p1[0], untouched);
    for (const Calelm& other : {line, shifted, point}) {
        EXPECT_EQ(call(ali_intp, line, other).status, -1);
    }
}

TEST(LineLine, PlacesAreToldByTheStatus) {
    const Calelm first = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Result both = lines(first, straightRecord(40.0, -10.0, 40.0, 10.0));
    EXPECT_EQ(both.status, 0);
    EXPECT_NEAR(both.p1[0], 40.0, length_bits);
    EXPECT_NEAR(both.p1[1], 0.0, length_bits);
    EXPECT_NEAR(both.a, 40.0, length_bits);
    EXPECT_NEAR(both.b, 10.0, length_bits);
    EXPECT_EQ(lines(first, straightRecord(40.0, 5.0, 40.0, 10.0)).status, 1);
    const Result behind = lines(first, straightRecord(-40.0, -10.0, -40.0, 10.0));
    EXPECT_EQ(behind.status, 2);
    EXPECT_NEAR(behind.a, -40.0, length_bits);
    EXPECT_NEAR(behind.b, 10.0, length_bits);
    EXPECT_EQ(lines(first, straightRecord(-40.0, 5.0, -40.0, 10.0)).status, 3);
    const Result beyond = lines(first, straightRecord(140.0, -10.0, 140.0, 10.0));
    EXPECT_EQ(beyond.status, 2);
    EXPECT_NEAR(beyond.a, 140.0, length_bits);
}

TEST(LineLine, TheDispatcherReportsACrossingOnBothOnly) {
    const Calelm first = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Result on = call(ali_intp, first, straightRecord(40.0, -10.0, 40.0, 10.0));
    EXPECT_EQ(on.status, 0);
    EXPECT_NEAR(on.a, 40.0, length_bits);
    EXPECT_EQ(on.p2[0], untouched);
    EXPECT_EQ(on.c, untouched);
    const Result off = call(ali_intp, first, straightRecord(-40.0, -10.0, -40.0, 10.0));
    EXPECT_EQ(off.status, -1);
    EXPECT_EQ(off.p1[0], untouched);
    EXPECT_EQ(off.a, untouched);
}

TEST(LineLine, RandomPairsMeetWhereTheirStationsSay) {
    Random random(55001);
    SCOPED_TRACE(random.trace());
    for (const Place place : places) {
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
    EXPECT_NEAR(r.b, 0.75 * two_pi * 50.0, 2e-5); // left turn: north end first, then west, south
    EXPECT_NEAR(r.d, 0.25 * two_pi * 50.0, 2e-5);
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
    EXPECT_NEAR(r.a, 70.0, length_rounding);
    EXPECT_NEAR(r.p1[1], 0.0, length_rounding);
    EXPECT_EQ(call(ali_intp, line, half).status, 0);
}

TEST(LineArc, ALineThatMissesByLessThanTheStepStillTouches) {
    Random random(55007);
    SCOPED_TRACE(random.trace());
    for (const Place place : places) {
        for (int i = 0; i < 500; ++i) {
            // The line's rounded coefficients shift it by up to R / length times half a step.
            const double R = random.between(20.0, 200.0);
            const Calelm arc =
                arcFrom(place.x, place.y, random.between(0.01, 6.27), random.sense(), R, R * random.between(0.05, 5.0));
            const double s = random.between(0.2, 0.8) * arc.len;
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

TEST(ClosedFormPairs, RandomPairsGiveTheExactCrossings) {
    Random random(55002);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_crossings = 0;
    for (const Place place : places) {
        for (int i = 0; i < 250; ++i) {
            const bool line = i % 2 == 0;
            const Calelm e1 = line ? randomStraight(random, place) : randomArc(random, place, 6.0);
            Calelm e2 = randomArc(random, place, 6.0);
            bringTogether(random, e1, e2);
            bool sure = false;
            const auto expected = meetings(e1, e2, sure);
            if (!sure || (line && e1.sy == e1.ey)) {
                continue;
            }
            const Result r = line ? call(ali_intpSR, e1, e2) : call(ali_intpRR, e1, e2);
            SCOPED_TRACE(exact::describe(e1) + "\n" + exact::describe(e2));
            compare(expected, r, r.a, r.b, r.c, r.d, 2e-4);
            ++compared;
            with_crossings += expected.empty() ? 0 : 1;
            // The other order keeps every station with its element.
            const Result other = call(ali_intp, e2, e1);
            ASSERT_EQ(other.status < 0, r.status < 0);
            if (line && r.status >= 0) {
                EXPECT_EQ(other.a, r.b);
                EXPECT_EQ(other.b, r.a);
            }
        }
    }
    EXPECT_GT(compared, 300);
    EXPECT_GT(with_crossings, 250);
}

TEST(LineClothoid, RandomPairsGiveTheExactCrossings) {
    Random random(55003);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_crossings = 0;
    for (const Place place : places) {
        for (int i = 0; i < 400; ++i) {
            const Calelm clothoid = randomClothoid(random, place);
            Calelm line = randomStraight(random, place);
            double p[2];
            double t = 0.0;
            ASSERT_EQ(ali_onlA(&clothoid, random.between(0.1, 0.9) * clothoid.len, p, &t), 0);
            // Through a point of the curve, at 0.3 to 1.5 rad to it, so that nearly all cross it once.
            const double azimuth = t + random.sense() * random.between(0.3, 1.5) + (random.whole(0, 1) == 0 ? 0.0 : pi);
            line = straightRecord(p[0] - 60.0 * std::cos(azimuth), p[1] - 60.0 * std::sin(azimuth),
                                  p[0] + 70.0 * std::cos(azimuth), p[1] + 70.0 * std::sin(azimuth));
            bool sure = false;
            const auto expected = meetings(line, clothoid, sure);
            // A line that is parallel to the curve somewhere falls under the rule of the whole number of metres, and
            // two crossings of one line under that of the walk; both have their own tests.
            const double turn = angleBetween(clothoid.sang, clothoid.eang);
            const bool parallel = angleBetween(2.0 * line.sang, 2.0 * clothoid.sang) <= 2.0 * turn + 1e-5 &&
                                  angleBetween(2.0 * line.sang, 2.0 * clothoid.eang) <= 2.0 * turn + 1e-5;
            if (!sure || parallel || expected.size() != 1) {
                continue;
            }
            const Result r = call(ali_intpSA, line, clothoid);
            SCOPED_TRACE(exact::describe(line) + "\n" + exact::describe(clothoid));
            compare(expected, r, r.a, r.b, r.c, r.d, 3e-4);
            ++compared;
            with_crossings += expected.empty() ? 0 : 1;
            const Result other = call(ali_intp, clothoid, line);
            EXPECT_EQ(other.a, r.b);
            EXPECT_EQ(other.b, r.a);
        }
    }
    EXPECT_GT(compared, 300);
    EXPECT_GT(with_crossings, 300);
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

TEST(ArcClothoid, RandomPairsGiveTheExactCrossings) {
    Random random(55004);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_two = 0;
    for (const Place place : places) {
        for (int i = 0; i < 300; ++i) {
            const Calelm clothoid = randomClothoid(random, place);
            Calelm arc = randomArc(random, place, 5.5);
            bringTogether(random, clothoid, arc);
            bool sure = false;
            const auto expected = meetings(arc, clothoid, sure);
            if (!sure) {
                continue;
            }
            const Result r = call(ali_intpRA, arc, clothoid);
            SCOPED_TRACE(exact::describe(arc) + "\n" + exact::describe(clothoid));
            compare(expected, r, r.a, r.b, r.c, r.d, crossing);
            ++compared;
            with_two += expected.size() > 1 ? 1 : 0;
            const Result other = call(ali_intp, clothoid, arc);
            if (r.status >= 0) {
                EXPECT_EQ(other.a, r.b);
                EXPECT_EQ(other.b, r.a);
            }
        }
    }
    EXPECT_GT(compared, 350);
    EXPECT_GT(with_two, 30);
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

TEST(ClothoidClothoid, RandomPairsGiveTheExactCrossings) {
    Random random(55005);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_two = 0;
    for (const Place place : places) {
        for (int i = 0; i < 300; ++i) {
            const Calelm e1 = randomClothoid(random, place);
            Calelm e2 = randomClothoid(random, place);
            bringTogether(random, e1, e2);
            bool sure = false;
            const auto expected = meetings(e1, e2, sure);
            if (!sure) {
                continue;
            }
            const Result r = call(ali_intpAA, e1, e2);
            SCOPED_TRACE(exact::describe(e1) + "\n" + exact::describe(e2));
            // Here the stations stand in the order p1 on e1, p2 on e1, p1 on e2, p2 on e2.
            compare(expected, r, r.a, r.c, r.b, r.d, crossing);
            ++compared;
            with_two += expected.size() > 1 ? 1 : 0;
        }
    }
    EXPECT_GT(compared, 350);
    EXPECT_GT(with_two, 5);
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
    EXPECT_NEAR(r.a, 60.0, crossing);
    EXPECT_NEAR(r.c, 20.0, crossing);
    EXPECT_EQ(r.b, untouched);
    EXPECT_EQ(r.d, untouched);
}

TEST(ClothoidClothoid, TwoElementsOfOneClothoidGiveTwoPointsOfTheirCommonStretch) {
    Random random(55006);
    SCOPED_TRACE(random.trace());
    for (const Place place : places) {
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
    EXPECT_NEAR(r.a, 0.35, crossing);
    EXPECT_NEAR(r.c, 10.0, crossing);
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
