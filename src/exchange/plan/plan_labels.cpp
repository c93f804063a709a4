// Where names stand on a plan.
#include "exchange/plan/plan_labels.h"

#include "sima/text/utf8.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fenmark::exchange {

namespace {

constexpr const char* kEllipsis = "…";
constexpr double kCell = 0.5;         // millimetres
constexpr double kStepsBeside = 16.0; // of a line, more than cross the map
constexpr double kNarrow = 0.55;      // ems that a Latin letter takes
constexpr double kHalfWidth = 0.5;    // ems that half-width kana take
constexpr double kTextHeight = 0.9;   // of the em that the letters fill

} // namespace

double widthInEms(std::string_view text) {
    double ems = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            ems += kNarrow;
        } else if (c >= 0xC0) {
            // Half-width kana are U+FF61 to U+FF9F: EF BD A1 to EF BE 9F.
            const bool halfWidth =
                c == 0xEF && i + 1 < text.size() &&
                (static_cast<unsigned char>(text[i + 1]) == 0xBD || static_cast<unsigned char>(text[i + 1]) == 0xBE);
            ems += halfWidth ? kHalfWidth : 1.0;
        }
    }
    return ems;
}

std::string cutToEms(std::string_view text, double ems) {
    if (widthInEms(text) <= ems) {
        return std::string(text);
    }
    double room = ems - widthInEms(kEllipsis);
    std::string_view rest = text;
    std::size_t taken = 0;
    while (room >= 0.0 && !rest.empty()) {
        taken = text.size() - rest.size();
        sima::takeCharacter(rest);
        room -= widthInEms(text.substr(taken, text.size() - rest.size() - taken));
    }
    return std::string(text.substr(0, taken)) + kEllipsis;
}

LabelSpace::LabelSpace(const Rect& map)
    : map_(map), columns_(static_cast<std::size_t>(map.width / kCell) + 1),
      rows_(static_cast<std::size_t>(map.height / kCell) + 1), cells_(columns_ * rows_) {}

std::size_t LabelSpace::cellAt(double x, double y) const {
    if (!(x >= map_.x && x <= map_.right() && y >= map_.y && y <= map_.bottom())) {
        return cells_.size();
    }
    return static_cast<std::size_t>((y - map_.y) / kCell) * columns_ + static_cast<std::size_t>((x - map_.x) / kCell);
}

template <typename Function>
bool LabelSpace::eachCell(const Label& label, Function function) const {
    const double length = widthInEms(label.text) * label.size;
    const double height = kTextHeight * label.size;
    const double begin = label.anchor == Label::Anchor::Start    ? 0.0
                         : label.anchor == Label::Anchor::Middle ? -length / 2.0
                                                                 : -length;
    const double cosine = std::cos(label.angle * std::numbers::pi / 180.0);
    const double sine = std::sin(label.angle * std::numbers::pi / 180.0);
    const int along = std::max(1, static_cast<int>(std::ceil(length / kCell)));
    const int across = std::max(1, static_cast<int>(std::ceil(height / kCell)));
    for (int i = 0; i <= along; ++i) {
        for (int j = 0; j <= across; ++j) {
            const double u = begin + length * i / along;
            const double v = height * (static_cast<double>(j) / across - 0.5);
            if (!function(cellAt(label.at.x + u * cosine - v * sine, label.at.y + u * sine + v * cosine))) {
                return false;
            }
        }
    }
    return true;
}

bool LabelSpace::isFree(const Label& label, bool offLines) const {
    const std::uint8_t blocking = offLines ? kLine | kLabel : kLabel;
    return eachCell(label, [&](std::size_t cell) { return cell < cells_.size() && (cells_[cell] & blocking) == 0; });
}

bool LabelSpace::mayHold(const PaperPoint& at, double away) const {
    const double slack = away + kCell;
    return at.x >= map_.x - slack && at.x <= map_.right() + slack && at.y >= map_.y - slack &&
           at.y <= map_.bottom() + slack;
}

void LabelSpace::take(const Label& label) {
    eachCell(label, [&](std::size_t cell) {
        if (cell < cells_.size()) {
            cells_[cell] |= kLabel;
        }
        return true;
    });
}

const Label* LabelSpace::takeFirst(const std::vector<Label>& candidates, bool offLinesOnly) {
    for (const bool offLines : {true, false}) {
        if (!offLines && offLinesOnly) {
            break;
        }
        for (const Label& candidate : candidates) {
            if (isFree(candidate, offLines)) {
                take(candidate);
                return &candidate;
            }
        }
    }
    return nullptr;
}

void LabelSpace::takeDot(const PaperPoint& at, double radius) {
    const int steps = static_cast<int>(std::ceil(radius / kCell));
    for (int i = -steps; i <= steps; ++i) {
        for (int j = -steps; j <= steps; ++j) {
            const std::size_t cell = cellAt(at.x + radius * i / steps, at.y + radius * j / steps);
            if (cell < cells_.size()) {
                cells_[cell] |= kLine;
            }
        }
    }
}

void LabelSpace::takeLine(const PaperPoint& from, const PaperPoint& to) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double step = kCell / 2.0;
    const double count = std::floor(std::hypot(dx, dy) / step) + 1.0;
    // Of the steps from one end to the other only those near the map.
    double first = 0.0;
    double last = count;
    const auto clip = [&](double start, double length, double low, double high) {
        if (length == 0.0) {
            last = start >= low - step && start <= high + step ? last : -1.0;
            return;
        }
        const double enters = ((length > 0.0 ? low - step : high + step) - start) / length;
        const double leaves = ((length > 0.0 ? high + step : low - step) - start) / length;
        first = std::max(first, std::floor(enters * count));
        last = std::min(last, std::ceil(leaves * count));
    };
    clip(from.x, dx, map_.x, map_.right());
    clip(from.y, dy, map_.y, map_.bottom());
    // No more than cross the map: beyond 2^53 reals do not count up, and a line without end has no steps.
    const double most = (map_.width + map_.height) / step + kStepsBeside;
    const long steps = last >= first ? static_cast<long>(std::min(last - first, most)) : -1;
    for (long i = 0; i <= steps; ++i) {
        const double part = (first + static_cast<double>(i)) / count;
        const std::size_t cell = cellAt(from.x + part * dx, from.y + part * dy);
        if (cell < cells_.size()) {
            cells_[cell] |= kLine;
        }
    }
}

} // namespace fenmark::exchange
