// The longitudinal profile of a chain: straight grades and vertical curves between them.
//
// Stations here are distances along the chain counted from its start station without equations, metres; heights are
// metres; a grade is the rise for each metre of station (0.02 is 2 %). A vertical curve of parabola form has the height
// h0 + g0 d + (g1 - g0) d^2 / (2 L), d from its start; one of circle form is a circular arc in the vertical plane,
// tangent to both grades. Symbols: g grade, L length of a vertical curve along the station axis, R radius.
// Literature: the vertical curve of every handbook of road design, with L = R |g1 - g0| for the parabola.
#pragma once

#include "curve/chain_status.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace fenmark::curve {

enum class VerticalForm { None, Parabola, Circle };

// A point of vertical intersection (PVI), where two grades meet.
struct VerticalPoint {
    double station = 0.0;
    double height = 0.0;
    VerticalForm form = VerticalForm::None;
    // Of the curve there: its length along the station axis, half before and half behind for a parabola. Where it is 0,
    // the radius gives it.
    double length = 0.0;
    double radius = 0.0; // positive for crests and sags alike
};

struct HeightGrade {
    double height = 0.0;
    double grade = 0.0;
    double curvature = 0.0; // change of the grade for each metre of station; positive in a sag
};

// Where the height stops rising or falling.
struct ProfileExtreme {
    double station = 0.0;
    double height = 0.0;
    bool high = false;     // a highest point; else a lowest one
    double levelFor = 0.0; // metres for which the profile stays level there; 0 but on a level grade
};

// A part of the profile, for drawing and reports.
struct ProfilePart {
    VerticalForm form = VerticalForm::None;
    double start = 0.0; // stations
    double end = 0.0;
    double startHeight = 0.0;
    double startGrade = 0.0;
    double endGrade = 0.0;
    double curvature = 0.0; // Parabola: change of grade for each metre. Circle: 1 / R. Positive in a sag
    std::size_t point = 0;  // index of the vertical point that a curve belongs to, or that a grade begins at
};

class Profile {
  public:
    // At least two points with rising stations. Refused (and unchanged): values that are not finite, stations that do
    // not rise, curves over each other or beyond the first or last point (by more than kStationTolerance). A curve at
    // the first or last point, or without a length and a radius, or between equal grades, is none.
    [[nodiscard]] ChainStatus set(std::span<const VerticalPoint> points);

    [[nodiscard]] bool empty() const { return parts_.empty(); }
    [[nodiscard]] double startStation() const { return parts_.empty() ? 0.0 : parts_.front().start; }
    [[nodiscard]] double endStation() const { return parts_.empty() ? 0.0 : parts_.back().end; }
    [[nodiscard]] std::span<const ProfilePart> parts() const { return parts_; }

    // Nothing beyond kStationTolerance from either end. Where two grades meet without a curve, the grade behind.
    [[nodiscard]] std::optional<HeightGrade> at(double station) const;
    // Heights of rising stations (any order works, rising ones without a search); NaN where there is none. Returns how
    // many of them have a height.
    std::size_t heights(std::span<const double> stations, std::span<double> heights) const;
    // Inside the profile, by station; its two ends are none.
    [[nodiscard]] std::vector<ProfileExtreme> extremes() const;
    // The highest and the lowest place of all, its ends included.
    [[nodiscard]] std::optional<ProfileExtreme> highest() const;
    [[nodiscard]] std::optional<ProfileExtreme> lowest() const;
    // The stations of a height, rising; on a level grade its start.
    [[nodiscard]] std::vector<double> stationsOfHeight(double height) const;

  private:
    [[nodiscard]] std::size_t partAt(double station) const;
    std::vector<ProfilePart> parts_;
};

} // namespace fenmark::curve
