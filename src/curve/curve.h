// One curve of linear curvature: straight, circular arc or clothoid, exact at every length.
//
// Plane: the survey plane, x north and y east, metres. Azimuths are radians clockwise from north and run on through full
// circles: they are never wrapped. Curvatures are 1/m, positive where the curve turns to the right, and change evenly
// from start to end. Nothing is rounded. Every function takes a usable curve (isUsable) and finite values, and then
// returns finite values; the C interface checks this, these functions do not.
//
// Accuracy: positions are good to 1e-13 of the length. Work never depends on the values of the numbers.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace fenmark::curve {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kTwoPi = 6.28318530717958647693;

struct Point {
    double x = 0.0; // north
    double y = 0.0; // east

    bool operator==(const Point&) const = default;
};

struct Pose {
    Point point;
    double azimuth = 0.0;

    bool operator==(const Pose&) const = default;
};

struct Curve {
    Pose start;
    double length = 0.0; // metres, not negative
    double startCurvature = 0.0;
    double endCurvature = 0.0;

    bool operator==(const Curve&) const = default;
};

// A point of a curve with the unit vector along its direction of travel.
struct Frame {
    Point point;
    Point tangent;
};

struct Box {
    double minX = 0.0;
    double minY = 0.0;
    double maxX = 0.0;
    double maxY = 0.0;
};

// ---- Curves and the values along them

[[nodiscard]] bool isFinite(const Point& point);
[[nodiscard]] bool isFinite(const Pose& pose);
// All values finite, the length not negative, and turn and far end within the range of doubles.
[[nodiscard]] bool isUsable(const Curve& curve);

[[nodiscard]] Curve straight(const Pose& start, double length);
[[nodiscard]] Curve arc(const Pose& start, double length, double curvature);

// `along` is metres from the start; values outside 0 to length continue the curve beyond its ends.
[[nodiscard]] double curvatureAt(const Curve& curve, double along);
// What the azimuth has gained since the start.
[[nodiscard]] double turnAt(const Curve& curve, double along);
[[nodiscard]] double azimuthAt(const Curve& curve, double along);
[[nodiscard]] Point pointAt(const Curve& curve, double along);
[[nodiscard]] Pose poseAt(const Curve& curve, double along);
[[nodiscard]] Pose endPose(const Curve& curve);
// The pose `offset` metres to the right of the curve (left where negative), with the curve's azimuth: the parallel at
// that distance. Past the centre of curvature the parallel runs backwards; the azimuth stays the curve's.
[[nodiscard]] Pose parallelPose(const Curve& curve, double along, double offset);
// The azimuth in 0 <= azimuth < 2 pi.
[[nodiscard]] double wrappedAzimuth(double azimuth);
// The azimuth difference in -pi < turn <= pi.
[[nodiscard]] double wrappedTurn(double turn);

// A curve made ready for many questions. Gives the same values as the functions above, to the last bits, at less cost.
class PreparedCurve {
  public:
    PreparedCurve() : PreparedCurve(Curve{}) {}
    explicit PreparedCurve(const Curve& curve);

    [[nodiscard]] const Curve& curve() const { return curve_; }
    [[nodiscard]] Point pointAt(double along) const;
    [[nodiscard]] Pose poseAt(double along) const;
    [[nodiscard]] Frame frameAt(double along) const;
    [[nodiscard]] double curvatureAt(double along) const { return curve_.startCurvature + growth_ * along; }

  private:
    enum class Form : std::uint32_t { Straight, Arc, Series, Quadrature, Any };

    Curve curve_;
    double growth_ = 0.0;  // of curvature for each metre; 0 for an arc
    double toStart_ = 0.0; // Series: length from the inflection point to the start
    Point startInFrame_;   // Series: the start, seen from the inflection point
    double cosine_ = 1.0;  // direction of the frame: of the inflection point for Series, of the start otherwise
    double sine_ = 0.0;
    Form form_ = Form::Straight;
};

// ---- Parts and copies

[[nodiscard]] Curve part(const Curve& curve, double from, double to);
[[nodiscard]] std::pair<Curve, Curve> split(const Curve& curve, double along);
// The same points in the other direction.
[[nodiscard]] Curve reversed(const Curve& curve);
// Mirrored about the chord, so that both end points stay; the curve turns to the other side.
[[nodiscard]] Curve mirroredAboutChord(const Curve& curve);
// Mirrored about the line through a point with an azimuth.
[[nodiscard]] Curve mirroredAboutAxis(const Curve& curve, const Pose& axis);
// Turned about a point by an angle (clockwise on the map, radians), then moved.
[[nodiscard]] Curve moved(const Curve& curve, const Point& about, double angle, const Point& shift);
// The parallel as a curve: of a straight or an arc only. Nothing where the offset reaches the arc's centre.
[[nodiscard]] std::optional<Curve> parallelCurve(const Curve& curve, double offset);

// ---- Box and line

// The smallest box around the curve, from its ends and the points where it runs along an axis.
[[nodiscard]] Box boxOf(const Curve& curve);

inline constexpr std::size_t kMostLinePoints = 10'000;

struct Line {
    std::vector<Point> points; // on the curve; first and last are its ends
    std::vector<double> along;
    double error = 0.0;          // a bound on how far a chord lies from the curve, metres
    bool withinTolerance = true; // false where mostPoints made the line coarser than asked for
};
// The curve at an offset (metres, positive to the right) as a line whose chords lie within the tolerance (metres,
// positive) of it.
[[nodiscard]] Line lineOf(const Curve& curve, double tolerance, std::size_t mostPoints = kMostLinePoints,
                          double offset = 0.0);

// ---- Nearest points

struct Foot {
    double along = 0.0;
    Point point;
    double offset = 0.0;       // distance of the given point, positive where it lies to the right of travel
    bool perpendicular = true; // false at an end that the point lies beyond
};
[[nodiscard]] Foot nearestFoot(const Curve& curve, const Point& point);
[[nodiscard]] Foot nearestFoot(const PreparedCurve& curve, const Point& point);

inline constexpr std::size_t kMostFeet = 1'000;

struct Feet {
    std::vector<Foot> found; // by length
    bool complete = true;    // false where there may be more
};
// Every point of the curve where the way to the given point is perpendicular to it: nearest and farthest points of their
// neighbourhoods. Where there are more than `most`, a run of them about the nearest one.
[[nodiscard]] Feet feetOf(const Curve& curve, const Point& point, std::size_t most = kMostFeet);

// ---- Crossings

struct Crossing {
    double alongFirst = 0.0;
    double alongSecond = 0.0;
    Point point;
    double angle = 0.0;   // from the first's direction to the second's, -pi to pi
    bool tangent = false; // the curves touch, or run into each other, at an angle of 0 or pi
};

inline constexpr std::size_t kMostCrossings = 1'000;

struct Crossings {
    std::vector<Crossing> found; // by length along the first
    bool complete = true;        // false where `most` cut the search short
    bool overlap = false;        // both run along the same straight, circle or clothoid for a while; its ends are found
};
// All points that two curves have in common. Curves that come within `tolerance` (metres) of each other where they run
// alike touch there, which counts as one crossing.
[[nodiscard]] Crossings crossings(const Curve& first, const Curve& second, double tolerance = 1e-9,
                                  std::size_t most = kMostCrossings);

// ---- Fitting

// The shortest curve of linear curvature from one pose to another: a straight, an arc or a clothoid. Azimuths differ by
// any multiple of a full circle. Nothing if the points are the same or the values have no solution within doubles.
// Source: [Bertolazzi 2015].
[[nodiscard]] std::optional<Curve> fitG1(const Pose& from, const Pose& to);

// Three clothoids from one pose to another with given curvatures at both, curvature continuous throughout.
[[nodiscard]] std::optional<std::array<Curve, 3>> fitG2(const Pose& from, double fromCurvature, const Pose& to,
                                                        double toCurvature);

enum class FitStatus : std::int32_t {
    Done = 0,
    NotFinite,  // a value is not a number or infinite
    BadValue,   // a negative radius or parameter, or points that are the same
    NoTurn,     // the tangents are parallel: nothing to round, or a way back
    TooShort,   // the clothoids together turn more than the tangents do
    Overlap,    // the tangent lengths of neighbours do not fit between their points
    NoSolution, // no curve of this kind goes through the point
};

// What stands at an intersection point. A radius of 0 stands for no curve; a parameter of 0 means no clothoid.
struct IpValues {
    Point point;
    double radius = 0.0; // metres, positive
    double enterA = 0.0; // of the clothoid into the arc
    double leaveA = 0.0; // of the clothoid out of it
};

struct IpCurve {
    FitStatus status = FitStatus::Done;
    double turn = 0.0;         // of the tangents, positive to the right
    double enterTangent = 0.0; // metres from the curve's start to the intersection point
    double leaveTangent = 0.0; // metres from there to its end
    std::vector<Curve> curves; // clothoid, arc, clothoid: those that are there
};

// The curve at one intersection point between two tangents. The turn comes from the three points.
[[nodiscard]] IpCurve curveAtIp(const Point& before, const IpValues& ip, const Point& after);

struct IpAlignment {
    bool done = false;         // every intersection point is
    std::vector<IpCurve> ips;  // one for each intersection point between the ends
    std::vector<Curve> curves; // the whole alignment with the straights between, when done
};
// Points are the beginning, the intersection points, and the end; radius and parameters of first and last are ignored.
[[nodiscard]] IpAlignment alignmentByIps(std::span<const IpValues> points);

// The curve between two straights that meet in `ip` (from `before`, on to `after`) that goes through a point: an arc, or
// with parameters an arc between clothoids. Of several the one with the largest radius.
[[nodiscard]] IpCurve curveThrough(const Point& before, const Point& ip, const Point& after, const Point& through,
                                   double enterA = 0.0, double leaveA = 0.0);

} // namespace fenmark::curve
