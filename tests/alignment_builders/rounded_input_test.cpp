// Input as surveyors have it: elements between points rounded to the millimetre, and points rounded so too. No chain
// fits such data exactly any more, but each builder still has a tangent chain to find.
#include <fenmark/alignment/compound.h>
#include <fenmark/alignment/construction.h>
#include <fenmark/alignment/ip.h>
#include <fenmark/alignment/point.h>

#include "support/sweep.h"

namespace {

using namespace fenmark::exact;

constexpr double kMillimetre = 1e-3;
// Gaps that the rounding of an arc's ends leaves: an arc of a few metres takes its centre with it.
constexpr double kRoundedGap = 5.0;

double rounded(double v) {
    return std::round(v / kMillimetre) * kMillimetre;
}

struct Point {
    double p[2];
};

Point rounded_point(double x, double y) {
    return {{rounded(x), rounded(y)}};
}

// The element between the rounded ends, as ali_mak builds it.
Calelm between_rounded_ends(Calelm e) {
    e.sx = rounded(e.sx);
    e.sy = rounded(e.sy);
    e.ex = rounded(e.ex);
    e.ey = rounded(e.ey);
    if (ali_mak(&e, 0) != 0) {
        ADD_FAILURE() << "no element: " << describe(e);
    }
    return e;
}

// A tangent chain of the sizes that were asked for; it lies near the one that was rounded.
Outcome judge_rounded(int status, std::span<const Calelm> made, std::span<const Calelm> expected) {
    if (status != 0) {
        return {Found::failed, "status " + std::to_string(status)};
    }
    if (const auto tangent = tangent_chain(made, kRoundedJointTolerance); !tangent) {
        return {Found::failed, tangent.message()};
    }
    for (std::size_t i = 0; i < made.size(); ++i) {
        if (const auto same = same_sizes(made[i], expected[i]); !same) {
            return {Found::failed, same.message()};
        }
    }
    return {Found::expected, {}};
}

double usual_sweep(Random& random, double radius) {
    return radius * random.uniform(0.2, 1.5);
}

TEST(RoundedInput, ATangentStraightIsFound) {
    sweep(5600, [](Random& random) {
        const double radius = random.radius();
        const double len = random.uniform(20.0, 300.0);
        const auto chain =
            lay_chain(random.pose(), {arc(random.sign(), radius, usual_sweep(random, radius)), straight(len)});
        Calelm r = between_rounded_ends(chain[0]);
        Calelm s{};
        s.len = len;
        const Point p = rounded_point(chain[1].ex, chain[1].ey);
        const int status = ali_makrS_P(p.p, 1, &r, &s);
        return judge_rounded(status, std::vector{r, s}, chain);
    });
}

TEST(RoundedInput, ATangentArcIsFound) {
    sweep(5601, [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(1.2, 3.0);
        const double dir2 = random.coin() ? dir : -dir;
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, usual_sweep(random, radius1)),
                                                     arc(dir2, radius2, usual_sweep(random, radius2))});
        Calelm r1 = between_rounded_ends(chain[0]);
        Calelm r2 = sizes_only(chain[1]);
        const Point p = rounded_point(chain[1].ex, chain[1].ey);
        const int status = ali_makrR_P(p.p, 1, &r1, &r2);
        return judge_rounded(status, std::vector{r1, r2}, chain);
    });
}

TEST(RoundedInput, AnEggShapedCurveIsFound) {
    sweep(5602, [](Random& random) {
        const double dir = random.sign();
        const double small = random.radius();
        const double large = small * random.uniform(1.3, 3.0);
        const bool sharpens = random.coin();
        const double radius1 = sharpens ? large : small;
        const double radius2 = sharpens ? small : large;
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, usual_sweep(random, radius1)),
                                                     clothoid(dir, random.parameter(small), radius1, radius2),
                                                     arc(dir, radius2, usual_sweep(random, radius2))});
        Calelm r1 = between_rounded_ends(chain[0]);
        Calelm a = sizes_only(chain[1]);
        Calelm r2{};
        r2.par = radius2;
        const Point p = rounded_point(chain[2].ex, chain[2].ey);
        double gap = 0.0;
        double angle = 0.0;
        const int status = ali_makrAR_P(p.p, 1, &r1, &a, &r2, &gap, &angle);
        return judge_rounded(status, std::vector{r1, a, r2}, chain);
    });
}

TEST(RoundedInput, AnSCurveIsFound) {
    sweep(5603, [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(0.4, 2.5);
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, usual_sweep(random, radius1)),
                                                     clothoid(dir, random.parameter(radius1), radius1, 0.0),
                                                     clothoid(-dir, random.parameter(radius2), 0.0, radius2),
                                                     arc(-dir, radius2, usual_sweep(random, radius2))});
        Calelm r1 = between_rounded_ends(chain[0]);
        Calelm a1 = sizes_only(chain[1]);
        Calelm a2 = sizes_only(chain[2]);
        Calelm r2{};
        r2.par = radius2;
        const Point p = rounded_point(chain[3].ex, chain[3].ey);
        double gap = 0.0;
        const int status = ali_makrAAR_P(p.p, 1, &r1, &a1, &a2, &r2, &gap);
        return judge_rounded(status, std::vector{r1, a1, a2, r2}, chain);
    });
}

TEST(RoundedInput, CurvesFromAStraightAreFound) {
    sweep(5604, [](Random& random) {
        const double dir = random.sign();
        const double radius = random.radius();
        const auto chain = lay_chain(
            random.pose(), {straight(random.uniform(20.0, 300.0)), arc(dir, radius, usual_sweep(random, radius))});
        Calelm s = between_rounded_ends(chain[0]);
        Calelm r = sizes_only(chain[1]);
        const Point p = rounded_point(chain[1].ex, chain[1].ey);
        const int status = ali_maksR_P(p.p, 1, &s, &r);
        return judge_rounded(status, std::vector{s, r}, chain);
    });
    sweep(5605, [](Random& random) {
        const double dir = random.sign();
        const double radius = random.radius();
        const auto chain = lay_chain(random.pose(), {straight(random.uniform(20.0, 300.0)),
                                                     clothoid(dir, random.parameter(radius), 0.0, radius),
                                                     arc(dir, radius, radius * random.uniform(0.1, 0.8))});
        Calelm s = between_rounded_ends(chain[0]);
        Calelm a = sizes_only(chain[1]);
        Calelm r = sizes_only(chain[2]);
        const Point p = rounded_point(chain[2].ex, chain[2].ey);
        const int status = ali_maksAR_P(p.p, 1, &s, &a, &r);
        return judge_rounded(status, std::vector{s, a, r}, chain);
    });
}

TEST(RoundedInput, ThreeArcsAreJoined) {
    sweep(5606, [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(0.5, 2.0);
        const double radius3 = radius1 * random.uniform(0.5, 2.0);
        const auto chain = lay_chain(
            random.pose(),
            {arc(dir, radius1, usual_sweep(random, radius1)), clothoid(dir, random.parameter(radius1), radius1, 0.0),
             clothoid(-dir, random.parameter(radius2), 0.0, radius2), arc(-dir, radius2, usual_sweep(random, radius2)),
             clothoid(-dir, random.parameter(radius2), radius2, 0.0),
             clothoid(dir, random.parameter(radius3), 0.0, radius3), arc(dir, radius3, usual_sweep(random, radius3))});
        std::vector<Calelm> made;
        for (const Calelm& e : chain) {
            made.push_back(sizes_only(e));
        }
        made[0] = between_rounded_ends(chain[0]);
        made[6] = between_rounded_ends(chain[6]);
        double gap = 0.0;
        const int status = ali_mak3R4A(&gap, &made[0], &made[1], &made[2], &made[3], &made[4], &made[5], &made[6]);
        return judge_rounded(status, made, chain);
    });
}

TEST(RoundedInput, ClothoidsBetweenFixedElementsTellASmallGap) {
    sweep(5607, [](Random& random) {
        const double dir = random.sign();
        const double radius1 = random.radius();
        const double radius2 = radius1 * random.uniform(0.4, 2.5);
        const auto chain = lay_chain(random.pose(), {arc(dir, radius1, usual_sweep(random, radius1)),
                                                     clothoid(dir, random.parameter(radius1), radius1, 0.0),
                                                     clothoid(-dir, random.parameter(radius2), 0.0, radius2),
                                                     arc(-dir, radius2, usual_sweep(random, radius2))});
        const Calelm r1 = between_rounded_ends(chain[0]);
        const Calelm r2 = between_rounded_ends(chain[3]);
        Calelm a1 = sizes_only(chain[1]);
        Calelm a2 = sizes_only(chain[2]);
        double gap = 0.0;
        const int status = ali_makRAAR(&r1, &a1, &a2, &r2, &gap);
        const bool good = status == 0 && gap < kRoundedGap && true_to_itself(a1) && true_to_itself(a2);
        return Outcome{good ? Found::expected : Found::failed,
                       "status " + std::to_string(status) + " gap " + std::to_string(gap)};
    });
}

} // namespace
