// From a point to station and offset: the nearest point of the whole chain.
//
// Boxes around the pieces, eight by eight, leave a few pieces to look at. On a piece without an inflection that turns
// by less than half a circle the derivative of the squared distance has at most two zeros, since these are the tangents
// from the point to the evolute, a convex curve of the same turn. So there is at most one nearest point inside, it can
// be enclosed, and Newton's method cannot leave the enclosure.
//
// Symbols: g component along the tangent of the way from the curve to the point, h component to its left, k curvature;
// g' = k h - 1. A nearest point has g = 0, coming from above.
#include "drawing/alignment_geometry.h"

#include "drawing/clothoid_series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace fenmark::drawing {

namespace {

constexpr std::size_t kFanOut = 8;
// The foot is known to this, metres of station.
constexpr double kFootTolerance = 1e-9;
// The offset is carried over the last step by its Taylor series to second order, good to 1e-11 m over this length.
constexpr double kLastStep = 1e-3;
// How near the two feet of a point close to the evolute may lie before they are taken for one, metres.
constexpr double kOneFoot = 1e-7;
constexpr int kMostSteps = 60;
// A nearest point whose way to the given point leaves the normal by more than this (metres) is an end.
constexpr double kPerpendicular = 1e-6;

} // namespace

struct AlignmentGeometry::Foot {
    double squared = std::numeric_limits<double>::infinity();
    double along = 0.0; // of the chain
    double left = 0.0;  // h
    double ahead = 0.0; // g
};

void AlignmentGeometry::buildBoxes() {
    if (pieces_.empty()) {
        return;
    }
    std::vector<Box> level;
    level.reserve(pieces_.size());
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        // The curve lies in the ellipse around its ends that its length describes.
        const double length = lengthOf(i);
        const PlanPoint start = pointOn(pieces_[i], 0.0);
        const PlanPoint end = pointOn(pieces_[i], length);
        const double dx = 0.5 * (end.x - start.x);
        const double dy = 0.5 * (end.y - start.y);
        const double minor = std::max(0.25 * length * length - dx * dx - dy * dy, 0.0);
        const double halfX = std::sqrt(dx * dx + minor) + kOneFoot;
        const double halfY = std::sqrt(dy * dy + minor) + kOneFoot;
        level.push_back({start.x + dx - halfX, start.y + dy - halfY, start.x + dx + halfX, start.y + dy + halfY});
    }
    boxes_.push_back(std::move(level));
    while (boxes_.back().size() > 1) {
        const std::vector<Box>& below = boxes_.back();
        std::vector<Box> above;
        for (std::size_t i = 0; i < below.size(); i += kFanOut) {
            Box box = below[i];
            for (std::size_t j = i + 1; j < std::min(i + kFanOut, below.size()); ++j) {
                box.minX = std::min(box.minX, below[j].minX);
                box.minY = std::min(box.minY, below[j].minY);
                box.maxX = std::max(box.maxX, below[j].maxX);
                box.maxY = std::max(box.maxY, below[j].maxY);
            }
            above.push_back(box);
        }
        boxes_.push_back(std::move(above));
    }
}

namespace {

struct Offset {
    double g = 0.0;
    double h = 0.0;
    double k = 0.0;

    double slope() const { return k * h - 1.0; } // g'
};

} // namespace

void AlignmentGeometry::searchPiece(std::size_t index, const PlanPoint& point, Foot& best) const {
    const Piece& piece = pieces_[index];
    const double length = lengthOf(index);
    const double dx = point.x - piece.x;
    const double dy = point.y - piece.y;
    const PlanPoint p{dx * piece.cosine + dy * piece.sine, dy * piece.cosine - dx * piece.sine};

    const auto take = [&](double along, const Offset& offset) {
        const double squared = offset.g * offset.g + offset.h * offset.h;
        if (squared < best.squared) {
            best = {squared, piece.from + along, offset.h, offset.g};
        }
    };

    if (static_cast<Form>(piece.form) == Form::Series && piece.b == 0.0) {
        const double along = std::clamp(p.x, 0.0, length);
        take(along, {p.x - along, p.y, 0.0});
        return;
    }

    const auto at = [&](double along) {
        const double curvature = curvatureAt(piece, along);
        CurvePoint on;
        if (static_cast<Form>(piece.form) == Form::Series) {
            on.point = seriesFromInflection(piece.b, piece.a + along);
            on.direction = sineCosine(0.5 * curvature * (piece.a + along));
        } else {
            on = localPose(piece, along);
        }
        const double x = p.x - on.point.x;
        const double y = p.y - on.point.y;
        return Offset{x * on.direction.cosine + y * on.direction.sine, y * on.direction.cosine - x * on.direction.sine,
                      curvature};
    };

    if (static_cast<Form>(piece.form) == Form::Arc) {
        double angle = std::atan2(std::abs(piece.a) * p.x, 1.0 - piece.a * p.y);
        if (angle < 0.0) {
            angle += 2.0 * 3.141592653589793;
        }
        const double along = angle / std::abs(piece.a);
        if (along < length) {
            take(along, at(along));
        }
        take(0.0, at(0.0));
        take(length, at(length));
        return;
    }

    // Between low and high without an inflection.
    const auto search = [&](double low, Offset atLow, double high, Offset atHigh) {
        take(low, atLow);
        take(high, atHigh);
        double gLow = atLow.g;
        double gHigh = atHigh.g;
        if (gLow <= 0.0 && gHigh >= 0.0) {
            return; // only a farthest point inside
        }
        if ((gLow > 0.0) == (gHigh > 0.0)) {
            // Two zeros or none: they enclose the extreme of g, which lies where g' changes its sign.
            const bool rising = gLow > 0.0;
            double from = low;
            double to = high;
            if (rising ? !(atLow.slope() < 0.0 && atHigh.slope() > 0.0)
                       : !(atLow.slope() > 0.0 && atHigh.slope() < 0.0)) {
                return;
            }
            bool found = false;
            for (int step = 0; step < kMostSteps && to - from > kOneFoot && !found; ++step) {
                const double middle = 0.5 * (from + to);
                const Offset there = at(middle);
                if (there.g == 0.0 || (there.g > 0.0) != rising) {
                    found = true;
                    (rising ? high : low) = middle;
                    (rising ? gHigh : gLow) = there.g;
                } else if ((there.slope() < 0.0) == rising) {
                    from = middle;
                } else {
                    to = middle;
                }
            }
            if (!found) {
                return;
            }
        }
        // g falls from gLow > 0 to gHigh < 0: one zero.
        double along = low + (high - low) * gLow / (gLow - gHigh);
        for (int step = 0; step < kMostSteps; ++step) {
            const Offset there = at(along);
            if (there.g >= 0.0) {
                low = along;
            } else {
                high = along;
            }
            const double slope = there.slope();
            const double next = along - there.g / slope;
            if (!(slope < 0.0 && next >= low && next <= high)) {
                along = 0.5 * (low + high);
                continue;
            }
            // Newton's error is the square of the step times g'' / 2 g', where g'' = k' h - k^2 g.
            const double last = next - along;
            const double bend = piece.b * there.h - there.k * there.k * there.g;
            if (std::abs(last) < kLastStep && std::abs(bend / slope) * last * last < kFootTolerance) {
                // h' = -k g and h'' = -k' g - k g'.
                const double h =
                    there.h - there.k * there.g * last - 0.5 * (piece.b * there.g + there.k * slope) * last * last;
                take(next, {0.0, h, there.k});
                return;
            }
            along = next;
        }
        take(along, at(along));
    };

    const Offset atStart = at(0.0);
    const Offset atEnd = at(length);
    const double inflection = static_cast<Form>(piece.form) == Form::Series ? -piece.a : -piece.a / piece.b;
    if (inflection > 0.0 && inflection < length) {
        const Offset there = at(inflection);
        search(0.0, atStart, inflection, there);
        search(inflection, there, length, atEnd);
    } else {
        search(0.0, atStart, length, atEnd);
    }
}

namespace {

double squaredTo(double low, double high, double value) {
    const double out = std::max({low - value, value - high, 0.0});
    return out * out;
}

} // namespace

void AlignmentGeometry::searchBoxes(std::size_t level, std::size_t box, const PlanPoint& point, Foot& best) const {
    if (level == 0) {
        searchPiece(box, point, best);
        return;
    }
    const std::vector<Box>& below = boxes_[level - 1];
    const std::size_t first = box * kFanOut;
    const std::size_t count = std::min(kFanOut, below.size() - first);
    // Nearest box first, so that most of the others need no look.
    std::pair<double, std::size_t> order[kFanOut];
    for (std::size_t i = 0; i < count; ++i) {
        const Box& child = below[first + i];
        order[i] = {squaredTo(child.minX, child.maxX, point.x) + squaredTo(child.minY, child.maxY, point.y), first + i};
    }
    std::sort(order, order + count);
    for (std::size_t i = 0; i < count && order[i].first <= best.squared; ++i) {
        searchBoxes(level - 1, order[i].second, point, best);
    }
}

std::optional<StationOffset> AlignmentGeometry::locate(const PlanPoint& point) const {
    if (pieces_.empty() || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        return std::nullopt;
    }
    Foot best;
    searchBoxes(boxes_.size() - 1, 0, point, best);
    const double distance = std::sqrt(best.squared);
    StationOffset result;
    result.station = startStation_ + best.along;
    result.offset = best.left > 0.0 ? -distance : distance;
    result.perpendicular = std::abs(best.ahead) <= kPerpendicular;
    return result;
}

} // namespace fenmark::drawing
