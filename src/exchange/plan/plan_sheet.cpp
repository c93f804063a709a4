// The sheet of a plan: paper and scale.
#include "exchange/plan/plan_sheet.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace fenmark::exchange {

namespace {

constexpr double kMargin = 10.0;     // around the frame
constexpr double kPanelWidth = 62.0; // legend and title
constexpr double kLabelRoom = 14.0;  // left free on each side of the map for names
constexpr int kLargestOnA3 = 2500;   // a plan of a smaller scale takes larger paper
constexpr int kRoundScales[] = {10, 20, 50, 100, 200, 250, 300, 500, 600};
constexpr int kScaleOfAPoint = 100; // what has no size fits at every scale
constexpr int kSmallestScale = 50000000;

int roundScaleFor(double wanted) {
    if (!(wanted > 0.0)) {
        return kScaleOfAPoint;
    }
    // 10 to 600, then 1000 to 5000 and on in the steps that plans are drawn in.
    for (const int scale : kRoundScales) {
        if (wanted <= scale) {
            return scale;
        }
    }
    for (int decade = 1000; decade < kSmallestScale; decade *= 10) {
        for (const int tenths : {10, 12, 15, 20, 25, 30, 50}) {
            const int scale = decade / 10 * tenths;
            if (wanted <= scale) {
                return scale;
            }
        }
    }
    return kSmallestScale;
}

} // namespace

struct PlanSheet::Paper {
    const char* name;
    double longSide;
    double shortSide;
};

namespace {

constexpr double kSlack = 1e-9; // of a scale that is compared with the one that just fits

} // namespace

// A4 is taken only when it is asked for, and A0 only then or where a scale was chosen that needs it.
const PlanSheet::Paper& PlanSheet::paperNamed(const std::string& name) {
    static constexpr Paper kPapers[] = {
        {"A4", 297.0, 210.0}, {"A3", 420.0, 297.0}, {"A2", 594.0, 420.0}, {"A1", 841.0, 594.0}, {"A0", 1189.0, 841.0}};
    for (const Paper& paper : kPapers) {
        if (name == paper.name) {
            return paper;
        }
    }
    return kPapers[1];
}

void PlanSheet::takePaper(const Paper& paper, bool upright) {
    format_ = paper.name;
    width_ = upright ? paper.shortSide : paper.longSide;
    height_ = upright ? paper.longSide : paper.shortSide;
    panel_ = {width_ - kMargin - kPanelWidth, kMargin, kPanelWidth, height_ - 2.0 * kMargin};
    map_ = {kMargin, kMargin, panel_.x - kMargin, height_ - 2.0 * kMargin};
}

PlanSheet::PlanSheet(const drawing::Extent& extent, const SheetChoice& choice) {
    const double groundWidth = extent.empty() ? 0.0 : extent.maxX - extent.minX;
    const double groundHeight = extent.empty() ? 0.0 : extent.maxY - extent.minY;
    const bool upright = choice.upright.value_or(groundHeight > 1.35 * groundWidth);
    if (!extent.empty()) {
        middleX_ = (extent.minX + extent.maxX) / 2.0;
        middleY_ = (extent.minY + extent.maxY) / 2.0;
    }
    static const std::string kBySize[] = {"A3", "A2", "A1", "A0"};
    std::span<const std::string> papers(kBySize, choice.scale ? 4 : 3);
    if (choice.paper) {
        papers = std::span(&*choice.paper, 1);
    }
    for (const std::string& name : papers) {
        takePaper(paperNamed(name), upright);
        const double wanted = 1000.0 * std::max(groundWidth / (map_.width - 2.0 * kLabelRoom),
                                                groundHeight / (map_.height - 2.0 * kLabelRoom));
        scale_ = choice.scale ? *choice.scale : roundScaleFor(wanted);
        // A chosen scale may use the room for names too.
        const double least = 1000.0 * std::max(groundWidth / map_.width, groundHeight / map_.height) * (1.0 - kSlack);
        fits_ = !choice.scale || least <= *choice.scale;
        if (choice.scale ? fits_ : scale_ <= kLargestOnA3) {
            break;
        }
    }
}

PlanSheet::PlanSheet(const host::PlanPoint& middle, double direction, int scale, const std::string& paper, bool upright)
    : scale_(scale), middleX_(middle.x), middleY_(middle.y), rotation_(-direction), cosine_(std::cos(direction)),
      sine_(-std::sin(direction)) {
    takePaper(paperNamed(paper), upright);
}

PaperPoint PlanSheet::at(double x, double y) const {
    const double east = x - middleX_;
    const double north = y - middleY_;
    const double right = cosine_ * east - sine_ * north;
    const double up = sine_ * east + cosine_ * north;
    return {map_.x + map_.width / 2.0 + right * 1000.0 / scale_, map_.y + map_.height / 2.0 - up * 1000.0 / scale_};
}

host::PlanPoint PlanSheet::groundAt(const PaperPoint& paper) const {
    const double right = (paper.x - map_.x - map_.width / 2.0) * scale_ / 1000.0;
    const double up = -(paper.y - map_.y - map_.height / 2.0) * scale_ / 1000.0;
    return {middleX_ + cosine_ * right + sine_ * up, middleY_ - sine_ * right + cosine_ * up};
}

bool PlanSheet::shows(const drawing::Extent& extent) const {
    if (extent.empty()) {
        return false;
    }
    drawing::Extent onPaper;
    for (const double x : {extent.minX, extent.maxX}) {
        for (const double y : {extent.minY, extent.maxY}) {
            const PaperPoint corner = at(x, y);
            onPaper.add(corner.x, corner.y);
        }
    }
    return onPaper.maxX >= map_.x && onPaper.minX <= map_.right() && onPaper.maxY >= map_.y &&
           onPaper.minY <= map_.bottom();
}

} // namespace fenmark::exchange
