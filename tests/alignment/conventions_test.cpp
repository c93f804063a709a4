// The record, the two planes, the rounding steps and the comparison of points.
#include "support/sample_file.h"
#include "support_alignment.h"

#include <cstring>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

using namespace fenmark::alignment_test;

TEST(Record, EmptyRecordHasZeroFieldsAndEveryDispatcherRefusesIt) {
    Calelm rec;
    std::memset(&rec, 0x55, sizeof rec);
    EXPECT_EQ(initCalelm(&rec), 0);
    const Calelm zero{};
    EXPECT_TRUE(sameBits(rec, zero));
    const Calelm line = straightRecord(0.0, 0.0, 10.0, 0.0);
    double p[2] = {1.0, 1.0};
    double q[2] = {1.0, 1.0};
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    Calelm out{};
    for (int mode = 0; mode <= 2; ++mode) {
        EXPECT_EQ(ali_mak(&rec, mode), -1);
    }
    EXPECT_EQ(ali_onl(&rec, 0.0, p, &a), -1);
    EXPECT_EQ(ali_proj(&rec, p, &a, q), -1);
    EXPECT_EQ(ali_getl(&rec, &a), -1);
    EXPECT_EQ(ali_pmov(&rec, 1.0, 0.0, &out), -1);
    EXPECT_EQ(ali_tmov(&rec, p, 1.0, &out), -1);
    EXPECT_EQ(ali_intp(&rec, &line, p, &a, &b, q, &c, &d), -1);
    EXPECT_EQ(ali_intp(&line, &rec, p, &a, &b, q, &c, &d), -1);
}

TEST(Record, NullPointerIsRefused) {
    EXPECT_EQ(initCalelm(nullptr), -1);
}

TEST(Planes, PointChangesTheSignOfYAndServesBothWays) {
    double p[2] = {3.0, 4.0};
    ali_CExCoord(p, p);
    EXPECT_EQ(p[0], 3.0);
    EXPECT_EQ(p[1], -4.0);
    ali_CExCoord(p, p);
    EXPECT_EQ(p[1], 4.0);
}

TEST(Planes, AngleNearZeroCollapsesToZero) {
    EXPECT_EQ(ali_CExAng(0.000009), 0.0);
    EXPECT_EQ(ali_CExAng(-0.000009), 0.0);
    EXPECT_EQ(ali_CExAng(std::nextafter(1e-5, 0.0)), 0.0);
    EXPECT_EQ(ali_CExAng(1e-5), kTwoPi - 1e-5);
    EXPECT_EQ(ali_CExAng(0.00002), kTwoPi - 0.00002);
    EXPECT_EQ(ali_CExAng(-1.0), 1.0);
}

TEST(Rounding, LengthTieGoesUpwardsForNegativesToo) {
    EXPECT_EQ(ali_CAroundNum(-0.000005), 0.0);
    EXPECT_EQ(ali_CAroundNum(0.000005), 0.00001);
    EXPECT_DOUBLE_EQ(ali_CAroundNum(12.3456749), 12.34567);
    EXPECT_DOUBLE_EQ(ali_CAroundNum(12.3456751), 12.34568);
    EXPECT_DOUBLE_EQ(ali_CAroundNum(-12.3456751), -12.34568);
}

TEST(Rounding, AngleGoesToAMultipleOfItsStep) {
    EXPECT_EQ(ali_CAroundAng(0.0), 0.0);
    EXPECT_EQ(ali_CAroundAng(1.389e-6 * 0.499), 0.0);
    EXPECT_EQ(ali_CAroundAng(1.389e-6 * 0.501), 1.389e-6);
    // A full turn rounds up by 6.4e-7.
    EXPECT_EQ(ali_CAroundAng(kTwoPi), 4523532.0 * 1.389e-6);
    EXPECT_GT(ali_CAroundAng(kTwoPi), kTwoPi);
}

TEST(Rounding, TiesOfYGoTheOtherWayThanTiesOfX) {
    // A straight moved by half a step in x and in y: x rounds up, y, whose negated value rounds up, rounds down.
    Calelm line = straightRecord(0.0, 0.0, 10.0, 10.0);
    line.sx = line.sy = 0.000005;
    Calelm out{};
    EXPECT_EQ(ali_pmovS(&line, 0.0, 0.0, &out), 0);
    EXPECT_EQ(out.sx, 0.00001);
    EXPECT_EQ(out.sy, 0.0);
}

TEST(Points, SameWhenBothCoordinatesDifferByLessThanTheStep) {
    const double p[2] = {1.0, 1.0};
    const double near[2] = {1.0 + 0.9e-5, 1.0 - 0.9e-5};
    const double far[2] = {1.0, 1.0 + 1.1e-5};
    EXPECT_EQ(ali_CSamePoint(p, near), 0);
    EXPECT_EQ(ali_CSamePoint(p, far), 1);
    EXPECT_EQ(gc_samePoint(p, far, 1e-4), 0);
    EXPECT_EQ(gc_samePoint(p, far, 1.1e-6), -1);
    const double broken[2] = {kNotANumber, 1.0};
    EXPECT_EQ(ali_CSamePoint(p, broken), 1);
    EXPECT_EQ(gc_samePoint(p, broken, 1.0), -1);
    const double origin[2] = {0.0, 0.0};
    for (const double step : {-0.5, 0.5}) {
        const double alongX[2] = {step, 0.25};
        const double alongY[2] = {0.25, step};
        EXPECT_EQ(gc_samePoint(origin, alongX, 0.5), -1) << "the tolerance itself is too far";
        EXPECT_EQ(gc_samePoint(origin, alongY, 0.5), -1);
        EXPECT_EQ(gc_samePoint(origin, alongX, 0.5001), 0);
        EXPECT_EQ(gc_samePoint(origin, alongY, 0.5001), 0);
    }
}

TEST(Points, DistanceIsPlain) {
    const double p[2] = {1.0, 2.0};
    const double q[2] = {4.0, -2.0};
    EXPECT_EQ(ali_CDist2P(p, q), 5.0);
}

// One line for each text: the function, its status and the text; first those of any function.
TEST(StatusText, TextsAreThoseOfTheList) {
    std::string lines;
    std::vector<std::string> functions{"any function"};
    std::ifstream exports(FENMARK_SOURCE_DIR "/docs/exports.txt");
    for (std::string name; std::getline(exports, name);) {
        functions.push_back(name);
    }
    EXPECT_GT(functions.size(), 200U);
    for (const std::string& function : functions) {
        for (int status = -40; status <= 40; ++status) {
            const std::string text = ali_statusText(function.c_str(), status);
            if (function == functions.front() || text != ali_statusText("any function", status)) {
                lines += function + " " + std::to_string(status) + ": " + text + "\n";
            }
        }
    }
    fenmark::test::expectSampleOf("alignment", "status_texts.txt", lines);
}

TEST(StatusText, EveryStatusHasATextAndUnknownNamesGetTheGeneralOne) {
    EXPECT_STREQ(ali_statusText("ali_makS", 0), "success");
    EXPECT_STREQ(ali_statusText(nullptr, 0), "success");
    EXPECT_STRNE(ali_statusText("ali_intpSS", -1), ali_statusText("ali_intpSS", -2));
    EXPECT_STRNE(ali_statusText("ali_makA", 2), ali_statusText("ali_intpAA", 2));
    // Only the low 16 bits count.
    EXPECT_STREQ(ali_statusText("ali_intpSS", 0xFFFF), ali_statusText("ali_intpSS", -1));
    EXPECT_STREQ(ali_statusText("no such function", -1), ali_statusText(nullptr, -1));
    for (int status = -5; status <= 30; ++status) {
        EXPECT_NE(ali_statusText("ali_onlA", status), nullptr);
        EXPECT_GT(std::strlen(ali_statusText("ali_onlA", status)), 0u);
    }
}

TEST(StatusText, EveryStatusOfTheElementFunctionsHasItsOwnMeaning) {
    // The statuses that the headers announce, 0 left out where it means nothing but success.
    const std::pair<const char*, std::vector<int>> announced[] = {
        {"initCalelm", {-1}},
        {"ali_CSamePoint", {0, 1}},
        {"gc_samePoint", {0, -1}},
        {"CDchkAR", {0, -1}},
        {"clothoidElements", {-1}},
        {"ali_KCalCst", {-1}},
        {"ali_KGetPnt", {-1}},
        {"ali_KEnCen", {-1}},
        {"CDlinstd", {1}},
        {"CDlincros", {1}},
        {"CDpoiinseg", {0, 1, 2, -1}},
        {"CDpoionls", {0, 1, 2, -1}},
        {"CDsegcros", {0, 1, 11, 12, 21, 22, -1}},
        {"CDreverA", {0, 1}},
        {"CDvalidArc", {0, -1}},
        {"CDAcrosS", {-1, -2}},
        {"CDOODistForRAR", {-1}},
        {"CDsetAToRAR", {1, -1}},
        {"ali_mak", {-1, 2}},
        {"ali_makS", {-1}},
        {"ali_makR", {-1}},
        {"ali_makA", {-1, 2}},
        {"ali_makangS", {-1}},
        {"ali_makangR", {-1}},
        {"ali_makangA", {-1}},
        {"ali_onl", {-1}},
        {"ali_onlS", {-1}},
        {"ali_onlR", {-1}},
        {"ali_onlA", {-1}},
        {"ali_oflS", {-1}},
        {"ali_oflR", {-1}},
        {"ali_oflA", {-1}},
        {"ali_proj", {-1}},
        {"ali_projS", {-1}},
        {"ali_projR", {-1}},
        {"ali_projA", {-1}},
        {"ali_getl", {-1, 1}},
        {"ali_getlS", {-1}},
        {"ali_getlR", {-1, 1}},
        {"chk_ang", {0, 1, -1, 2}},
        {"Calc_moni", {1}},
        {"get_moniDist", {1, -1}},
        {"CDsameA", {0, -1, -2}},
        {"jointCheck", {0, -1}},
        {"ali_pmov", {-1}},
        {"ali_tmov", {-1}},
        {"many_ali_pmov", {1}},
        {"many_ali_tmov", {1}},
        {"ali_intp", {0, 1, -1, -2, -3}},
        {"ali_intpSS", {0, 1, 2, 3, -1, -2, -3}},
        {"ali_intpSR", {0, 1, 2, -1, -2}},
        {"ali_intpRR", {0, 1, 2, -1, -2, -3}},
        {"ali_intpRA", {0, 1, 2, -1}},
        {"ali_intpSA", {0, 1, 2, -1}},
        {"ali_intpAA", {0, 1, 2, -1}},
    };
    for (const auto& [function, statuses] : announced) {
        std::vector<std::string> described;
        for (const int status : statuses) {
            const std::string text = ali_statusText(function, status);
            EXPECT_NE(text, ali_statusText(nullptr, status)) << function << " " << status;
            for (const std::string& other : described) {
                EXPECT_NE(text, other) << function << " " << status;
            }
            described.push_back(text);
        }
    }
}
