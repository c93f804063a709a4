// Random pairs of elements against an independent search on the exact curves.
#include "meeting.h"
#include "support/exact_chain.h"

#include <algorithm>
#include <vector>

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

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
    constexpr int kParts = 60;
    const Curve c1(e1, kParts);
    const Curve c2(e2, kParts);
    std::vector<Meeting> found;
    sure = true;
    const double reach = 0.75 * (c1.length + c2.length) / kParts;
    for (int i = 0; i <= kParts; ++i) {
        for (int j = 0; j <= kParts; ++j) {
            const exact::Pose& p = c1.samples[static_cast<std::size_t>(i)];
            const exact::Pose& q = c2.samples[static_cast<std::size_t>(j)];
            if (std::hypot(static_cast<double>(p.x - q.x), static_cast<double>(p.y - q.y)) > reach) {
                continue;
            }
            double s1 = c1.length * i / kParts;
            double s2 = c2.length * j / kParts;
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
            constexpr double kNear = 0.01;
            if (std::fabs(s1) < kNear || std::fabs(s1 - c1.length) < kNear || std::fabs(s2) < kNear ||
                std::fabs(s2 - c2.length) < kNear) {
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
    ASSERT_EQ(ali_onl(&first, random.uniform(0.05, 0.95) * first.len, p, &t), 0);
    ASSERT_EQ(ali_onl(&second, random.uniform(0.05, 0.95) * second.len, q, &t), 0);
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

TEST(ClosedFormPairs, RandomPairsGiveTheExactCrossings) {
    Random random(55002);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_crossings = 0;
    for (const Place place : kPlaces) {
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
    for (const Place place : kPlaces) {
        for (int i = 0; i < 400; ++i) {
            const Calelm clothoid = randomClothoid(random, place);
            Calelm line = randomStraight(random, place);
            double p[2];
            double t = 0.0;
            ASSERT_EQ(ali_onlA(&clothoid, random.uniform(0.1, 0.9) * clothoid.len, p, &t), 0);
            // Through a point of the curve, at 0.3 to 1.5 rad to it, so that nearly all cross it once.
            const double azimuth = t + random.sign() * random.uniform(0.3, 1.5) + (random.whole(0, 1) == 0 ? 0.0 : kPi);
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

TEST(ArcClothoid, RandomPairsGiveTheExactCrossings) {
    Random random(55004);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    int with_two = 0;
    for (const Place place : kPlaces) {
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
            compare(expected, r, r.a, r.b, r.c, r.d, kCrossing);
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

TEST(ClothoidClothoid, RandomPairsGiveTheExactCrossings) {
    Random random(55005);
    SCOPED_TRACE(random.trace());
    int compared = 0;
    for (const Place place : kPlaces) {
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
            compare(expected, r, r.a, r.c, r.b, r.d, kCrossing);
            ++compared;
        }
    }
    EXPECT_GT(compared, 350);
}

TEST(ClothoidClothoid, PairsThatCrossTwiceGiveBothCrossings) {
    Random random(55008);
    SCOPED_TRACE(random.trace());
    int with_two = 0;
    for (const Place place : kPlaces) {
        for (int i = 0; i < 200; ++i) {
            // The second is laid through two points of the first, so that the two enclose a lens.
            const Calelm e1 = randomClothoid(random, place);
            Calelm e2 = randomClothoid(random, place);
            double p[2][2];
            double q[2][2];
            double t = 0.0;
            const double from = random.uniform(0.05, 0.4) * e1.len;
            const double to = random.uniform(0.6, 0.95) * e1.len;
            ASSERT_EQ(ali_onlA(&e1, from, p[0], &t), 0);
            ASSERT_EQ(ali_onlA(&e1, to, p[1], &t), 0);
            const double chord = ali_CDist2P(p[0], p[1]);
            double low = 0.05 * e2.len;
            double high = 0.97 * e2.len;
            ASSERT_EQ(ali_onlA(&e2, low, q[0], &t), 0);
            ASSERT_EQ(ali_onlA(&e2, high, q[1], &t), 0);
            if (ali_CDist2P(q[0], q[1]) < chord) {
                continue;
            }
            for (int pass = 0; pass < 60; ++pass) {
                const double middle = (low + high) / 2.0;
                ASSERT_EQ(ali_onlA(&e2, middle, q[1], &t), 0);
                (ali_CDist2P(q[0], q[1]) < chord ? low : high) = middle;
            }
            const double turn =
                std::atan2(p[1][1] - p[0][1], p[1][0] - p[0][0]) - std::atan2(q[1][1] - q[0][1], q[1][0] - q[0][0]);
            const double dx = e2.sx - q[0][0];
            const double dy = e2.sy - q[0][1];
            e2 = clothoidFrom(p[0][0] + dx * std::cos(turn) - dy * std::sin(turn),
                              p[0][1] + dx * std::sin(turn) + dy * std::cos(turn), ali_KAdjAng(e2.sang + turn), e2.dir,
                              e2.par, e2.r1, e2.r2);
            bool sure = false;
            const auto expected = meetings(e1, e2, sure);
            if (!sure || expected.size() != 2) {
                continue;
            }
            const Result r = call(ali_intpAA, e1, e2);
            SCOPED_TRACE(exact::describe(e1) + "\n" + exact::describe(e2));
            compare(expected, r, r.a, r.c, r.b, r.d, kCrossing);
            ++with_two;
        }
    }
    EXPECT_GT(with_two, 50);
}
