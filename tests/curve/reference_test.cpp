// Poses against the reference values that were integrated with 50 digits.
#include "support_curve.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <vector>

namespace fenmark::curve_test {

namespace {

struct Case {
    std::string name;
    Curve curve;
    double along = 0.0;
    long double x = 0.0L;
    long double y = 0.0L;
    long double azimuth = 0.0L;
    double tolerance = 0.0;
};

std::vector<Case> readCases() {
    std::ifstream file(FENMARK_SOURCE_DIR "/tests/curve/reference/poses.txt");
    std::vector<Case> cases;
    std::string line;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::replace(line.begin(), line.end(), '|', ' ');
        std::istringstream text(line);
        Case found;
        Curve& c = found.curve;
        text >> found.name >> c.start.point.x >> c.start.point.y >> c.start.azimuth >> c.length >> c.startCurvature >>
            c.endCurvature >> found.along >> found.x >> found.y >> found.azimuth >> found.tolerance;
        EXPECT_TRUE(text) << line;
        cases.push_back(found);
    }
    return cases;
}

} // namespace

TEST(Reference, PosesAreThoseIntegratedWithFiftyDigits) {
    const std::vector<Case> cases = readCases();
    ASSERT_GT(cases.size(), 100u);
    double worst = 0.0;
    for (const Case& c : cases) {
        const PreparedCurve prepared(c.curve);
        for (const Pose& pose : {poseAt(c.curve, c.along), prepared.poseAt(c.along)}) {
            const double dx = static_cast<double>(static_cast<long double>(pose.point.x) - c.x);
            const double dy = static_cast<double>(static_cast<long double>(pose.point.y) - c.y);
            EXPECT_LE(std::hypot(dx, dy), c.tolerance) << c.name;
            EXPECT_LE(std::abs(static_cast<double>(static_cast<long double>(pose.azimuth) - c.azimuth)),
                      4e-16 * (4.0 + turnOf(c.curve)))
                << c.name;
            if (std::abs(c.curve.start.point.x) < 1.0) {
                worst = std::max(worst, std::hypot(dx, dy) / c.curve.length);
            }
        }
        const Frame frame = prepared.frameAt(c.along);
        EXPECT_NEAR(frame.tangent.x, std::cos(static_cast<double>(c.azimuth)), 1e-15 * (2.0 + turnOf(c.curve)))
            << c.name;
        EXPECT_NEAR(frame.tangent.y, std::sin(static_cast<double>(c.azimuth)), 1e-15 * (2.0 + turnOf(c.curve)))
            << c.name;
    }
    std::ostringstream text;
    text << worst;
    RecordProperty("worst_share_of_length", text.str());
}

TEST(Reference, PointsGoOnSmoothlyOverEachSwitch) {
    // Two neighbouring doubles on either side of a switch between formulas lie as near as the curve's slope has it.
    for (const double k : {4.0, 8.0, 0.25, 0.5, 0.1, 16.0}) {
        for (const double other : {0.0, -4.0, 4.0, 0.102, 0.26}) {
            const Curve base{{{0.0, 0.0}, 0.0}, 1.0, other, k};
            Curve next = base;
            next.endCurvature = std::nextafter(k, 100.0);
            Curve before = base;
            before.endCurvature = std::nextafter(k, 0.0);
            EXPECT_LE(distance(endPose(base).point, endPose(next).point), 2e-15 * (1.0 + k)) << k << " " << other;
            EXPECT_LE(distance(endPose(base).point, endPose(before).point), 2e-15 * (1.0 + k)) << k << " " << other;
        }
    }
}

} // namespace fenmark::curve_test
