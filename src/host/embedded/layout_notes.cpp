// The notes on laid alignments in words.
#include "host/embedded/layout_notes.h"

#include "drawing/drawing.h"
#include "values/drawing_values.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fenmark::host::embedded {

namespace {

// With that many decimals, whatever the locale.
std::string decimals(double value, int count) {
    std::array<char, 400> text{}; // the longest double has 309 digits before the point
    const std::to_chars_result end = writeFixedReal(text.data(), text.data() + text.size(), value, count);
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

// Metres, or the power of ten of what metres with three decimals cannot show.
std::string anyMetres(double value) {
    if (std::isinf(value)) {
        return "infinite";
    }
    if (value == 0.0 || (value >= 0.001 && value < 1e9)) {
        return metres(value) + " m";
    }
    std::array<char, 40> text{};
    const std::to_chars_result end = writeScientificReal(text.data(), text.data() + text.size(), value, 3);
    return std::string(text.data(), end.ptr) + " m";
}

std::string turnsText(double turns) {
    return turns < 1e9 ? decimals(turns, 0) : anyMetres(turns).substr(0, anyMetres(turns).size() - 2);
}

std::string unusualLine(const UnusualElement& element) {
    std::string line = "alignment " + element.alignment + ": the " +
                       (element.type == ElementType::Arc ? "arc" : "clothoid") + " at station " +
                       metres(element.station) + ", " + anyMetres(element.length) + " long, ";
    line += element.type == ElementType::Arc
                ? "radius " + anyMetres(element.startRadius)
                : "radii " + anyMetres(element.startRadius) + " and " + anyMetres(element.endRadius);
    if (element.turns > kMostTurns) {
        line += ", turns " +
                (std::isinf(element.turns) ? std::string("infinitely often") : turnsText(element.turns) + " times");
    }
    if (element.lineTolerance > kLineTolerance) {
        line += ", is drawn within " + anyMetres(element.lineTolerance);
    }
    return line;
}

// Whether the line of an element may need more points than it gets; false for every element of a survey.
bool mayBeCoarse(const Element& element) {
    constexpr double kNearlyMost = 0.8 * static_cast<double>(kMostElementPoints);
    const double sharpest = std::max(std::abs(element.startCurvature()), std::abs(element.endCurvature()));
    return !(element.length * std::sqrt(sharpest / (8.0 * kLineTolerance)) < kNearlyMost);
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

std::vector<UnusualElement> unusualElements(const Alignment& alignment) {
    std::vector<UnusualElement> unusual;
    double station = alignment.startStation;
    std::vector<PlanPoint> line;
    for (const Element& element : alignment.elements) {
        if (element.type != ElementType::Straight) {
            const double turns = std::abs(element.turn()) / (2.0 * 3.141592653589793);
            double tolerance = kLineTolerance;
            if (mayBeCoarse(element)) {
                line.clear();
                tolerance = appendElementLine(element, kLineTolerance, line);
            }
            if (!(turns <= kMostTurns) || tolerance > kLineTolerance) {
                unusual.push_back({alignment.name, station, element.type, element.length, element.startRadius,
                                   element.endRadius, turns, tolerance});
            }
        }
        station += element.length;
    }
    return unusual;
}

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
    for (const UnusualElement& element : notes.unusual) {
        lines.push_back(unusualLine(element));
    }
    return lines;
}

} // namespace fenmark::host::embedded
