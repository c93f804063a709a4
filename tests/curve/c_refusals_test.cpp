// What every function of the C interface refuses: pointers that are missing, values that are no numbers, places outside.
#include "fenmark/curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace fenmark::curve_refusals {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kHalfPi = 1.57079632679489661923;

using ChainPtr = std::unique_ptr<FmkChain, decltype(&fmk_chainFree)>;
using ProfilePtr = std::unique_ptr<FmkProfile, decltype(&fmk_profileFree)>;
using CrossfallPtr = std::unique_ptr<FmkCrossfall, decltype(&fmk_crossfallFree)>;

// A straight of 100 m towards north, then a quarter of a circle of 100 m radius to the right.
const FmkCurve kRoad[2] = {{{{0.0, 0.0}, 0.0}, 100.0, 0.0, 0.0}, {{{100.0, 0.0}, 0.0}, 100.0 * kHalfPi, 0.01, 0.01}};

ChainPtr chainOf(const FmkCurve* curves, std::size_t count, double start = 0.0) {
    FmkChain* made = nullptr;
    EXPECT_EQ(fmk_chainFromCurves(curves, count, start, nullptr, 0, &made), FMK_OK);
    return {made, fmk_chainFree};
}

ProfilePtr slope() {
    const FmkVerticalPoint points[2] = {{0.0, 10.0, 0.0, 0.0, FMK_VERTICAL_NONE},
                                        {200.0, 14.0, 0.0, 0.0, FMK_VERTICAL_NONE}};
    FmkProfile* made = nullptr;
    EXPECT_EQ(fmk_profileMake(points, 2, &made), FMK_OK);
    return {made, fmk_profileFree};
}

CrossfallPtr roof() {
    const FmkCrossfallStation stations[2] = {{0.0, -0.02, -0.02}, {200.0, -0.02, 0.04}};
    FmkCrossfall* made = nullptr;
    EXPECT_EQ(fmk_crossfallMake(stations, 2, &made), FMK_OK);
    return {made, fmk_crossfallFree};
}

} // namespace

TEST(CRefusals, EveryMissingPointerIsSaidToBeMissing) {
    const FmkCurve* const curve = &kRoad[1];
    const FmkPoint point{1.0, 1.0};
    const FmkPose pose{{0.0, 0.0}, 0.0};
    const FmkIp ip{{50.0, 0.0}, 10.0, 0.0, 0.0};
    const double numbers[1] = {1.0};
    const ChainPtr road = chainOf(kRoad, 2);
    const FmkChain* const chain = road.get();
    const ProfilePtr profile = slope();
    const CrossfallPtr crossfall = roof();
    const FmkStakeOptions stakes{20.0, nullptr, 0, nullptr, 0, 1};
    const FmkStakeOptions lostStations{20.0, nullptr, 1, nullptr, 0, 1};
    const FmkStakeOptions lostOffsets{20.0, nullptr, 0, nullptr, 1, 1};
    const FmkVerticalPoint vertical{};
    const FmkCrossfallStation falls{};
    const FmkStationEquation equation{10.0, 20.0};
    const Calelm record{};
    FmkPose poseOut{};
    FmkCurve out[3] = {};
    FmkPoint points[2] = {};
    FmkFoot foot{};
    FmkCrossing crossing{};
    FmkIpCurve ipCurve{};
    FmkBox box{};
    FmkChainPlace place{};
    FmkChainFoot chainFoot{};
    FmkChainJoint joint{};
    FmkChainCrossing chainCrossing{};
    FmkStake stake{};
    FmkSpacePoint space{};
    FmkProfileExtreme extreme{};
    FmkChain* made = nullptr;
    FmkProfile* madeProfile = nullptr;
    FmkCrossfall* madeCrossfall = nullptr;
    double number = 0.0;
    double second = 0.0;
    std::size_t count = 77;
    const std::vector<std::pair<const char*, int>> refused = {
        {"curvePose", fmk_curvePose(nullptr, 1.0, &poseOut)},
        {"curvePose", fmk_curvePose(curve, 1.0, nullptr)},
        {"curvePoses", fmk_curvePoses(nullptr, numbers, 1, &poseOut)},
        {"curvePoses", fmk_curvePoses(curve, nullptr, 1, &poseOut)},
        {"curvePoses", fmk_curvePoses(curve, numbers, 1, nullptr)},
        {"curveCurvature", fmk_curveCurvature(nullptr, 1.0, &number)},
        {"curveCurvature", fmk_curveCurvature(curve, 1.0, nullptr)},
        {"curveParallelPose", fmk_curveParallelPose(nullptr, 1.0, 1.0, &poseOut)},
        {"curveParallelPose", fmk_curveParallelPose(curve, 1.0, 1.0, nullptr)},
        {"wrapAzimuth", fmk_wrapAzimuth(1.0, nullptr)},
        {"curvePart", fmk_curvePart(nullptr, 1.0, 2.0, out)},
        {"curvePart", fmk_curvePart(curve, 1.0, 2.0, nullptr)},
        {"curveSplit", fmk_curveSplit(nullptr, 1.0, out, out + 1)},
        {"curveSplit", fmk_curveSplit(curve, 1.0, nullptr, out)},
        {"curveSplit", fmk_curveSplit(curve, 1.0, out, nullptr)},
        {"curveReversed", fmk_curveReversed(nullptr, out)},
        {"curveReversed", fmk_curveReversed(curve, nullptr)},
        {"curveMirroredAboutChord", fmk_curveMirroredAboutChord(nullptr, out)},
        {"curveMirroredAboutChord", fmk_curveMirroredAboutChord(curve, nullptr)},
        {"curveMirroredAboutAxis", fmk_curveMirroredAboutAxis(nullptr, &pose, out)},
        {"curveMirroredAboutAxis", fmk_curveMirroredAboutAxis(curve, nullptr, out)},
        {"curveMirroredAboutAxis", fmk_curveMirroredAboutAxis(curve, &pose, nullptr)},
        {"curveMoved", fmk_curveMoved(nullptr, &point, 1.0, &point, out)},
        {"curveMoved", fmk_curveMoved(curve, nullptr, 1.0, &point, out)},
        {"curveMoved", fmk_curveMoved(curve, &point, 1.0, nullptr, out)},
        {"curveMoved", fmk_curveMoved(curve, &point, 1.0, &point, nullptr)},
        {"curveParallel", fmk_curveParallel(nullptr, 1.0, out)},
        {"curveParallel", fmk_curveParallel(curve, 1.0, nullptr)},
        {"curveBox", fmk_curveBox(nullptr, &box)},
        {"curveBox", fmk_curveBox(curve, nullptr)},
        {"curveLine", fmk_curveLine(nullptr, 0.1, 0.0, points, nullptr, 2, &count, nullptr)},
        {"curveLine", fmk_curveLine(curve, 0.1, 0.0, nullptr, nullptr, 2, &count, nullptr)},
        {"curveLine", fmk_curveLine(curve, 0.1, 0.0, points, nullptr, 2, nullptr, nullptr)},
        {"curveNearest", fmk_curveNearest(nullptr, &point, &foot)},
        {"curveNearest", fmk_curveNearest(curve, nullptr, &foot)},
        {"curveNearest", fmk_curveNearest(curve, &point, nullptr)},
        {"curveFeet", fmk_curveFeet(nullptr, &point, &foot, 1, &count)},
        {"curveFeet", fmk_curveFeet(curve, nullptr, &foot, 1, &count)},
        {"curveFeet", fmk_curveFeet(curve, &point, nullptr, 1, &count)},
        {"curveFeet", fmk_curveFeet(curve, &point, &foot, 1, nullptr)},
        {"curveCrossings", fmk_curveCrossings(nullptr, curve, 1e-9, &crossing, 1, &count, nullptr)},
        {"curveCrossings", fmk_curveCrossings(curve, nullptr, 1e-9, &crossing, 1, &count, nullptr)},
        {"curveCrossings", fmk_curveCrossings(curve, curve, 1e-9, nullptr, 1, &count, nullptr)},
        {"curveCrossings", fmk_curveCrossings(curve, curve, 1e-9, &crossing, 1, nullptr, nullptr)},
        {"fitG1", fmk_fitG1(nullptr, &pose, out)},
        {"fitG1", fmk_fitG1(&pose, nullptr, out)},
        {"fitG1", fmk_fitG1(&pose, &pose, nullptr)},
        {"fitG2", fmk_fitG2(nullptr, 0.0, &pose, 0.0, out)},
        {"fitG2", fmk_fitG2(&pose, 0.0, nullptr, 0.0, out)},
        {"fitG2", fmk_fitG2(&pose, 0.0, &pose, 0.0, nullptr)},
        {"curveAtIp", fmk_curveAtIp(nullptr, &ip, &point, &ipCurve)},
        {"curveAtIp", fmk_curveAtIp(&point, nullptr, &point, &ipCurve)},
        {"curveAtIp", fmk_curveAtIp(&point, &ip, nullptr, &ipCurve)},
        {"curveAtIp", fmk_curveAtIp(&point, &ip, &point, nullptr)},
        {"curvesByIps", fmk_curvesByIps(nullptr, 1, &ipCurve, out, 3, &count)},
        {"curvesByIps", fmk_curvesByIps(&ip, 1, &ipCurve, nullptr, 3, &count)},
        {"curvesByIps", fmk_curvesByIps(&ip, 1, &ipCurve, out, 3, nullptr)},
        {"curveThrough", fmk_curveThrough(nullptr, &point, &point, &point, 0.0, 0.0, &ipCurve)},
        {"curveThrough", fmk_curveThrough(&point, nullptr, &point, &point, 0.0, 0.0, &ipCurve)},
        {"curveThrough", fmk_curveThrough(&point, &point, nullptr, &point, 0.0, 0.0, &ipCurve)},
        {"curveThrough", fmk_curveThrough(&point, &point, &point, nullptr, 0.0, 0.0, &ipCurve)},
        {"curveThrough", fmk_curveThrough(&point, &point, &point, &point, 0.0, 0.0, nullptr)},
        {"chainFromCurves", fmk_chainFromCurves(nullptr, 1, 0.0, nullptr, 0, &made)},
        {"chainFromCurves", fmk_chainFromCurves(kRoad, 2, 0.0, nullptr, 0, nullptr)},
        {"chainFromCurves", fmk_chainFromCurves(kRoad, 2, 0.0, nullptr, 1, &made)},
        {"chainFromRecords", fmk_chainFromRecords(nullptr, 1, 0.0, nullptr, 0, &made)},
        {"chainFromRecords", fmk_chainFromRecords(&record, 1, 0.0, nullptr, 0, nullptr)},
        {"chainFromIps", fmk_chainFromIps(nullptr, 1, 0.0, &equation, 1, &made)},
        {"chainFromIps", fmk_chainFromIps(&ip, 1, 0.0, &equation, 1, nullptr)},
        {"chainReversed", fmk_chainReversed(nullptr, 0.0, &made)},
        {"chainReversed", fmk_chainReversed(chain, 0.0, nullptr)},
        {"chainSize", fmk_chainSize(nullptr, &number, &count)},
        {"chainCurve", fmk_chainCurve(nullptr, 0, out, &number)},
        {"chainCurve", fmk_chainCurve(chain, 0, nullptr, &number)},
        {"chainStation", fmk_chainStation(nullptr, 1.0, &number, &count)},
        {"chainStation", fmk_chainStation(chain, 1.0, nullptr, &count)},
        {"chainDistances", fmk_chainDistances(nullptr, 1.0, &number, 1, &count)},
        {"chainDistances", fmk_chainDistances(chain, 1.0, nullptr, 1, &count)},
        {"chainDistances", fmk_chainDistances(chain, 1.0, &number, 1, nullptr)},
        {"chainAtStation", fmk_chainAtStation(nullptr, 1.0, 0.0, &place)},
        {"chainAtStation", fmk_chainAtStation(chain, 1.0, 0.0, nullptr)},
        {"chainAtDistance", fmk_chainAtDistance(nullptr, 1.0, 0.0, &place)},
        {"chainAtDistance", fmk_chainAtDistance(chain, 1.0, 0.0, nullptr)},
        {"chainPoints", fmk_chainPoints(nullptr, numbers, 1, nullptr, 0, points)},
        {"chainPoints", fmk_chainPoints(chain, nullptr, 1, nullptr, 0, points)},
        {"chainPoints", fmk_chainPoints(chain, numbers, 1, nullptr, 0, nullptr)},
        {"chainPoints", fmk_chainPoints(chain, numbers, 1, nullptr, 1, points)},
        {"chainPlaces", fmk_chainPlaces(nullptr, numbers, 1, nullptr, 0, &place)},
        {"chainPlaces", fmk_chainPlaces(chain, nullptr, 1, nullptr, 0, &place)},
        {"chainPlaces", fmk_chainPlaces(chain, numbers, 1, nullptr, 0, nullptr)},
        {"chainPlaces", fmk_chainPlaces(chain, numbers, 1, nullptr, 1, &place)},
        {"chainLocate", fmk_chainLocate(nullptr, &point, &chainFoot)},
        {"chainLocate", fmk_chainLocate(chain, nullptr, &chainFoot)},
        {"chainLocate", fmk_chainLocate(chain, &point, nullptr)},
        {"chainLocateAll", fmk_chainLocateAll(nullptr, &point, 1, &chainFoot)},
        {"chainLocateAll", fmk_chainLocateAll(chain, nullptr, 1, &chainFoot)},
        {"chainLocateAll", fmk_chainLocateAll(chain, &point, 1, nullptr)},
        {"chainFeet", fmk_chainFeet(nullptr, &point, &chainFoot, 1, &count)},
        {"chainFeet", fmk_chainFeet(chain, nullptr, &chainFoot, 1, &count)},
        {"chainFeet", fmk_chainFeet(chain, &point, nullptr, 1, &count)},
        {"chainFeet", fmk_chainFeet(chain, &point, &chainFoot, 1, nullptr)},
        {"chainJoints", fmk_chainJoints(nullptr, &joint, 1, &count)},
        {"chainJoints", fmk_chainJoints(chain, nullptr, 1, &count)},
        {"chainJoints", fmk_chainJoints(chain, &joint, 1, nullptr)},
        {"chainBox", fmk_chainBox(nullptr, &box)},
        {"chainBox", fmk_chainBox(chain, nullptr)},
        {"chainLine", fmk_chainLine(nullptr, 0.1, points, 2, &count, nullptr)},
        {"chainLine", fmk_chainLine(chain, 0.1, nullptr, 2, &count, nullptr)},
        {"chainLine", fmk_chainLine(chain, 0.1, points, 2, nullptr, nullptr)},
        {"chainCrossings", fmk_chainCrossings(nullptr, chain, &chainCrossing, 1, &count)},
        {"chainCrossings", fmk_chainCrossings(chain, nullptr, &chainCrossing, 1, &count)},
        {"chainCrossings", fmk_chainCrossings(chain, chain, nullptr, 1, &count)},
        {"chainCrossings", fmk_chainCrossings(chain, chain, &chainCrossing, 1, nullptr)},
        {"chainStakes", fmk_chainStakes(nullptr, &stakes, &stake, 1, &count)},
        {"chainStakes", fmk_chainStakes(chain, nullptr, &stake, 1, &count)},
        {"chainStakes", fmk_chainStakes(chain, &stakes, nullptr, 1, &count)},
        {"chainStakes", fmk_chainStakes(chain, &stakes, &stake, 1, nullptr)},
        {"chainStakes", fmk_chainStakes(chain, &lostStations, &stake, 1, &count)},
        {"chainStakes", fmk_chainStakes(chain, &lostOffsets, &stake, 1, &count)},
        {"profileMake", fmk_profileMake(nullptr, 1, &madeProfile)},
        {"profileMake", fmk_profileMake(&vertical, 1, nullptr)},
        {"profileAt", fmk_profileAt(nullptr, 1.0, &number, nullptr, nullptr)},
        {"profileHeights", fmk_profileHeights(nullptr, numbers, 1, &number)},
        {"profileHeights", fmk_profileHeights(profile.get(), nullptr, 1, &number)},
        {"profileHeights", fmk_profileHeights(profile.get(), numbers, 1, nullptr)},
        {"profileExtremes", fmk_profileExtremes(nullptr, &extreme, 1, &count)},
        {"profileExtremes", fmk_profileExtremes(profile.get(), nullptr, 1, &count)},
        {"profileExtremes", fmk_profileExtremes(profile.get(), &extreme, 1, nullptr)},
        {"crossfallMake", fmk_crossfallMake(nullptr, 1, &madeCrossfall)},
        {"crossfallMake", fmk_crossfallMake(&falls, 1, nullptr)},
        {"crossfallAt", fmk_crossfallAt(nullptr, 1.0, &number, &second)},
        {"crossfallAt", fmk_crossfallAt(crossfall.get(), 1.0, nullptr, &second)},
        {"crossfallAt", fmk_crossfallAt(crossfall.get(), 1.0, &number, nullptr)},
        {"chainSpacePoints", fmk_chainSpacePoints(nullptr, profile.get(), nullptr, numbers, 1, nullptr, 0, &space)},
        {"chainSpacePoints", fmk_chainSpacePoints(chain, nullptr, nullptr, numbers, 1, nullptr, 0, &space)},
        {"chainSpacePoints", fmk_chainSpacePoints(chain, profile.get(), nullptr, nullptr, 1, nullptr, 0, &space)},
        {"chainSpacePoints", fmk_chainSpacePoints(chain, profile.get(), nullptr, numbers, 1, nullptr, 0, nullptr)},
        {"chainSpacePoints", fmk_chainSpacePoints(chain, profile.get(), nullptr, numbers, 1, nullptr, 1, &space)},
    };
    for (std::size_t i = 0; i < refused.size(); ++i) {
        EXPECT_EQ(refused[i].second, FMK_NO_POINTER) << refused[i].first << ", line " << i;
    }
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(madeProfile, nullptr);
    EXPECT_EQ(madeCrossfall, nullptr);
    EXPECT_EQ(count, 77U) << "nothing is written";
}

TEST(CRefusals, ValuesThatAreNoNumbers) {
    const FmkCurve* const curve = &kRoad[1];
    const FmkPoint point{1.0, 1.0};
    const FmkPoint noPoint{kNan, 1.0};
    const FmkPose pose{{0.0, 0.0}, 0.0};
    const FmkPose noPose{{0.0, 0.0}, kNan};
    const FmkIp ips[3] = {{{0.0, 0.0}, 0.0, 0.0, 0.0}, {{100.0, 0.0}, 50.0, 0.0, 0.0}, {{kNan, 100.0}, 0.0, 0.0, 0.0}};
    const double noNumbers[1] = {kNan};
    const ChainPtr road = chainOf(kRoad, 2);
    const FmkChain* const chain = road.get();
    const ProfilePtr profile = slope();
    const CrossfallPtr crossfall = roof();
    Calelm record{};
    record.type = 1;
    record.ex = kNan;
    FmkPose poseOut{};
    FmkCurve out[12] = {};
    FmkPoint points[2] = {};
    FmkFoot foot{};
    FmkCrossing crossing{};
    FmkChainPlace place{};
    FmkChainFoot chainFoot{};
    FmkIpCurve ipCurves[3] = {};
    FmkChain* made = nullptr;
    double number = 0.0;
    double second = 0.0;
    std::size_t count = 0;
    const std::vector<std::pair<const char*, int>> refused = {
        {"curvePoses", fmk_curvePoses(curve, noNumbers, 1, &poseOut)},
        {"curveCurvature", fmk_curveCurvature(curve, kNan, &number)},
        {"curveParallelPose", fmk_curveParallelPose(curve, 1.0, kNan, &poseOut)},
        {"wrapAzimuth", fmk_wrapAzimuth(kNan, &number)},
        {"curvePart", fmk_curvePart(curve, kNan, 2.0, out)},
        {"curveSplit", fmk_curveSplit(curve, kNan, out, out + 1)},
        {"curveMirroredAboutAxis", fmk_curveMirroredAboutAxis(curve, &noPose, out)},
        {"curveMoved", fmk_curveMoved(curve, &noPoint, 1.0, &point, out)},
        {"curveParallel", fmk_curveParallel(curve, kNan, out)},
        {"curveLine", fmk_curveLine(curve, kNan, 0.0, points, nullptr, 2, &count, nullptr)},
        {"curveNearest", fmk_curveNearest(curve, &noPoint, &foot)},
        {"curveFeet", fmk_curveFeet(curve, &noPoint, &foot, 1, &count)},
        {"curveCrossings", fmk_curveCrossings(curve, curve, kNan, &crossing, 1, &count, nullptr)},
        {"fitG1", fmk_fitG1(&pose, &noPose, out)},
        {"fitG2", fmk_fitG2(&pose, kNan, &pose, 0.0, out)},
        {"curvesByIps", fmk_curvesByIps(ips, 3, ipCurves, out, 12, &count)},
        {"chainFromCurves", fmk_chainFromCurves(kRoad, 2, kNan, nullptr, 0, &made)},
        {"chainFromRecords", fmk_chainFromRecords(&record, 1, 0.0, nullptr, 0, &made)},
        {"chainFromIps", fmk_chainFromIps(ips, 3, 0.0, nullptr, 0, &made)},
        {"chainReversed", fmk_chainReversed(chain, kNan, &made)},
        {"chainStation", fmk_chainStation(chain, kNan, &number, nullptr)},
        {"chainDistances", fmk_chainDistances(chain, kNan, &number, 1, &count)},
        {"chainAtStation", fmk_chainAtStation(chain, 1.0, kNan, &place)},
        {"chainAtDistance", fmk_chainAtDistance(chain, kNan, 0.0, &place)},
        {"chainLocate", fmk_chainLocate(chain, &noPoint, &chainFoot)},
        {"chainLocateAll", fmk_chainLocateAll(chain, &noPoint, 1, &chainFoot)},
        {"chainFeet", fmk_chainFeet(chain, &noPoint, &chainFoot, 1, &count)},
        {"chainLine", fmk_chainLine(chain, kNan, points, 2, &count, nullptr)},
        {"profileAt", fmk_profileAt(profile.get(), kNan, &number, nullptr, nullptr)},
        {"crossfallAt", fmk_crossfallAt(crossfall.get(), kNan, &number, &second)},
    };
    for (const auto& [name, status] : refused) {
        EXPECT_EQ(status, FMK_NOT_FINITE) << name;
    }
    EXPECT_EQ(made, nullptr);
}

TEST(CRefusals, AnAlignmentNeedsFiniteEndsBoth) {
    for (const std::size_t bad : {0U, 2U}) {
        FmkIp points[3] = {{{0.0, 0.0}, 0.0, 0.0, 0.0}, {{100.0, 0.0}, 30.0, 0.0, 0.0}, {{150.0, 80.0}, 0.0, 0.0, 0.0}};
        points[bad].point.y = kNan;
        FmkCurve curves[8] = {};
        std::size_t written = 77;
        EXPECT_EQ(fmk_curvesByIps(points, 3, nullptr, curves, 8, &written), FMK_NOT_FINITE) << bad;
        points[1] = {{100.0, bad == 2 ? kNan : 0.0}, 0.0, 0.0, 0.0};
        EXPECT_EQ(fmk_curvesByIps(points, 2, nullptr, curves, 8, &written), FMK_NOT_FINITE) << "without any between";
        EXPECT_EQ(written, 77u);
    }
}

TEST(CRefusals, SizesThatNoCurveHas) {
    const FmkCurve* const curve = &kRoad[1];
    const FmkPose pose{{0.0, 0.0}, 0.0};
    const FmkIp one{{0.0, 0.0}, 0.0, 0.0, 0.0};
    const ChainPtr road = chainOf(kRoad, 2);
    const FmkVerticalPoint form{0.0, 0.0, 0.0, 0.0, 3};
    FmkCurve out[3] = {};
    FmkPoint points[2] = {};
    FmkIpCurve ipCurve{};
    FmkProfile* profile = nullptr;
    std::size_t count = 0;
    EXPECT_EQ(fmk_curvePart(curve, 2.0, 1.0, out), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_curvePart(curve, -1.0, 1.0, out), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_curveSplit(curve, 1e3, out, out + 1), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_curveLine(curve, 0.1, 0.0, points, nullptr, 1, &count, nullptr), FMK_BAD_VALUE) << "room for one end";
    EXPECT_EQ(fmk_fitG2(&pose, 0.0, &pose, 0.0, out), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_curvesByIps(&one, 1, &ipCurve, out, 3, &count), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_chainLine(road.get(), 0.0, points, 2, &count, nullptr), FMK_BAD_VALUE);
    EXPECT_EQ(fmk_profileMake(&form, 1, &profile), FMK_BAD_VALUE);
    EXPECT_EQ(profile, nullptr);
    EXPECT_EQ(fmk_curvePoses(curve, nullptr, 0, nullptr), FMK_OK) << "of none";

    const FmkIp three[3] = {
        {{0.0, 0.0}, 0.0, 0.0, 0.0}, {{100.0, 0.0}, 50.0, 0.0, 0.0}, {{100.0, 100.0}, 0.0, 0.0, 0.0}};
    EXPECT_EQ(fmk_curvesByIps(three, 3, nullptr, out, 2, &count), FMK_BAD_VALUE) << "room for two of three curves";
    EXPECT_EQ(fmk_curvesByIps(three, 3, nullptr, out, 3, &count), FMK_OK);
    EXPECT_EQ(count, 3U);
}

TEST(CRefusals, WhatIsTooLargeForANumber) {
    FmkCurve far = kRoad[1];
    far.start.point.y = 1e308;
    const FmkCurve sharp{{{0.0, 0.0}, 0.0}, 1.0, 1e307, -1e307};
    const FmkPoint beyond{1.7e308, 1.7e308};
    const FmkPose here{{-1e308, 0.0}, 0.0};
    const FmkPose there{{1e308, 0.0}, 0.0};
    FmkCurve out[3] = {};
    FmkFoot foot{};
    FmkPose pose{};
    FmkBox box{};
    double number = 0.0;
    EXPECT_EQ(fmk_curveCurvature(&sharp, 100.0, &number), FMK_TOO_LARGE);
    EXPECT_EQ(fmk_curveParallelPose(&far, 1.0, 1e308, &pose), FMK_TOO_LARGE);
    EXPECT_EQ(fmk_curveNearest(&kRoad[0], &beyond, &foot), FMK_TOO_LARGE);
    EXPECT_EQ(fmk_fitG1(&here, &there, out), FMK_TOO_LARGE);
    const FmkPoint west{0.0, -100.0};
    const FmkPoint back{50.0, -100.0};
    const FmkIp corner{{0.0, 0.0}, 1e308, 0.0, 0.0};
    FmkIpCurve laid{};
    laid.enterTangent = laid.leaveTangent = 7.0;
    EXPECT_EQ(fmk_curveAtIp(&west, &corner, &back, &laid), FMK_NO_SOLUTION);
    EXPECT_EQ(laid.enterTangent, 0.0) << "no number holds it";
    EXPECT_EQ(laid.leaveTangent, 0.0);
    EXPECT_EQ(fmk_curveBox(&far, &box), FMK_OK);
    EXPECT_EQ(box.maxY, 1e308);

    const FmkVerticalPoint steep[2] = {{0.0, 0.0, 0.0, 0.0, FMK_VERTICAL_NONE},
                                       {1e-300, 1e300, 0.0, 0.0, FMK_VERTICAL_NONE}};
    FmkProfile* profile = nullptr;
    EXPECT_NE(fmk_profileMake(steep, 2, &profile), FMK_OK);
    EXPECT_EQ(profile, nullptr);
}

TEST(CRefusals, PlacesOutside) {
    const ChainPtr road = chainOf(kRoad, 2, 1000.0);
    const FmkChain* const chain = road.get();
    const ChainPtr none = chainOf(nullptr, 0);
    const ProfilePtr profile = slope();
    const CrossfallPtr crossfall = roof();
    const FmkPoint point{50.0, 5.0};
    FmkCurve curve{};
    FmkChainPlace places[2] = {};
    FmkPoint points[2] = {};
    FmkChainFoot foot{};
    FmkBox box{};
    double number = 0.0;
    double second = 0.0;
    std::size_t count = 0;
    EXPECT_EQ(fmk_chainCurve(chain, 2, &curve, nullptr), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainStation(chain, 300.0, &number, nullptr), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainStation(chain, -1.0, &number, nullptr), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainDistances(chain, 10.0, &number, 1, &count), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainAtStation(chain, 10.0, 0.0, places), FMK_OUTSIDE);
    EXPECT_EQ(fmk_chainAtDistance(chain, 1e4, 0.0, places), FMK_OUTSIDE);
    const double distances[2] = {10.0, 1e4};
    EXPECT_EQ(fmk_chainPoints(chain, distances, 2, nullptr, 0, points), FMK_OUTSIDE);
    EXPECT_NEAR(points[0].x, 10.0, 1e-12) << "those on the chain are given all the same";
    EXPECT_TRUE(std::isnan(points[1].x));
    EXPECT_EQ(fmk_chainPlaces(chain, distances, 2, nullptr, 0, places), FMK_OUTSIDE);
    EXPECT_NEAR(places[0].point.x, 10.0, 1e-12);
    EXPECT_EQ(fmk_chainLocate(none.get(), &point, &foot), FMK_EMPTY);
    EXPECT_EQ(fmk_chainLocateAll(none.get(), &point, 1, &foot), FMK_EMPTY);
    EXPECT_EQ(fmk_chainBox(none.get(), &box), FMK_EMPTY);
    EXPECT_EQ(fmk_profileAt(profile.get(), 500.0, &number, nullptr, nullptr), FMK_OUTSIDE);
    EXPECT_EQ(fmk_profileHeights(profile.get(), &distances[1], 1, &number), FMK_OUTSIDE);
    EXPECT_EQ(fmk_crossfallAt(crossfall.get(), 500.0, &number, &second), FMK_OUTSIDE);
}

// What is asked for in arrays is what is asked for one by one; and the curves of a chain come back.
TEST(CInterface, PlacesOfAChainInArrays) {
    const ChainPtr road = chainOf(kRoad, 2, 1000.0);
    const double distances[3] = {0.0, 60.0, 150.0};
    const double offsets[3] = {0.0, -2.0, 3.5};
    FmkChainPlace all[3] = {};
    ASSERT_EQ(fmk_chainPlaces(road.get(), distances, 3, offsets, 3, all), FMK_OK);
    for (std::size_t i = 0; i < 3; ++i) {
        FmkChainPlace one{};
        ASSERT_EQ(fmk_chainAtDistance(road.get(), distances[i], offsets[i], &one), FMK_OK);
        EXPECT_EQ(std::memcmp(&one, &all[i], sizeof one), 0) << i;
    }
    EXPECT_EQ(all[1].point.y, -2.0);
    EXPECT_EQ(all[2].curve, 1U);
    EXPECT_EQ(all[2].curvature, 0.01);
    ASSERT_EQ(fmk_chainPlaces(road.get(), distances, 3, offsets + 1, 1, all), FMK_OK);
    EXPECT_EQ(all[0].point.y, -2.0) << "one offset counts for all";

    FmkCurve curve{};
    double distance = 0.0;
    ASSERT_EQ(fmk_chainCurve(road.get(), 1, &curve, &distance), FMK_OK);
    EXPECT_EQ(std::memcmp(&curve, &kRoad[1], sizeof curve), 0);
    EXPECT_EQ(distance, 100.0);
    double height = 0.0;
    double grade = 0.0;
    double curvature = 1.0;
    const ProfilePtr profile = slope();
    ASSERT_EQ(fmk_profileAt(profile.get(), 50.0, &height, &grade, &curvature), FMK_OK);
    EXPECT_NEAR(height, 11.0, 1e-12);
    EXPECT_NEAR(grade, 0.02, 1e-15);
    EXPECT_EQ(curvature, 0.0);
}

// Each status has a text of its own.
TEST(CInterface, StatusesHaveTextsOfTheirOwn) {
    std::set<std::string> texts;
    const std::vector<int> statuses = {
        FMK_OK,        FMK_COARSER,      FMK_INCOMPLETE,     FMK_NO_POINTER,    FMK_NOT_FINITE, FMK_BAD_VALUE,
        FMK_TOO_LARGE, FMK_NO_SOLUTION,  FMK_NO_TURN,        FMK_TOO_SHORT,     FMK_OVERLAP,    FMK_EMPTY,
        FMK_OUTSIDE,   FMK_OUT_OF_ORDER, FMK_NOT_AN_ELEMENT, FMK_OUT_OF_MEMORY, FMK_TOO_MANY};
    for (const int status : statuses) {
        EXPECT_STRNE(fmk_statusText(status), "unknown status") << status;
        EXPECT_TRUE(texts.insert(fmk_statusText(status)).second) << status << ": " << fmk_statusText(status);
    }
}

} // namespace fenmark::curve_refusals
