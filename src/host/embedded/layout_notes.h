// What an import reports about the alignments that were laid: senses that were guessed, routes that broke off, kinks.
#pragma once

#include "host/embedded/alignment_layout.h"
#include "values/language.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::host::embedded {

// An element that the host did not lay. Its route ends before it, and no result finds the alignment.
struct RefusedElement {
    std::string alignment;
    double length = 0.0; // of what was laid before it, metres
    Refusal why = Refusal::ArcWithoutRadius;
    double radius = 0.0; // of an arc, metres
    double chord = 0.0;
};

// An element that turns more than kMostTurns times, or is drawn with a line coarser than kLineTolerance: most likely a
// radius or a parameter was mistyped. It is laid exactly all the same.
struct UnusualElement {
    std::string alignment;
    double station = 0.0; // of its start
    ElementType type = ElementType::Straight;
    double length = 0.0;      // metres
    double startRadius = 0.0; // metres, infinite where straight
    double endRadius = 0.0;
    double turns = 0.0;         // full circles
    double lineTolerance = 0.0; // metres, how far the drawn line may lie from it
};

inline constexpr double kMostTurns = 10.0;

// The points are those left for the alignment's line; its own are taken from them.
std::vector<UnusualElement> unusualElements(const Alignment& alignment, LinePoints& points);

// An alignment that does not run through the points of the route that it was made of.
struct Misfit {
    std::string alignment;
    double distance = 0.0;      // of the farthest point, metres
    bool heightsDiffer = false; // the route's points differ in height, so that clothoids had no PI
    bool atLeast = false;       // not every point was looked at
};
inline constexpr double kMisfit = 0.010; // metres; less is not reported

// What happened while alignments were laid, since the notes were last cleared.
struct LayoutNotes {
    std::int32_t otherSense = 0; // elements taken with the other turning sense, as Auto does
    std::vector<RefusedElement> refused;
    std::vector<BrokenJoint> brokenJoints;
    std::vector<UnusualElement> unusual;
    std::vector<Misfit> misfits;
};

struct NoteLine {
    std::string_view code; // as programs read it: "broken-joint"
    std::string text;
};

// Of broken joints and unusual elements, of one alignment.
inline constexpr std::size_t kMostLinesOfAKind = 20;

// What stands behind a note that something may mend; the command line names an option, a window its setting.
using RemedyText = std::function<std::string(Remedy remedy, Language language)>;
std::string remedyAsOption(Remedy remedy, Language language);

// One line for each thing that a user should know, and one for what is beyond the limit; empty if there is none.
[[nodiscard]] std::vector<NoteLine> noteLines(const LayoutNotes& notes, Language language = Language::English,
                                              const RemedyText& remedyText = remedyAsOption);

} // namespace fenmark::host::embedded
