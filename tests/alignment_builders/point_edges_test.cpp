// Corners of the builders from a point: elements that end just beside north, and points beyond a half circle.
#include <fenmark/alignment/compound.h>
#include <fenmark/alignment/construction.h>
#include <fenmark/alignment/point.h>

#include "support/sweep.h"

#include <vector>

namespace {

using namespace fenmark::exact;

// So far west of north that the azimuth just falls to 0, or just does not; radians.
constexpr double kBesideNorth[] = {9.5e-6, 9.72e-6, 9.8e-6, 9.9e-6, 9.99e-6, 1e-5, 1.001e-5};
// An arc so short that a tangent 1e-5 off moves its other end by no more than ends are rounded.
constexpr double kShortLengths[] = {0.3, 0.5, 0.6, 0.7, 0.75501, 0.8, 0.9, 1.0, 1.2};

double north_by(double west) {
    return 2.0 * std::numbers::pi - west;
}

// ---- given arcs and straights that head just beside north ----

TEST(BesideNorth, AShortStraightJoinsAnArc) {
    for (const double west : kBesideNorth) {
        for (const double length : {0.2, 1.33746, 5.0}) {
            for (const double dir : {1.0, -1.0}) {
                for (const double x : {0.0, 0.123456789, 7.7654321}) {
                    const auto chain =
                        lay_chain({x, x, north_by(west)}, {straight(length), arc(dir, 19.2997, 0.56838)});
                    Calelm r = extended(chain[1], 3.0, 0.0);
                    Calelm s{};
                    s.len = length;
                    const double p[2] = {chain[0].sx, chain[0].sy};
                    ASSERT_EQ(ali_makrS_P(p, 2, &r, &s), 0) << west << " " << length << " " << dir << " " << x;
                    EXPECT_TRUE(tangent_chain(std::vector{s, r}));
                }
            }
        }
    }
}

TEST(BesideNorth, AShortArcIsCutByAnArcOfTheOtherTurn) {
    for (const double west : kBesideNorth) {
        for (const double length : kShortLengths) {
            for (const double dir : {1.0, -1.0}) {
                const auto chain = lay_chain({-159.67032, -106.15562, north_by(west)},
                                             {arc(dir, 33.7827, length), arc(-dir, 150.0, 113.3)});
                Calelm given = extended(chain[0], 0.0, 20.0);
                ASSERT_EQ(ali_makR(&given), 0);
                Calelm made = sizes_only(chain[1]);
                const double p[2] = {chain[1].ex, chain[1].ey};
                ASSERT_EQ(ali_makrR_P_S(p, 1, &made, &given), 0) << west << " " << length << " " << dir;
                EXPECT_TRUE(tangent_chain(std::vector{given, made}));
                EXPECT_TRUE(same_chain(std::vector{given, made}, chain));
            }
        }
    }
}

TEST(BesideNorth, AShortArcIsCutByAnSCurve) {
    for (const double west : kBesideNorth) {
        for (const double length : kShortLengths) {
            for (const double dir : {1.0, -1.0}) {
                const auto chain =
                    lay_chain({0, 0, north_by(west)}, {arc(dir, 339.215, length), clothoid(dir, 80.0, 339.215, 0),
                                                       clothoid(-dir, 91.0, 0, 158.2833), arc(-dir, 158.2833, 60.0)});
                Calelm given = extended(chain[0], 0.0, -0.4 * chain[0].len);
                ASSERT_EQ(ali_makR(&given), 0);
                Calelm a1 = sizes_only(chain[1]);
                Calelm a2 = sizes_only(chain[2]);
                Calelm made{};
                made.par = chain[3].par;
                double gap = 0.0;
                const double p[2] = {chain[3].ex, chain[3].ey};
                ASSERT_EQ(ali_makrAAR_P(p, 1, &given, &a1, &a2, &made, &gap), 0) << west << " " << length << " " << dir;
                EXPECT_TRUE(tangent_chain(std::vector{given, a1, a2, made}));
                EXPECT_TRUE(same_chain(std::vector{given, a1, a2, made}, chain));
            }
        }
    }
}

TEST(BesideNorth, AnEasedStraightJoinsAnArc) {
    for (const double west : kBesideNorth) {
        for (const double length : {0.3, 1.22521, 4.18919, 60.0}) {
            for (int place = 0; place < 20; ++place) {
                const double x = 137.0371 * place;
                for (const double dir : {1.0, -1.0}) {
                    const auto chain =
                        lay_chain({x, -x, north_by(west)},
                                  {straight(length), clothoid(dir, 22.4404, 0.0, 81.1622), arc(dir, 81.1622, 4.41424)});
                    Calelm r = extended(chain[2], 30.0, 0.0);
                    Calelm a = sizes_only(chain[1]);
                    Calelm s{};
                    s.len = length;
                    const double p[2] = {chain[0].sx, chain[0].sy};
                    ASSERT_EQ(ali_makrAS_P(p, 1, &r, &a, &s), 0) << west << " " << length << " " << dir << " " << x;
                    EXPECT_TRUE(tangent_chain(std::vector{s, a, r}, kRoundedJointTolerance));
                }
            }
        }
    }
}

TEST(BesideNorth, AnArcIsCutByAClothoidFromInfiniteRadius) {
    for (const double west : kBesideNorth) {
        for (const double dir : {1.0, -1.0}) {
            for (const double radius : {308.512, 310.7, 327.9, 412.1, 733.3}) {
                // The given arc heads north where the clothoid begins.
                const double length = 0.51401;
                const auto chain = lay_chain(
                    {0, 0, north_by(west) - length / radius},
                    {arc(-1.0, radius, length), clothoid(dir, 25.5019, 0.0, 100.305), arc(dir, 100.305, 3.51584)});
                Calelm given = extended(chain[0], 0.0, 200.0);
                Calelm a = sizes_only(chain[1]);
                Calelm made = sizes_only(chain[2]);
                const double p[2] = {chain[2].ex, chain[2].ey};
                ASSERT_EQ(ali_makAOR_P(p, 0, &given, &a, &made), 0) << west << " " << radius << " " << dir;
                EXPECT_TRUE(tangent_chain(std::vector{given, a, made}));
            }
        }
    }
}

// ---- points that a curve from a straight reaches beyond a half circle ----

// ---- radii of less than a metre ----

TEST(SmallRadii, AStraightLeavesAnArc) {
    for (const double radius : {1.8, 0.9, 0.45}) {
        for (const double dir : {1.0, -1.0}) {
            const auto chain = lay_chain({0, 0, 0.5}, {arc(dir, radius, 0.5 * radius), straight(3.0 * radius)});
            Calelm r = extended(chain[0], 0.0, 0.2 * radius);
            Calelm s{};
            s.len = 3.0 * radius;
            const double p[2] = {chain[1].ex, chain[1].ey};
            ASSERT_EQ(ali_makrS_P(p, 1, &r, &s), 0) << radius << ' ' << dir;
            EXPECT_TRUE(same_chain(std::vector{r, s}, chain)) << radius << ' ' << dir;
        }
    }
}

TEST(SmallRadii, AnEggShapedCurveLeavesAnArc) {
    for (const double radius : {1.8, 0.9, 0.45, 0.09}) {
        for (const double dir : {1.0, -1.0}) {
            const auto chain = lay_chain({0, 0, 0.5}, {arc(dir, radius, 0.5 * radius),
                                                       clothoid(dir, 0.9 * radius, radius, 0.55 * radius),
                                                       arc(dir, 0.55 * radius, 0.45 * radius)});
            Calelm r = extended(chain[0], 0.0, 0.2 * radius);
            Calelm a = sizes_only(chain[1]);
            Calelm made = sizes_only(chain[2]);
            const double p[2] = {chain[2].ex, chain[2].ey};
            double gap = 0.0;
            double angle = 0.0;
            ASSERT_EQ(ali_makrAR_P(p, 1, &r, &a, &made, &gap, &angle), 0) << radius << ' ' << dir;
            // Ends are rounded to 0.01 mm, which turns an arc of centimetres.
            EXPECT_TRUE(radius < 0.1 || same_chain(std::vector{r, a, made}, chain)) << radius << ' ' << dir;
        }
    }
}

TEST(SmallRadii, AnEasedStraightLeavesAnArc) {
    for (const double radius : {1.8, 0.9, 0.45}) {
        for (const double dir : {1.0, -1.0}) {
            const auto chain = lay_chain({0, 0, 0.5}, {straight(3.0 * radius), clothoid(dir, 0.8 * radius, 0.0, radius),
                                                       arc(dir, radius, 0.6 * radius)});
            Calelm r = extended(chain[2], 0.3 * radius, 0.0);
            Calelm a = sizes_only(chain[1]);
            Calelm s{};
            const double p[2] = {chain[0].sx, chain[0].sy};
            ASSERT_EQ(ali_makrAS_P(p, 1, &r, &a, &s), 0) << radius << ' ' << dir;
            EXPECT_TRUE(same_chain(std::vector{s, a, r}, chain)) << radius << ' ' << dir;
        }
    }
}

TEST(MaksRP, AnArcThatIsLongEnoughGoesRoundToAPointBeyondAHalfCircle) {
    for (const bool first : {true, false}) {
        for (const double dir : {1.0, -1.0}) {
            auto chain = lay_chain({-36000, 12000, 0.7}, {straight(30.0), arc(dir, 50.0, 50.0 * 4.5)});
            if (!first) {
                chain = reversed_chain(chain);
            }
            const Calelm& curve = chain[first ? 1 : 0];
            const double p[2] = {first ? curve.ex : curve.sx, first ? curve.ey : curve.sy};
            Calelm s = chain[first ? 0 : 1];
            Calelm r = sizes_only(curve);
            r.len = curve.len;
            ASSERT_EQ(ali_maksR_P(p, first ? 1 : 2, &s, &r), 0);
            const auto made = first ? std::vector{s, r} : std::vector{r, s};
            EXPECT_TRUE(tangent_chain(made));
            EXPECT_TRUE(same_chain(made, chain));

            // An arc that ends before the point is not led round to it, and one without a length goes no further than
            // a half circle.
            for (const double length : {0.9 * curve.len, 0.0}) {
                s = chain[first ? 0 : 1];
                r = sizes_only(curve);
                r.len = length;
                const Calelm before[2] = {s, r};
                EXPECT_EQ(static_cast<int16_t>(ali_maksR_P(p, first ? 1 : 2, &s, &r)), -1);
                EXPECT_TRUE(identical(s, before[0]) && identical(r, before[1]));
            }
        }
    }
}

TEST(MaksARP, ACurveThatTurnsByMoreThanAHalfCircleReachesThePointWhenItsArcDoes) {
    for (const bool first : {true, false}) {
        for (const double dir : {1.0, -1.0}) {
            // The clothoid turns by 0.78, the arc by 2.9.
            auto chain = lay_chain({-36000, 12000, 0.7},
                                   {straight(10.0), clothoid(dir, 50.0, 0.0, 40.0), arc(dir, 40.0, 40.0 * 2.9)});
            if (!first) {
                chain = reversed_chain(chain);
            }
            const Calelm& curve = chain[first ? 2 : 0];
            const double p[2] = {first ? curve.ex : curve.sx, first ? curve.ey : curve.sy};
            for (const double length : {0.0, curve.len}) {
                Calelm s = chain[first ? 0 : 2];
                Calelm a = sizes_only(chain[1]);
                Calelm r = sizes_only(curve);
                r.len = length;
                ASSERT_EQ(ali_maksAR_P(p, first ? 1 : 2, &s, &a, &r), 0);
                const auto made = first ? std::vector{s, a, r} : std::vector{r, a, s};
                EXPECT_TRUE(tangent_chain(made));
                EXPECT_TRUE(same_chain(made, chain));
            }
            Calelm s = chain[first ? 0 : 2];
            Calelm a = sizes_only(chain[1]);
            Calelm r = sizes_only(curve);
            r.len = 0.9 * curve.len;
            const Calelm before[3] = {s, a, r};
            EXPECT_EQ(static_cast<int16_t>(ali_maksAR_P(p, first ? 1 : 2, &s, &a, &r)), -1);
            EXPECT_TRUE(identical(s, before[0]) && identical(a, before[1]) && identical(r, before[2]));
        }
    }
}

} // namespace
