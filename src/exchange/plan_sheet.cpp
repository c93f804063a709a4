// The sheet of a plan: paper and scale.
#include "exchange/plan_sheet.h"

#include <algorithm>

namespace fenmark::exchange {

namespace {

constexpr double kMargin = 10.0;     // around the frame
constexpr double kPanelWidth = 62.0; // legend and title
constexpr double kLabelRoom = 14.0;  // left free on each side of the map for names
constexpr int kLargestOnA3 = 2500;   // a plan of a smaller scale takes larger paper
constexpr int kRoundScales[] = {10, 20, 50, 100, 200, 250, 300, 500, 600};
constexpr int kScaleOfAPoint = 100; // what has no size fits at every scale
constexpr int kSmallestScale = 50000000;

struct Paper {
    const char* name;
    double longSide;
    double shortSide;
};
constexpr Paper kPapers[] = {{"A3", 420.0, 297.0}, {"A2", 594.0, 420.0}, {"A1", 841.0, 594.0}};

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

PlanSheet::PlanSheet(const drawing::Extent& extent) {
    const double groundWidth = extent.empty() ? 0.0 : extent.maxX - extent.minX;
    const double groundHeight = extent.empty() ? 0.0 : extent.maxY - extent.minY;
    const bool upright = groundHeight > 1.35 * groundWidth;
    if (!extent.empty()) {
        middleX_ = (extent.minX + extent.maxX) / 2.0;
        middleY_ = (extent.minY + extent.maxY) / 2.0;
    }
    for (const Paper& paper : kPapers) {
        format_ = paper.name;
        width_ = upright ? paper.shortSide : paper.longSide;
        height_ = upright ? paper.longSide : paper.shortSide;
        panel_ = {width_ - kMargin - kPanelWidth, kMargin, kPanelWidth, height_ - 2.0 * kMargin};
        map_ = {kMargin, kMargin, panel_.x - kMargin, height_ - 2.0 * kMargin};
        scale_ = roundScaleFor(1000.0 * std::max(groundWidth / (map_.width - 2.0 * kLabelRoom),
                                                 groundHeight / (map_.height - 2.0 * kLabelRoom)));
        if (scale_ <= kLargestOnA3) {
            break;
        }
    }
}

PaperPoint PlanSheet::at(double x, double y) const {
    return {map_.x + map_.width / 2.0 + (x - middleX_) * 1000.0 / scale_,
            map_.y + map_.height / 2.0 - (y - middleY_) * 1000.0 / scale_};
}

host::PlanPoint PlanSheet::groundAt(const PaperPoint& paper) const {
    return {middleX_ + (paper.x - map_.x - map_.width / 2.0) * scale_ / 1000.0,
            middleY_ - (paper.y - map_.y - map_.height / 2.0) * scale_ / 1000.0};
}

} // namespace fenmark::exchange
