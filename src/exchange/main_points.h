// The main points of an alignment and the IPs of its curves, with the names that road surveys give them.
//
// A curve here is a run of arcs and clothoids that turn the same way, between two straights or between two points of
// inflection; it has one IP, where the tangents at its two ends meet. Plane: the drawing's (x east, y north, metres).
#pragma once

#include "drawing/drawing.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace fenmark::exchange {

// How the ends of clothoids are named: BTC, BC, EC, ETC, or KA1-1, KE1-1, KE1-2, KA1-2. Arcs between straights are BC, SP,
// EC in both.
enum class MainPointNames { Btc, Ka };

struct MainPoint {
    std::string name; // "BP", "BC1", "KA2-1", "EP"
    double station = 0.0;
    drawing::Pose pose;
    std::size_t element = 0; // the one that begins here; at EP the last
    bool joint = true;       // false in the middle of an arc
};

// From BP to EP, in the order of stations. Joints that need no name of their own, such as two straights in one line, are
// named P1, P2 and on. Empty for an alignment without elements.
[[nodiscard]] std::vector<MainPoint> mainPointsOf(const drawing::Alignment& alignment, MainPointNames names);

struct Ip {
    std::string name; // "BP", "IP-1", "EP"
    drawing::PlanPoint point;
    std::string from; // names of the curve's first and last main point; empty at BP, EP and kinks
    std::string to;
    std::optional<double> turn;          // IA, radians, positive to the left
    std::optional<double> tangentBefore; // TL, metres from the curve's start to the IP
    std::optional<double> tangentBehind;
    double radius = 0.0; // the smallest of the curve; 0 where there is none
    double a1 = 0.0;     // parameter of the first and the last clothoid; 0 where there is none
    double a2 = 0.0;
    std::size_t firstElement = 0;
    std::size_t elements = 0; // of the curve; 0 at BP, EP and kinks
};

// BP, the IPs and EP. A curve that turns by half a circle or more has no meeting point of its end tangents; each of its
// elements then has its own, and `withoutIp` counts the elements that have none.
[[nodiscard]] std::vector<Ip> ipsOf(const drawing::Alignment& alignment, MainPointNames names, std::size_t& withoutIp);

// A of a clothoid, metres.
[[nodiscard]] double parameterOf(const drawing::Element& clothoid);

} // namespace fenmark::exchange
