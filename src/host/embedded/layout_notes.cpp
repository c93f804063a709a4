// The notes on laid alignments in words of both languages.
#include "host/embedded/layout_notes.h"

#include "drawing/drawing.h"
#include "values/drawing_values.h"
#include "values/fixed_real.h"
#include "values/real_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace fenmark::host::embedded {

namespace {

std::string metres(double value) {
    return fixedReal(value, 3);
}

// The texts of one language.
class Words {
  public:
    Words(Language language, const RemedyText& remedyText) : language_(language), remedyText_(remedyText) {}
    std::string operator()(std::string_view japanese, std::string_view english) const {
        return std::string(language_ == Language::Japanese ? japanese : english);
    }
    std::string remedy(Remedy remedy) const { return remedy == Remedy::None ? "" : remedyText_(remedy, language_); }

  private:
    Language language_;
    const RemedyText& remedyText_;
};

std::string reasonOf(const RefusedElement& element, const Words& words) {
    switch (element.why) {
    case Refusal::ArcWithoutRadius:
        return words("円弧の半径がありません", "an arc has no radius");
    case Refusal::ChordBeyondDiameter:
        return words("半径 " + metres(element.radius) + " m の円弧は弦長 " + metres(element.chord) + " m に届きません",
                     "an arc of radius " + metres(element.radius) + " m does not reach over its chord of " +
                         metres(element.chord) + " m");
    case Refusal::ClothoidWithoutRadius:
        return words("クロソイドの半径がありません", "a clothoid has no radius");
    case Refusal::ClothoidWithoutLength:
        return words("クロソイドの長さがありません", "a clothoid has no length");
    case Refusal::NothingBefore:
        break;
    }
    return words("クロソイドの前に要素がありません", "a clothoid has no element before it");
}

// Metres, or the power of ten of what metres with three decimals cannot show.
std::string anyMetres(double value, const Words& words) {
    if (std::isinf(value)) {
        return words("無限大", "infinite");
    }
    if (value == 0.0 || (value >= 0.001 && value < 1e9)) {
        return metres(value) + " m";
    }
    std::array<char, 40> text{};
    const std::to_chars_result end = writeScientificReal(text.data(), text.data() + text.size(), value, 3);
    return std::string(text.data(), end.ptr) + " m";
}

std::string turnsText(double turns, const Words& words) {
    if (turns < 1e9) {
        return fixedReal(turns, 0);
    }
    const std::string text = anyMetres(turns, words);
    return text.substr(0, text.size() - 2);
}

std::string unusualLine(const UnusualElement& element, const Words& words) {
    const auto length = [&](double value) { return anyMetres(value, words); };
    const bool arc = element.type == ElementType::Arc;
    const std::string kind = arc ? words("円弧", "arc") : words("クロソイド", "clothoid");
    std::string line =
        words("線形「" + element.alignment + "」: 追加距離 " + metres(element.station) + " の" + kind + "（長さ " +
                  length(element.length) + "、半径 ",
              "alignment " + element.alignment + ": the " + kind + " at station " + metres(element.station) + ", " +
                  length(element.length) + " long, " + (arc ? "radius " : "radii "));
    line += length(element.startRadius) + (arc ? "" : words(" ～ ", " and ") + length(element.endRadius));
    line += words("）は", "");
    const bool winds = element.turns > kMostTurns;
    if (winds) {
        const std::string turns = std::isinf(element.turns) ? "" : turnsText(element.turns, words);
        line += turns.empty() ? words("無限に回転", ", turns infinitely often")
                              : words(turns + "回転", ", turns " + turns + " times");
    }
    if (element.lineTolerance > kLineTolerance) {
        const std::string tolerance = length(element.lineTolerance);
        line += words((winds ? "し、誤差 " : "誤差 ") + tolerance + " で図示", ", is drawn within " + tolerance);
    }
    return line + words("しています", "");
}

// Whether the line of an element may have more points than usual; an element of a survey hardly ever has.
bool mayHaveMany(const Element& element) {
    constexpr double kNearlyMany = 0.8 * static_cast<double>(drawing::kUsualElementPoints);
    const double sharpest = std::max(std::abs(element.startCurvature()), std::abs(element.endCurvature()));
    return !(element.length * std::sqrt(sharpest / (8.0 * kLineTolerance)) < kNearlyMany);
}

std::string moreUnusualLine(std::span<const UnusualElement> more, const Words& words) {
    const std::string count = std::to_string(more.size());
    return words(
        "線形「" + more[0].alignment + "」: ほかに" + count + "個の要素が何度も回転するか、粗く図示されています",
        "alignment " + more[0].alignment + ": " + count +
            (more.size() == 1 ? " more element winds or is" : " more elements wind or are") + " drawn coarsely");
}

std::string degrees(double angle) {
    return fixedReal(radiansToDegrees(std::abs(angle)), 2);
}

std::string jointLine(const BrokenJoint& joint, const Words& words) {
    const std::string station = metres(joint.station);
    const std::string angle = degrees(joint.angle);
    return words("線形「" + joint.alignment + "」: 追加距離 " + station + " の接続が " + angle + "° 折れています",
                 "alignment " + joint.alignment + ": the joint at station " + station + " is broken by " + angle +
                     " degrees") +
           words.remedy(joint.remedy);
}

std::string moreJointsLine(std::span<const BrokenJoint> more, const Words& words) {
    const std::string count = std::to_string(more.size());
    const auto worst = std::max_element(more.begin(), more.end(), [](const BrokenJoint& a, const BrokenJoint& b) {
        return std::abs(a.angle) < std::abs(b.angle);
    });
    const std::string angle = degrees(worst->angle);
    return words("線形「" + more[0].alignment + "」: ほかに" + count + "か所の接続が最大 " + angle + "° 折れています",
                 "alignment " + more[0].alignment + ": " + count +
                     (more.size() == 1 ? " more joint is" : " more joints are") + " broken, by up to " + angle +
                     " degrees");
}

// A line for each, but not for more than so many of one alignment: a traverse of straights breaks at every point. The
// others are counted in one more line.
template <typename Told>
void addLines(std::vector<NoteLine>& lines, std::string_view code, std::span<const Told> all, const Words& words,
              std::string (*lineOf)(const Told&, const Words&),
              std::string (*lineOfMore)(std::span<const Told>, const Words&)) {
    while (!all.empty()) {
        const auto end = std::find_if(all.begin(), all.end(),
                                      [&](const Told& told) { return told.alignment != all.front().alignment; });
        const auto count = static_cast<std::size_t>(end - all.begin());
        const std::size_t shown = std::min(count, kMostLinesOfAKind);
        for (const Told& told : all.first(shown)) {
            lines.push_back({code, lineOf(told, words)});
        }
        if (shown < count) {
            lines.push_back({code, lineOfMore(all.subspan(shown, count - shown), words)});
        }
        all = all.subspan(count);
    }
}

} // namespace

std::vector<UnusualElement> unusualElements(const Alignment& alignment, LinePoints& points) {
    std::vector<UnusualElement> unusual;
    double station = alignment.startStation;
    std::vector<PlanPoint> line;
    // Behind so many points of one alignment its elements have fewer each.
    const bool shared = alignment.elements.size() > drawing::kMostAlignmentPoints / kMostElementPoints;
    points.beginAlignment();
    for (const Element& element : alignment.elements) {
        if (element.type != ElementType::Straight) {
            const double turns = std::abs(element.turn()) / (2.0 * 3.141592653589793);
            double tolerance = kLineTolerance;
            if (shared || points.left() < kMostElementPoints || mayHaveMany(element)) {
                line.clear();
                tolerance = points.append(element, kLineTolerance, line);
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

std::string remedyAsOption(Remedy remedy, Language language) {
    const auto option = [&](const std::string& name) {
        return language == Language::Japanese ? "。" + name + " で直ることがあります" : "; " + name + " may mend it";
    };
    switch (remedy) {
    case Remedy::PositiveRadiusAuto:
        return option("--positive-radius auto");
    case Remedy::PositiveRadiusLeft:
        return option("--positive-radius left");
    case Remedy::PositiveRadiusRight:
        return option("--positive-radius right");
    case Remedy::PlanTangents:
        return option("--plan-tangents");
    case Remedy::None:
        break;
    }
    return "";
}

std::vector<NoteLine> noteLines(const LayoutNotes& notes, Language language, const RemedyText& remedyText) {
    const Words words(language, remedyText);
    std::vector<NoteLine> lines;
    if (notes.otherSense > 0) {
        const std::string count = std::to_string(notes.otherSense);
        lines.push_back({"other-sense", words(count + "個の要素を逆の曲がりとして配置しました",
                                              count + (notes.otherSense == 1 ? " element was" : " elements were") +
                                                  " taken with the other turning sense")});
    }
    for (const RefusedElement& element : notes.refused) {
        const std::string length = metres(element.length);
        const std::string reason = reasonOf(element, words);
        lines.push_back(
            {"breaks-off", words("線形「" + element.alignment + "」は " + length + " m で途切れています: " + reason,
                                 "alignment " + element.alignment + " breaks off after " + length + " m: " + reason)});
    }
    addLines(lines, "broken-joint", std::span<const BrokenJoint>(notes.brokenJoints), words, jointLine, moreJointsLine);
    for (const Misfit& misfit : notes.misfits) {
        const std::string distance = metres(misfit.distance);
        std::string text =
            misfit.atLeast
                ? words("線形「" + misfit.alignment + "」は路線の点から " + distance + " m 以上離れています",
                        "alignment " + misfit.alignment + " lies " + distance + " m or more off the route's points")
                : words("線形「" + misfit.alignment + "」は路線の点から最大 " + distance + " m 離れています",
                        "alignment " + misfit.alignment + " lies up to " + distance + " m off the route's points");
        if (misfit.heightsDiffer) {
            text +=
                words("。路線の点の標高が異なります", ", which differ in height") + words.remedy(Remedy::PlanTangents);
        }
        lines.push_back({"misfit", std::move(text)});
    }
    addLines(lines, "unusual-element", std::span<const UnusualElement>(notes.unusual), words, unusualLine,
             moreUnusualLine);
    return lines;
}

} // namespace fenmark::host::embedded
