// How the embedded host lays a fixed line, curve or spiral: the tangents, the turning sense, what is refused.
//
// Plane: the drawing's (x east, y north, metres), directions in radians anticlockwise from +x. The direction argument
// of curves and spirals is -1 for a curve that turns clockwise in the drawing and 0 for one that turns anticlockwise.
// That is the sense of the tangents from which the PIs were built, so that start, PI and end agree.
#pragma once

#include "host/embedded/drawing_names.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace fenmark::host::embedded {

// Which way a curve with a positive radius in the file turns on the map. Left is the sense of the direction argument.
// Right is the other one: every curve is mirrored about its chord, so that it keeps both its ends. Auto is laid as Left,
// and settled when the alignment is complete (alignment_settling.h).
enum class PositiveRadius { Auto, Left, Right };

// A joint is broken if the tangents differ by more than this, radians: one degree.
inline constexpr double kBrokenJoint = 3.141592653589793 / 180.0;
// A PI is taken if its distance from the start is what radii and length demand, within this share and at least this
// much (metres). A PI that could not be found is (0, 0, 0).
inline constexpr double kPiShare = 0.01;
inline constexpr double kPiDistance = 0.010;

// Lines are never refused; a line of no length takes the direction of the element before.
Element layLine(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end);

// The shorter arc, as spanArc lays it. Refused: a radius of 0 (or none at all), a chord longer than the diameter.
std::optional<Element> layCurve(std::span<const Element> before, const PlanPoint& start, const PlanPoint& end,
                                double radius, std::int16_t direction, PositiveRadius sense);

// From the start along the line to the PI, if the PI is taken; otherwise along the end tangent of the element before,
// which is named by its identifier. Refused: no length, both radii infinite, an unknown element before.
std::optional<Element> laySpiral(std::span<const Element> before, std::int32_t elementBefore, const PlanPoint& start,
                                 const PlanPoint& pi, double startRadius, double endRadius, double length,
                                 std::int16_t direction, PositiveRadius sense);

// Why an element is refused.
enum class Refusal {
    ArcWithoutRadius,
    ChordBeyondDiameter,
    ClothoidWithoutRadius, // infinite at both ends
    ClothoidWithoutLength,
    NothingBefore,
};

// Of a curve or a spiral that was not laid.
Refusal whyCurveRefused(double radius);
Refusal whySpiralRefused(double startRadius, double endRadius, double length);

// The setting that may mend a broken joint.
enum class Remedy { None, PositiveRadiusAuto, PositiveRadiusLeft, PositiveRadiusRight, PlanTangents };

struct BrokenJoint {
    std::string alignment;
    double station = 0.0;
    double angle = 0.0; // radians, the direction after less the direction before, in (-pi, pi]
    Remedy remedy = Remedy::None;
};

// The settings that an alignment was laid with.
struct LayoutSettings {
    PositiveRadius positiveRadius = PositiveRadius::Auto;
    bool planTangents = false; // whether the clothoids' PIs were taken in plan
};

// The joints of an alignment whose tangents differ by more than kBrokenJoint. Elements of no length have no tangent.
std::vector<BrokenJoint> brokenJoints(const Alignment& alignment, const LayoutSettings& settings);

} // namespace fenmark::host::embedded
