// Station to point, point to station, offsets, lengths, and what stands on them.
#include "support/exact_chain.h"
#include "support_alignment.h"

#include <cstddef>
#include <memory>

using namespace fenmark::alignment_test;
namespace exact = fenmark::exact;

namespace {

constexpr double kUntouched = 12345.0;

// Ends and centre rounded when the element was laid and again when it was moved, metres.
constexpr double kMovedRounding = 5e-5;

// The station len is on the element, at its end; a millimetre on is not.
void expectEndAtItsLength(const Calelm& rec) {
    double p[2] = {kUntouched, kUntouched};
    double t = kUntouched;
    ASSERT_EQ(ali_onl(&rec, rec.len, p, &t), 0) << exact::describe(rec);
    EXPECT_NEAR(p[0], rec.ex, kMovedRounding) << exact::describe(rec);
    EXPECT_NEAR(p[1], rec.ey, kMovedRounding) << exact::describe(rec);
    EXPECT_EQ(ali_onl(&rec, rec.len + 0.001, p, &t), -1) << exact::describe(rec);
}

} // namespace

TEST(OnElement, TheStoredLengthIsOnItHoweverItWasLaidOrMoved) {
    Random random(56007);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 2000; ++i) {
            const Calelm rec = i % 4 == 0 ? randomStraight(random, place) : randomArc(random, place, 6.0);
            expectEndAtItsLength(rec);
            if (rec.type == ALI_ARC) {
                Calelm from_end = rec;
                ASSERT_EQ(ali_makangR(&from_end, 2), 0);
                expectEndAtItsLength(from_end);
            }
            Calelm moved{};
            ASSERT_EQ(ali_pmov(&rec, random.uniform(-300.0, 300.0), random.uniform(0.01, 6.27), &moved), 0);
            expectEndAtItsLength(moved);
            const double pivot[2] = {place.x + random.uniform(-300.0, 300.0), place.y};
            ASSERT_EQ(ali_tmov(&rec, pivot, random.uniform(-3.0, 3.0), &moved), 0);
            expectEndAtItsLength(moved);
        }
    }
}

TEST(OnElement, AStoredLengthThatIsNotThatOfTheEndsProlongsNothing) {
    Calelm line = straightRecord(0.0, 0.0, 100.0, 0.0);
    Calelm arc = arcFrom(0.0, 0.0, 1.0, -1.0, 100.0, 60.0);
    double p[2];
    double t = 0.0;
    for (Calelm* rec : {&line, &arc}) {
        const double length = rec->len;
        for (const double stored : {length + 1.0, length + 1e-4, 0.0, kInfinity, kNotANumber}) {
            rec->len = stored;
            EXPECT_EQ(ali_onl(rec, length, p, &t), 0) << stored;
            EXPECT_EQ(ali_onl(rec, length + 9e-5, p, &t), -1) << stored;
        }
    }
}

TEST(OnStraight, TheEndIsOnItAndAMillimetreBeyondIsNot) {
    Random random(56001);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = randomStraight(random, place);
            double p[2] = {kUntouched, kUntouched};
            double t = kUntouched;
            // The length is rounded and may exceed the chord; the last bit does not decide.
            ASSERT_EQ(ali_onlS(&rec, rec.len, p, &t), 0);
            EXPECT_NEAR(p[0], rec.ex, 1.1e-5);
            EXPECT_NEAR(p[1], rec.ey, 1.1e-5);
            EXPECT_EQ(t, rec.sang);
            p[0] = t = kUntouched;
            EXPECT_EQ(ali_onlS(&rec, rec.len + 0.001, p, &t), -1);
            EXPECT_EQ(ali_onlS(&rec, -1e-9, p, &t), -1);
            EXPECT_EQ(p[0], kUntouched);
            EXPECT_EQ(t, kUntouched);
        }
    }
}

TEST(OnArc, StationZeroIsTheStartAndItsTangent) {
    const Calelm rec = arcFrom(100.0, 200.0, 0.5, -1.0, 80.0, 60.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlR(&rec, 0.0, p, &t), 0);
    EXPECT_NEAR(p[0], 100.0, kLengthRounding);
    EXPECT_NEAR(p[1], 200.0, kLengthRounding);
    EXPECT_NEAR(t, 0.5, kAngleRounding);
}

TEST(OnArc, NegativeStationLiesBeforeTheStartAndBeyondTheEndIsRefused) {
    const Calelm rec = arcFrom(0.0, 0.0, 1.0, 1.0, 100.0, 60.0);
    double p[2];
    double t = 0.0;
    EXPECT_EQ(ali_onlR(&rec, -10.0, p, &t), 0);
    const exact::Pose before = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), -10.0L);
    EXPECT_NEAR(p[0], static_cast<double>(before.x), 1e-4);
    EXPECT_NEAR(p[1], static_cast<double>(before.y), 1e-4);
    EXPECT_EQ(ali_onlR(&rec, 60.0, p, &t), 0);
    EXPECT_EQ(ali_onlR(&rec, 60.001, p, &t), -1);
    EXPECT_EQ(ali_onlR(&rec, 700.0, p, &t), -1);
    Calelm flat = rec;
    flat.par = 4e-6;
    EXPECT_EQ(ali_onlR(&flat, 0.0, p, &t), -1);
}

TEST(OnClothoid, BeyondTheEndIsToldButThePointIsWritten) {
    const Calelm rec = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 100.0);
    double p[2] = {kUntouched, kUntouched};
    double t = kUntouched;
    EXPECT_EQ(ali_onlA(&rec, rec.len + 1.0, p, &t), -1);
    const exact::Pose beyond = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), rec.len + 1.0);
    EXPECT_NEAR(p[0], static_cast<double>(beyond.x), kClothoidPoint);
    EXPECT_NEAR(p[1], static_cast<double>(beyond.y), kClothoidPoint);
    EXPECT_EQ(ali_onlA(&rec, rec.len, p, &t), 0);
}

TEST(OnClothoid, AnElementWithoutLengthWritesNothing) {
    Calelm rec = clothoidSizes(1.0, 100.0, 200.0, 200.0);
    rec.ex = 10.0;
    double p[2] = {kUntouched, kUntouched};
    double t = kUntouched;
    EXPECT_EQ(ali_onlA(&rec, 0.0, p, &t), -1);
    EXPECT_EQ(p[0], kUntouched);
    EXPECT_EQ(t, kUntouched);
}

TEST(OnElement, EveryStationLiesWhereTheCurvatureLeads) {
    Random random(56002);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1500; ++i) {
            const Calelm rec = i % 3 == 0 ? randomArc(random, place, 6.0) : randomClothoid(random, place);
            const double s = random.uniform(0.0, 1.0) * rec.len;
            double p[2];
            double t = 0.0;
            ASSERT_EQ(ali_onl(&rec, s, p, &t), 0);
            const exact::Pose expected = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), s);
            // At the flat beginning the series takes the first A / 600 metres for one point.
            const double flat = rec.type == ALI_CLOTHOID ? 1.67e-3 * rec.par : 0.0;
            const double from_flat = rec.r1 == 0.0 ? s : rec.r2 == 0.0 ? rec.len - s : kInfinity;
            const double allowed = rec.type == ALI_CLOTHOID && from_flat < flat ? flat : 4e-5;
            EXPECT_NEAR(p[0], static_cast<double>(expected.x), allowed) << exact::describe(rec);
            EXPECT_NEAR(p[1], static_cast<double>(expected.y), allowed) << exact::describe(rec);
            EXPECT_LT(angleBetween(t, static_cast<double>(expected.azimuth)), 1e-5);
        }
    }
}

TEST(OnElement, EndsOfAClothoidAreItsPointsAndTangents) {
    Random random(56003);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = randomClothoid(random, place);
            double p[2];
            double t = 0.0;
            ASSERT_EQ(ali_onlA(&rec, 0.0, p, &t), 0);
            EXPECT_NEAR(p[0], rec.sx, kLengthBits);
            EXPECT_NEAR(p[1], rec.sy, kLengthBits);
            EXPECT_LT(angleBetween(t, rec.sang), 1e-5);
            ASSERT_EQ(ali_onlA(&rec, rec.len, p, &t), 0);
            EXPECT_NEAR(p[0], rec.ex, kLengthBits);
            EXPECT_NEAR(p[1], rec.ey, kLengthBits);
            EXPECT_LT(angleBetween(t, rec.eang), 1e-5);
        }
    }
}

TEST(OffElement, AQuarterTurnIsSquareToTheLeft) {
    const Calelm north = straightRecord(0.0, 0.0, 100.0, 0.0);
    double p[2];
    ASSERT_EQ(ali_oflS(&north, 40.0, kPi / 2.0, 5.0, p), 0);
    EXPECT_NEAR(p[0], 40.0, kLengthBits);
    EXPECT_NEAR(p[1], -5.0, kLengthBits); // west of a line that runs north
    ASSERT_EQ(ali_oflS(&north, 40.0, 1.5 * kPi, 5.0, p), 0);
    EXPECT_NEAR(p[1], 5.0, kLengthBits);
    // Towards the centre of a left arc.
    const Calelm arc = arcFrom(0.0, 0.0, 0.3, 1.0, 50.0, 40.0);
    ASSERT_EQ(ali_oflR(&arc, 20.0, kPi / 2.0, 50.0, p), 0);
    EXPECT_NEAR(p[0], arc.k1, 1e-4);
    EXPECT_NEAR(p[1], arc.k2, 1e-4);
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 0.3, -1.0, 50.0, 0.0, 60.0);
    ASSERT_EQ(ali_oflA(&clothoid, clothoid.len, 1.5 * kPi, 60.0, p), 0);
    const auto centre = exact::centre_at(exact::end_of(clothoid), -1.0, 60.0L);
    EXPECT_NEAR(p[0], static_cast<double>(centre[0]), 1e-4);
    EXPECT_NEAR(p[1], static_cast<double>(centre[1]), 1e-4);
}

TEST(OffElement, AFailureWritesNothing) {
    const Calelm line = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Calelm arc = arcFrom(0.0, 0.0, 0.3, 1.0, 50.0, 40.0);
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 0.3, -1.0, 50.0, 0.0, 60.0);
    double p[2] = {kUntouched, kUntouched};
    EXPECT_EQ(ali_oflS(&line, 101.0, 0.0, 1.0, p), -1);
    EXPECT_EQ(ali_oflR(&arc, 41.0, 0.0, 1.0, p), -1);
    EXPECT_EQ(ali_oflA(&clothoid, clothoid.len + 1.0, 0.0, 1.0, p), -1);
    EXPECT_EQ(p[0], kUntouched);
    EXPECT_EQ(p[1], kUntouched);
}

TEST(Projection, FromAnOffsetPointBackToTheStation) {
    Random random(56004);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 2000; ++i) {
            const int kind = i % 4;
            const Calelm rec = kind == 0   ? randomStraight(random, place)
                               : kind == 1 ? randomArc(random, place, 6.0)
                                           : randomClothoid(random, place);
            const double s = random.uniform(0.02, 0.98) * rec.len;
            const exact::Pose on = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), s);
            // Offsets up to 15 m, less than every radius here.
            const double offset = random.uniform(-15.0, 15.0);
            const double p[2] = {static_cast<double>(on.x + offset * std::sin(on.azimuth)),
                                 static_cast<double>(on.y - offset * std::cos(on.azimuth))};
            double station = 0.0;
            double foot[2];
            ASSERT_EQ(ali_proj(&rec, p, &station, foot), 0) << exact::describe(rec) << " s " << s;
            const bool clothoid = rec.type == ALI_CLOTHOID;
            const double flat = clothoid ? 1.67e-3 * rec.par : 0.0;
            const double from_flat = rec.r1 == 0.0 ? s : rec.r2 == 0.0 ? rec.len - s : kInfinity;
            const double allowed = clothoid && from_flat < 2.0 * flat ? 2.0 * flat
                                   : clothoid                         ? 3.0 * kFootStation
                                                                      : 3e-4;
            EXPECT_NEAR(station, s, allowed) << exact::describe(rec) << " offset " << offset;
            EXPECT_NEAR(foot[0], static_cast<double>(on.x), allowed);
            EXPECT_NEAR(foot[1], static_cast<double>(on.y), allowed);
        }
    }
}

TEST(Projection, APointOnTheElementHasItsOwnStation) {
    Random random(56005);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = i % 2 == 0 ? randomArc(random, place, 6.0) : randomClothoid(random, place);
            const double s = random.uniform(0.05, 0.95) * rec.len;
            double p[2];
            double t = 0.0;
            ASSERT_EQ(ali_onl(&rec, s, p, &t), 0);
            double station = 0.0;
            double foot[2];
            ASSERT_EQ(ali_proj(&rec, p, &station, foot), 0);
            EXPECT_NEAR(station, s, rec.type == ALI_ARC ? 3e-5 : kFootStation);
        }
    }
}

TEST(ProjectionOnStraight, BehindTheStartIsNotExtrapolated) {
    const Calelm rec = straightRecord(0.0, 0.0, 100.0, 0.0);
    const double behind[2] = {-0.001, 5.0};
    const double beyond[2] = {100.001, 5.0};
    double s = kUntouched;
    double foot[2] = {kUntouched, kUntouched};
    EXPECT_EQ(ali_projS(&rec, behind, &s, foot), -1);
    EXPECT_EQ(ali_projS(&rec, beyond, &s, foot), -1);
    EXPECT_EQ(s, kUntouched);
    EXPECT_EQ(foot[0], kUntouched);
}

TEST(ProjectionOnStraight, SquareToAnEndTheLastBitDoesNotDecide) {
    Random random(56006);
    SCOPED_TRACE(random.trace());
    for (const Place place : kPlaces) {
        for (int i = 0; i < 1000; ++i) {
            const Calelm rec = randomStraight(random, place);
            const double d = random.uniform(-50.0, 50.0);
            const double length = std::hypot(rec.ex - rec.sx, rec.ey - rec.sy);
            const double nx = -(rec.ey - rec.sy) / length;
            const double ny = (rec.ex - rec.sx) / length;
            const double at_start[2] = {rec.sx + d * nx, rec.sy + d * ny};
            const double at_end[2] = {rec.ex + d * nx, rec.ey + d * ny};
            double s = 0.0;
            double foot[2];
            ASSERT_EQ(ali_projS(&rec, at_start, &s, foot), 0);
            EXPECT_EQ(s, 0.0);
            ASSERT_EQ(ali_projS(&rec, at_end, &s, foot), 0);
            EXPECT_NEAR(s, length, 1e-5);
        }
    }
}

TEST(ProjectionOnArc, ItsEndsAndItsCentreAreRefused) {
    const Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, 80.0, 60.0);
    double s = kUntouched;
    double foot[2] = {kUntouched, kUntouched};
    const double start[2] = {rec.sx, rec.sy};
    const double end[2] = {rec.ex, rec.ey};
    const double centre[2] = {rec.k1, rec.k2};
    EXPECT_EQ(ali_projR(&rec, start, foot, &s), -1);
    EXPECT_EQ(ali_projR(&rec, end, foot, &s), -1);
    EXPECT_EQ(ali_projR(&rec, centre, foot, &s), -1);
    Calelm closed = rec;
    closed.ex = closed.sx;
    closed.ey = closed.sy;
    const double p[2] = {10.0, 10.0};
    EXPECT_EQ(ali_projR(&closed, p, foot, &s), -1);
    EXPECT_EQ(s, kUntouched);
    EXPECT_EQ(foot[0], kUntouched);
}

TEST(ProjectionOnArc, AFootAtTheStartHasStationZeroInBothSenses) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm rec = arcFrom(0.0, 0.0, 0.5, dir, 80.0, 60.0);
        const double p[2] = {rec.k1 + 1.2 * (rec.sx - rec.k1), rec.k2 + 1.2 * (rec.sy - rec.k2)};
        double s = kUntouched;
        double foot[2];
        ASSERT_EQ(ali_projR(&rec, p, foot, &s), 0) << dir;
        EXPECT_EQ(s, 0.0);
        EXPECT_NEAR(foot[0], rec.sx, 1e-4);
        // Half a length step before the start, which is nothing; two of them are no foot.
        for (const double before : {5e-6, 2e-5}) {
            const double back = -dir * before / 80.0;
            // The turn of the survey plane runs against the angle of the calculation plane.
            const double x = rec.sx - rec.k1;
            const double y = rec.sy - rec.k2;
            const double q[2] = {rec.k1 + 1.2 * (x * std::cos(-back) - y * std::sin(-back)),
                                 rec.k2 + 1.2 * (x * std::sin(-back) + y * std::cos(-back))};
            s = kUntouched;
            EXPECT_EQ(ali_projR(&rec, q, foot, &s), before < 1e-5 ? 0 : -1) << dir << ' ' << before;
            EXPECT_EQ(s, before < 1e-5 ? 0.0 : kUntouched) << dir << ' ' << before;
        }
    }
}

TEST(ProjectionOnArc, ThreeQuartersOfACircleCountToTheFoot) {
    const double R = 100.0;
    const Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, R, 1.5 * kPi * R);
    const exact::Pose on = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), 392.70L);
    const double p[2] = {static_cast<double>(on.x) + 1e-3, static_cast<double>(on.y)};
    double s = 0.0;
    double foot[2];
    ASSERT_EQ(ali_projR(&rec, p, foot, &s), 0);
    EXPECT_NEAR(s, 392.70, 2e-3);
}

TEST(ProjectionOnClothoid, TheStartHasStationZero) {
    for (const double dir : {-1.0, 1.0}) {
        const Calelm grows = clothoidFrom(10.0, 20.0, 1.0, dir, 100.0, 0.0, 120.0);
        const Calelm falls = clothoidFrom(10.0, 20.0, 1.0, dir, 100.0, 120.0, 300.0);
        const double start[2] = {10.0, 20.0};
        for (const Calelm* rec : {&grows, &falls}) {
            double s = kUntouched;
            double foot[2];
            ASSERT_EQ(ali_projA(rec, start, foot, &s), 0);
            EXPECT_EQ(s, 0.0);
            EXPECT_NEAR(foot[0], 10.0, kLengthBits);
        }
    }
}

TEST(ProjectionOnClothoid, APointBehindTheEndsHasNoFoot) {
    const Calelm rec = clothoidFrom(0.0, 0.0, 0.0, 1.0, 100.0, 0.0, 120.0);
    const double behind[2] = {-5.0, 3.0};
    double s = kUntouched;
    double foot[2] = {kUntouched, kUntouched};
    EXPECT_EQ(ali_projA(&rec, behind, foot, &s), -1);
    const exact::Pose beyond = exact::pose_at(exact::start_of(rec), exact::shape_of(rec), rec.len + 10.0);
    const double far[2] = {static_cast<double>(beyond.x), static_cast<double>(beyond.y)};
    EXPECT_EQ(ali_projA(&rec, far, foot, &s), -1);
    EXPECT_EQ(s, kUntouched);
    EXPECT_EQ(foot[0], kUntouched);
}

TEST(FootTest, TellsOnWhichSideTheFootLies) {
    // A clothoid in its own frame, left-turning from the origin.
    Calelm a = clothoidSizes(1.0, 100.0, 0.0, 100.0);
    double X = 0.0;
    double Y = 0.0;
    CDRcalxy(100.0, 100.0, &X, &Y);
    a.ex = X;
    a.ey = Y;
    double cosine = kUntouched;
    double x = 0.0;
    double y = 0.0;
    CDLcalxy(100.0, 50.0, &x, &y);
    const double tau = 0.125;
    const double q[2] = {x - 10.0 * std::sin(tau), y + 10.0 * std::cos(tau)};
    EXPECT_EQ(chk_ang(&a, q, 50.0, &cosine), 0);
    EXPECT_NEAR(cosine, 0.0, 1e-9);
    EXPECT_EQ(chk_ang(&a, q, 60.0, &cosine), 1);
    EXPECT_GT(cosine, 0.0);
    EXPECT_EQ(chk_ang(&a, q, 40.0, &cosine), -1);
    EXPECT_LT(cosine, 0.0);
    const double on[2] = {x, y + 0.0009};
    EXPECT_EQ(chk_ang(&a, on, 50.0, &cosine), 2);
    EXPECT_EQ(cosine, 0.0);
    const double off[2] = {x, y + 0.0011};
    EXPECT_NE(chk_ang(&a, off, 50.0, &cosine), 2);
    const double besideStart[2] = {0.0, 10.0};
    EXPECT_EQ(chk_ang(&a, besideStart, 0.0, &cosine), 0) << "the tangent of the flat end is the axis";
    EXPECT_NEAR(cosine, 0.0, 1e-12);
}

TEST(Length, OfEachType) {
    double length = 0.0;
    const Calelm line = straightRecord(0.0, 0.0, 30.0, 40.0);
    EXPECT_EQ(ali_getl(&line, &length), 0);
    EXPECT_NEAR(length, 50.0, kLengthBits);
    const Calelm arc = arcFrom(0.0, 0.0, 0.5, -1.0, 80.0, 60.0);
    EXPECT_EQ(ali_getl(&arc, &length), 0);
    EXPECT_NEAR(length, 60.0, 2e-5);
    const Calelm clothoid = clothoidFrom(0.0, 0.0, 0.3, 1.0, 100.0, 400.0, 100.0);
    EXPECT_EQ(ali_getl(&clothoid, &length), 0);
    EXPECT_EQ(length, 75.0);
    const Calelm both_flat = clothoidSizes(1.0, 100.0, 0.0, 0.0);
    EXPECT_EQ(ali_getlA(&both_flat, &length), 0);
    EXPECT_EQ(length, 0.0);
}

TEST(Length, OfALongArcIsThatOfItsComplement) {
    const Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, 100.0, 1.5 * kPi * 100.0);
    double length = 0.0;
    EXPECT_EQ(ali_getlR(&rec, &length), 0);
    EXPECT_NEAR(length, 0.5 * kPi * 100.0, 5e-5);
}

TEST(Length, OfAWholeCircle) {
    Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, 100.0, 50.0);
    rec.ex = rec.sx;
    rec.ey = rec.sy + 0.9e-5;
    double length = kUntouched;
    EXPECT_EQ(ali_getlR(&rec, &length), 1);
    EXPECT_NEAR(length, kTwoPi * 100.0, 1e-5);
    EXPECT_EQ(ali_getl(&rec, &length), 1);
    EXPECT_EQ(length, 0.0);
}

TEST(Length, Refusals) {
    Calelm rec = arcFrom(0.0, 0.0, 0.5, 1.0, 100.0, 50.0);
    double length = kUntouched;
    rec.dir = 0.0;
    EXPECT_EQ(ali_getlR(&rec, &length), -1);
    rec.dir = 1.0;
    rec.par = 0.0;
    EXPECT_EQ(ali_getlR(&rec, &length), -1);
    EXPECT_EQ(length, kUntouched);
    Calelm line{};
    EXPECT_EQ(ali_getlS(&line, &length), -1);
    EXPECT_EQ(length, 0.0);
}

TEST(Length, OfTwoPoints) {
    const double p[2] = {1.0, 2.0};
    const double q[2] = {4.0, 6.000004};
    EXPECT_EQ(ali_getlPP(p, p), -1.0);
    EXPECT_NEAR(ali_getlPP(p, q), 5.0, 1.1e-5);
    EXPECT_EQ(ali_getlPP(p, q), ali_CAroundNum(ali_CDist2P(p, q)));
}

TEST(Monitoring, TheListHasItsCountAtTheHeadAndItsEntriesFromByteEight) {
    EXPECT_EQ(offsetof(AliMoniList, entries), 8u);
    EXPECT_EQ(sizeof(AliMoniEntry), 40u);
    EXPECT_EQ(offsetof(AliMoniEntry, x), 8u);
    EXPECT_EQ(offsetof(AliMoniEntry, distance), 24u);
}

TEST(Monitoring, TheFirstElementThatAnswersCounts) {
    const Calelm elements[3] = {Calelm{}, straightRecord(0.0, 0.0, 100.0, 0.0),
                                arcFrom(100.0, 0.0, 0.0, 1.0, 80.0, 60.0)};
    constexpr std::size_t kCount = 3;
    alignas(double) unsigned char memory[8 + kCount * sizeof(AliMoniEntry)] = {};
    auto* list = reinterpret_cast<AliMoniList*>(memory);
    list->count = static_cast<int16_t>(kCount);
    AliMoniEntry* entries = list->entries;
    entries[0] = {1.0, 50.0, 3.0, kUntouched, 5.0};
    entries[1] = {1.0, elements[2].k1 + 100.0 * std::sin(0.3), elements[2].k2 + 100.0 * std::cos(0.3), kUntouched, 5.0};
    entries[2] = {1.0, -50.0, 3.0, kUntouched, 5.0};
    EXPECT_EQ(Calc_moni(list, 3, elements), 1);
    EXPECT_NEAR(entries[0].distance, 3.0, kLengthBits);
    EXPECT_NEAR(entries[1].distance, 20.0, 1e-4);
    EXPECT_EQ(entries[2].distance, -1.0);
    EXPECT_EQ(entries[0].slot1, 1.0);
    EXPECT_EQ(entries[0].slot5, 5.0);
    double d = kUntouched;
    const double p[2] = {50.0, 3.0};
    EXPECT_EQ(get_moniDist(p, 3, elements, &d), 1);
    EXPECT_NEAR(d, 3.0, kLengthBits);
    const double off[2] = {-50.0, 3.0};
    EXPECT_EQ(get_moniDist(off, 3, elements, &d), -1);
    EXPECT_EQ(d, -1.0);
    d = kUntouched;
    EXPECT_EQ(get_moniDist(p, 0, elements, &d), -1);
    EXPECT_EQ(d, -1.0);
}

TEST(Monitoring, AnEmptyListIsAPassThatWritesNothing) {
    AliMoniList list{};
    list.entries[0].distance = kUntouched;
    EXPECT_EQ(Calc_moni(&list, 0, nullptr), 1);
    EXPECT_EQ(list.entries[0].distance, kUntouched);
}

TEST(SameClothoid, TwoPiecesOfOneAreRecognisedInBothOrdersAndGrowths) {
    Random random(56007);
    SCOPED_TRACE(random.trace());
    for (int i = 0; i < 200; ++i) {
        const double A = random.uniform(60.0, 300.0);
        const double dir = random.sign();
        const double R[4] = {A * 6.0, A * 3.0, A * 1.5, A * 0.8};
        const Calelm whole = clothoidFrom(0.0, 0.0, random.uniform(0.3, 5.9), dir, A, R[0], R[3]);
        double p[2];
        double t = 0.0;
        ASSERT_EQ(ali_onlA(&whole, A * A / R[1] - A * A / R[0], p, &t), 0);
        const Calelm part = clothoidFrom(p[0], p[1], t, dir, A, R[1], R[2]);
        EXPECT_EQ(CDsameA(&part, &whole), -1);
        EXPECT_EQ(CDsameA(&whole, &part), -2);
        const Calelm back = exact::reversed(whole);
        const Calelm part_back = exact::reversed(part);
        EXPECT_LT(CDsameA(&part_back, &back), 0);
        EXPECT_LT(CDsameA(&back, &part_back), 0);
        Calelm turned{};
        const double pivot[2] = {0.0, 0.0};
        ASSERT_EQ(ali_tmov(&part, pivot, 0.2, &turned), 0);
        EXPECT_EQ(CDsameA(&turned, &whole), 0);
        EXPECT_EQ(CDsameA(&whole, &turned), 0);
        Calelm other = part;
        other.par += 1.1e-5;
        EXPECT_EQ(CDsameA(&other, &whole), 0);
        other = part;
        other.dir = -other.dir;
        EXPECT_EQ(CDsameA(&other, &whole), 0);
        EXPECT_EQ(CDsameA(&part, &back), 0); // the turning sense differs on the way back
        Calelm falls = part;
        std::swap(falls.r1, falls.r2);
        EXPECT_EQ(CDsameA(&falls, &whole), -2);
    }
}

TEST(SameClothoid, AnInfiniteRadiusCountsAsTheLargest) {
    const Calelm grows = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 0.0, 200.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlA(&grows, 25.0, p, &t), 0);
    const Calelm part = clothoidFrom(p[0], p[1], t, 1.0, 100.0, 400.0, 100.0);
    EXPECT_EQ(CDsameA(&part, &grows), -1);
}

TEST(Joint, AGapOrABreakIsRefused) {
    const Calelm first = straightRecord(0.0, 0.0, 100.0, 0.0);
    const Calelm good = straightRecord(100.0, 0.0, 200.0, 10.0);
    const Calelm gap = straightRecord(100.0011, 0.0, 200.0, 10.0);
    const Calelm slight = straightRecord(100.0, 0.0, 100.0 + 10.0 * std::cos(0.49), 10.0 * std::sin(0.49));
    const Calelm broken = straightRecord(100.0, 0.0, 100.0 + 10.0 * std::cos(0.51), 10.0 * std::sin(0.51));
    EXPECT_EQ(jointCheck(&first, &good), 0);
    EXPECT_EQ(jointCheck(&first, &gap), -1);
    EXPECT_EQ(jointCheck(&first, &slight), 0);
    EXPECT_EQ(jointCheck(&first, &broken), -1);
    const Calelm empty{};
    EXPECT_EQ(jointCheck(&first, &empty), -1);
}

TEST(SameClothoid, TheToleranceOfTheTangentDiffersWithTheOrder) {
    const Calelm whole = clothoidFrom(0.0, 0.0, 1.0, 1.0, 100.0, 600.0, 80.0);
    double p[2];
    double t = 0.0;
    ASSERT_EQ(ali_onlA(&whole, 10000.0 / 300.0 - 10000.0 / 600.0, p, &t), 0);
    const Calelm part = clothoidFrom(p[0], p[1], t, 1.0, 100.0, 300.0, 150.0);
    for (const double off : {1e-6, 5e-6, 1.2e-5}) {
        Calelm turned = part;
        turned.sang += off;
        EXPECT_EQ(CDsameA(&turned, &whole), off < 1e-5 ? -1 : 0) << off;
        EXPECT_EQ(CDsameA(&whole, &turned), off < 1.389e-6 ? -2 : 0) << off;
    }
}
