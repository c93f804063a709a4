// The notes on laid alignments in words.
#include "host/embedded/layout_notes.h"

#include "host/boundary/values.h"

#include <array>
#include <charconv>
#include <cmath>

namespace fenmark::host::embedded {

namespace {

// With that many decimals, whatever the locale.
std::string decimals(double value, int count) {
    std::array<char, 400> text{}; // the longest double has 309 digits before the point
    const std::to_chars_result end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, count);
    return {text.data(), end.ptr};
}

std::string metres(double value) {
    return decimals(value, 3);
}

std::string reasonOf(const RefusedElement& element) {
    switch (element.why) {
    case Refusal::ArcWithoutRadius:
        return "an arc has no radius";
    case Refusal::ChordBeyondDiameter:
        return "an arc of radius " + metres(element.radius) + " m does not reach over its chord of " +
               metres(element.chord) + " m";
    case Refusal::ClothoidWithoutRadius:
        return "a clothoid has no radius";
    case Refusal::ClothoidWithoutLength:
        return "a clothoid has no length";
    case Refusal::NothingBefore:
        break;
    }
    return "a clothoid has no element before it";
}

const char* remedyOf(Remedy remedy) {
    switch (remedy) {
    case Remedy::PositiveRadiusAuto:
        return "; --positive-radius auto may mend it";
    case Remedy::PositiveRadiusLeft:
        return "; --positive-radius left may mend it";
    case Remedy::PositiveRadiusRight:
        return "; --positive-radius right may mend it";
    case Remedy::PlanTangents:
        return "; --plan-tangents may mend it";
    case Remedy::None:
        break;
    }
    return "";
}

} // namespace

std::vector<std::string> noteLines(const LayoutNotes& notes) {
    std::vector<std::string> lines;
    if (notes.otherSense == 1) {
        lines.push_back("1 element was taken with the other turning sense");
    } else if (notes.otherSense > 1) {
        lines.push_back(std::to_string(notes.otherSense) + " elements were taken with the other turning sense");
    }
    for (const RefusedElement& element : notes.refused) {
        lines.push_back("alignment " + element.alignment + " breaks off after " + metres(element.length) +
                        " m: " + reasonOf(element));
    }
    for (const BrokenJoint& joint : notes.brokenJoints) {
        lines.push_back("alignment " + joint.alignment + ": the joint at station " + metres(joint.station) +
                        " is broken by " + decimals(radiansToDegrees(std::abs(joint.angle)), 2) + " degrees" +
                        remedyOf(joint.remedy));
    }
    for (const Misfit& misfit : notes.misfits) {
        lines.push_back("alignment " + misfit.alignment + " lies up to " + metres(misfit.distance) +
                        " m off the route's points" +
                        (misfit.heightsDiffer ? ", which differ in height; --plan-tangents may mend it" : ""));
    }
    return lines;
}

} // namespace fenmark::host::embedded
