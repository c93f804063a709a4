// The turning sense of each curve: the cheapest way through the alignment [Viterbi 1967], each element in one of two
// senses, each joint at a cost.
#include "host/embedded/alignment_settling.h"

#include "host/embedded/alignment_layout.h"
#include "host/embedded/element_spans.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <optional>

namespace fenmark::host::embedded {

namespace {

// How well the tangents of a joint meet that is none of the file's kinks: what the rounding of directions leaves
// (radians), and what ends in millimetres leave on an element (metres, by its length).
constexpr double kRoundedDirection = 2e-5;
constexpr double kRoundedEnds = 0.002;
// A joint is as good as the alignment's others up to so many times their lower quartile, and up to so many radians; so is
// one next to a spiral that only continues the element before it, since that drifts.
constexpr double kLikeTheOthers = 4.0;
constexpr double kMostLikeTheOthers = 0.25 * std::numbers::pi / 180.0;

// Costs, in broken joints. A broken joint costs 1, and up to a half more where it breaks by more than a kink would.
constexpr double kMostKink = 5.0 * std::numbers::pi / 180.0;
constexpr double kBeyondKinks = 20.0 * std::numbers::pi / 180.0; // for each 1 more
constexpr double kMostBeyond = 0.5;
constexpr double kBetweenCurves = 0.1; // kinks lie beside straights rather than within a curve
// What it costs that the sense changes from element to element. One joint of kinks that meets by chance is not worth a
// change at either end of a curve; one that would break by more than a kink is. Two ends that stay broken never are.
constexpr double kChangeAtJoint = 0.25;
constexpr double kChangeAtKink = 0.9;
// In an alignment that has proved to be of mixed senses every joint that meets is worth it, and nothing else.
constexpr double kChangeWhenMixed = 0.02;
constexpr double kAgainstSense = 1e-3; // of each curve, so that what nothing decides follows the whole
constexpr double kNever = std::numeric_limits<double>::infinity();

// What the next element sees of those before it, taken one way.
struct Tip {
    double cost = 0.0;
    std::int64_t broken = 0; // joints
    PlanPoint end;
    double direction = 0.0;
    double length = 0.0; // of the last element that has a tangent; 0 if none has
    bool curve = false;  // whether that is one
    bool continuing = false;
};

using Tips = std::array<Tip, 2>; // by sense: as given, the other one

struct Costs {
    bool given = true; // whether the elements may be taken as given
    bool other = true;
    bool otherIsAgainst = true; // whether it is the other sense that goes against the whole
    double change = kChangeAtJoint;
    double changeAtKink = kChangeAtKink;
    double mostBeyond = kMostBeyond;
};

bool isCurve(const Element& element) {
    return element.type != ElementType::Straight;
}

double brokenCost(double angle, bool betweenCurves, double mostBeyond) {
    return (betweenCurves ? 1.0 + kBetweenCurves : 1.0) +
           std::clamp((angle - kMostKink) / kBeyondKinks, 0.0, mostBeyond);
}

bool samePlace(const PlanPoint& a, const PlanPoint& b) {
    return a.x == b.x && a.y == b.y;
}

// The element in one of its senses behind `before`; where the element before was reported to end is `givenEnd`.
Element relaid(const Element& asGiven, bool other, const Tip* before, const PlanPoint& givenEnd) {
    Element element = asGiven;
    const bool moved = before != nullptr && !samePlace(before->end, givenEnd);
    const bool turns = isCurve(asGiven) && other != asGiven.otherSense;
    if (moved) {
        element.start = before->end;
    }
    if (asGiven.continuing && before != nullptr) {
        const double direction = wrapped(before->direction);
        if (moved || turns || direction != asGiven.direction) {
            element = turns ? turnedOver(element) : element;
            element.direction = direction;
            element.end = poseOnElement(element, element.length).point;
        }
        return element;
    }
    if (moved && asGiven.type == ElementType::Straight) {
        spanLine(element, before->direction);
    } else if (moved && asGiven.type == ElementType::Arc) {
        if (!spanArc(element, before->direction)) {
            element = asGiven; // it stays where it reaches over its chord
        }
    } else if (moved) {
        // The clothoid aims at the same end.
        element.direction = wrapped(asGiven.direction + directionTo(element.start, asGiven.end) -
                                    directionTo(asGiven.start, asGiven.end));
        element.end = poseOnElement(element, element.length).point;
    }
    return turns ? mirrored(element) : element;
}

Tip tipOf(const Element& element, const Tip* before) {
    Tip tip;
    tip.end = element.end;
    tip.direction = element.endDirection();
    tip.length = element.length;
    tip.curve = isCurve(element);
    tip.continuing = element.continuing;
    if (!(element.length > 0.0) && before != nullptr) {
        tip.direction = before->direction;
        tip.length = before->length;
        tip.curve = before->curve;
        tip.continuing = before->continuing;
    }
    return tip;
}

class Settling {
  public:
    explicit Settling(std::span<const Element> elements) : elements_(elements) {}

    // The sense of each element: 1 where it takes the other one.
    std::vector<std::uint8_t> senses() {
        usual_ = usualMisfit();
        Costs costs{.otherIsAgainst = !otherProved()};
        std::vector<std::uint8_t> senses = cheapest(costs);
        const auto isAgainst = [&](std::size_t i) {
            return isCurve(elements_[i]) && (senses[i] != 0) == costs.otherIsAgainst;
        };
        for (std::size_t i = 0; i < senses.size(); ++i) {
            if (isAgainst(i)) {
                costs.change = costs.changeAtKink = kChangeWhenMixed;
                costs.mostBeyond = 0.0;
                return cheapest(costs);
            }
        }
        return senses;
    }

  private:
    std::span<const Element> elements_;
    double usual_ = 0.0;                 // misfit of a joint, radians
    bool rough_ = false;                 // whether every joint within kBrokenJoint meets
    std::vector<std::uint8_t> cameFrom_; // bit s: the sense before that the sense s comes from

    // Whether the other sense joins more of the alignment. Where both join as much, joints are looked at roughly.
    bool otherProved() {
        bool proved = false;
        for (const bool rough : {false, true}) {
            rough_ = rough;
            const Tip given = passThrough({.given = true, .other = false});
            const Tip other = passThrough({.given = false, .other = true});
            proved = other.broken < given.broken && other.cost < given.cost;
            if (other.broken != given.broken) {
                break;
            }
        }
        rough_ = false;
        return proved;
    }

    // Lower quartile over the joints of curves of the angle that the best pair of senses leaves.
    double usualMisfit() const {
        std::vector<double> misfits;
        const Element* before = nullptr;
        for (const Element& element : elements_) {
            if (!(element.length > 0.0)) {
                continue;
            }
            if (before != nullptr && !before->continuing && !element.continuing &&
                (isCurve(*before) || isCurve(element))) {
                const double image = mirrored(*before).endDirection();
                const double imageStart = mirrored(element).direction;
                double best = std::numbers::pi;
                for (const double end : {before->endDirection(), isCurve(*before) ? image : before->endDirection()}) {
                    for (const double start : {element.direction, isCurve(element) ? imageStart : element.direction}) {
                        best = std::min(best, std::abs(wrapped(start - end)));
                    }
                }
                misfits.push_back(best);
            }
            before = &element;
        }
        if (misfits.empty()) {
            return 0.0;
        }
        const auto quarter = misfits.begin() + static_cast<std::ptrdiff_t>(misfits.size() / 4);
        std::nth_element(misfits.begin(), quarter, misfits.end());
        return *quarter;
    }

    // Up to which angle a joint meets.
    double tolerance(const Tip& before, const Element& element) const {
        if (rough_) {
            return kBrokenJoint;
        }
        const double rounded = kRoundedDirection + kRoundedEnds / before.length + kRoundedEnds / element.length;
        const bool drifts = before.continuing || element.continuing;
        const double others = drifts ? kMostLikeTheOthers : std::min(kLikeTheOthers * usual_, kMostLikeTheOthers);
        return std::min(std::max(rounded, others), kBrokenJoint);
    }

    // The element behind one way through those before it.
    Tip extended(const Tip* before, bool senseBefore, const Element& laid, bool sense, const Costs& costs) const {
        Tip tip = tipOf(laid, before);
        if (before == nullptr) {
            tip.cost = sense == costs.otherIsAgainst ? costs.change : 0.0;
        } else {
            tip.cost = before->cost;
            tip.broken = before->broken;
            bool meets = true;
            if (before->length > 0.0 && laid.length > 0.0) {
                const double angle = std::abs(wrapped(laid.direction - before->direction));
                meets = angle <= tolerance(*before, laid);
                if (!meets) {
                    ++tip.broken;
                    tip.cost += brokenCost(angle, before->curve && isCurve(laid), costs.mostBeyond);
                }
            }
            if (sense != senseBefore) {
                tip.cost += meets ? costs.change : costs.changeAtKink;
            }
        }
        if (isCurve(laid) && sense == costs.otherIsAgainst) {
            tip.cost += kAgainstSense;
        }
        return tip;
    }

    // Extends both ways by one element; gives the bits of where they come from.
    std::uint8_t step(Tips& tips, std::size_t i, const Costs& costs) const {
        const Element& asGiven = elements_[i];
        const PlanPoint givenEnd = i > 0 ? elements_[i - 1].end : PlanPoint{};
        // Unless the elements before end in two ways, where this one lies depends on its own sense alone.
        const bool oneWay =
            i == 0 || (!asGiven.continuing && samePlace(tips[0].end, givenEnd) && samePlace(tips[1].end, givenEnd));
        Tips next;
        next[0].cost = next[1].cost = kNever;
        std::uint8_t bits = 0;
        // One of no length has the sense of the one before, so that a change is charged at a joint that can break.
        const bool follows = i > 0 && !isCurve(asGiven) && !(asGiven.length > 0.0);
        for (const bool sense : {false, true}) {
            // A straight is never against the sense, so that a change next to it is charged at the curve's own joint.
            if (!(sense ? costs.other : costs.given) ||
                (!follows && !isCurve(asGiven) && sense == costs.otherIsAgainst)) {
                continue;
            }
            std::optional<Element> laid;
            for (const bool senseBefore : {false, true}) {
                const Tip* before = i == 0 ? nullptr : &tips[senseBefore ? 1 : 0];
                if (i == 0 ? senseBefore : before->cost == kNever || (follows && sense != senseBefore)) {
                    continue;
                }
                if (!laid || !oneWay) {
                    laid = relaid(asGiven, sense, before, givenEnd);
                }
                const Tip tip = extended(before, senseBefore, *laid, sense, costs);
                if (tip.cost < next[sense ? 1 : 0].cost) {
                    next[sense ? 1 : 0] = tip;
                    const std::uint8_t bit = sense ? 2 : 1;
                    bits = static_cast<std::uint8_t>(senseBefore ? bits | bit : bits & ~bit);
                }
            }
        }
        tips = next;
        return bits;
    }

    // The end of the way through all elements in the one sense that is allowed.
    Tip passThrough(Costs costs) const {
        costs.otherIsAgainst = costs.given; // nothing goes against it
        Tips tips;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            step(tips, i, costs);
        }
        return tips[costs.given ? 0 : 1];
    }

    std::vector<std::uint8_t> cheapest(const Costs& costs) {
        Tips tips;
        cameFrom_.assign(elements_.size(), 0);
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            cameFrom_[i] = step(tips, i, costs);
        }
        tips[costs.otherIsAgainst ? 1 : 0].cost += costs.change; // the end of the alignment
        std::vector<std::uint8_t> senses(elements_.size(), 0);
        std::uint8_t sense = tips[1].cost < tips[0].cost ? 1 : 0;
        for (std::size_t i = elements_.size(); i-- > 0;) {
            senses[i] = sense;
            sense = (cameFrom_[i] >> sense) & 1U;
        }
        return senses;
    }
};

} // namespace

std::vector<Element> settledElements(std::span<const Element> elements) {
    if (std::none_of(elements.begin(), elements.end(), isCurve)) {
        return {};
    }
    const std::vector<std::uint8_t> senses = Settling(elements).senses();
    std::vector<Element> changed;
    std::optional<Tip> before;
    PlanPoint givenEnd;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Tip* tip = before ? &*before : nullptr;
        const Element element = relaid(elements[i], senses[i] != 0, tip, givenEnd);
        const bool same = element.otherSense == elements[i].otherSense && samePlace(element.start, elements[i].start) &&
                          element.direction == elements[i].direction;
        if (changed.empty() && !same) {
            changed.reserve(elements.size() - i);
        }
        if (!changed.empty() || !same) {
            changed.push_back(element);
        }
        givenEnd = elements[i].end;
        before = tipOf(element, tip);
    }
    return changed;
}

} // namespace fenmark::host::embedded
