// Points and lines of a DXF file: POINT, LINE, LWPOLYLINE, POLYLINE, ARC and CIRCLE of its entities, as text (not binary).
#include "desk/background/shapes.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <optional>
#include <string>

namespace fenmark::desk {

using host::PlanPoint;

namespace {

constexpr double kArcStep = std::numbers::pi / 36.0; // between two points of a drawn arc

struct Group {
    int code = 0;
    std::string_view value;
};

// Pairs of lines: a code and its value.
class Groups {
  public:
    explicit Groups(std::string_view text) : rest_(text) {}

    std::optional<Group> next() {
        const auto code = line();
        const auto value = line();
        if (!code || !value) {
            return std::nullopt;
        }
        Group group{0, *value};
        const auto [end, error] = std::from_chars(code->data(), code->data() + code->size(), group.code);
        if (error != std::errc()) {
            broken_ = true;
            return std::nullopt;
        }
        return group;
    }
    bool broken() const { return broken_; }

  private:
    std::optional<std::string_view> line() {
        if (rest_.empty()) {
            return std::nullopt;
        }
        const std::size_t end = rest_.find('\n');
        std::string_view found = rest_.substr(0, end);
        rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
        while (!found.empty() && (found.back() == '\r' || found.back() == ' ' || found.back() == '\t')) {
            found.remove_suffix(1);
        }
        while (!found.empty() && (found.front() == ' ' || found.front() == '\t')) {
            found.remove_prefix(1);
        }
        return found;
    }

    std::string_view rest_;
    bool broken_ = false;
};

double numberOf(std::string_view text) {
    double value = std::nan("");
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? value : std::nan("");
}

// A circle's part from one angle to another, anticlockwise.
void appendArc(std::vector<PlanPoint>& line, const PlanPoint& centre, double radius, double from, double to) {
    const int steps = std::max(2, static_cast<int>(std::ceil(std::abs(to - from) / kArcStep)));
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (to - from) * i / steps;
        line.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
}

// From a to b with a bulge: the tangent of a quarter of the angle that the arc turns, positive to the left.
void appendBulge(std::vector<PlanPoint>& line, const PlanPoint& a, const PlanPoint& b, double bulge) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    if (bulge == 0.0 || !std::isfinite(bulge) || (dx == 0.0 && dy == 0.0)) {
        line.push_back(b);
        return;
    }
    // The centre lies on the chord's perpendicular, to the left for a bulge below 1.
    const double away = (1.0 - bulge * bulge) / (4.0 * bulge);
    const PlanPoint centre{(a.x + b.x) / 2.0 - away * dy, (a.y + b.y) / 2.0 + away * dx};
    const double radius = std::hypot(a.x - centre.x, a.y - centre.y);
    const double from = std::atan2(a.y - centre.y, a.x - centre.x);
    std::vector<PlanPoint> arc;
    appendArc(arc, centre, radius, from, from + 4.0 * std::atan(bulge));
    arc.back() = b;
    line.insert(line.end(), arc.begin() + 1, arc.end());
}

class Entities {
  public:
    explicit Entities(BackgroundShapes& shapes) : shapes_(shapes) {}

    void begin(std::string_view type) {
        end();
        type_ = type;
        if (type == "POLYLINE") {
            vertices_.clear();
            inPolyline_ = true;
            flags_ = 0;
        } else if (type == "SEQEND") {
            endPolyline();
        } else if (type != "VERTEX") {
            endPolyline();
            vertices_.clear();
            flags_ = 0;
        }
        first_ = second_ = {};
        radius_ = bulge_ = startAngle_ = 0.0;
        endAngle_ = 360.0;
    }

    void take(const Group& group) {
        switch (group.code) {
        case 10:
            first_.x = numberOf(group.value);
            break;
        case 20:
            first_.y = numberOf(group.value);
            if (type_ == "LWPOLYLINE") {
                vertices_.push_back({first_, 0.0});
            }
            break;
        case 11:
            second_.x = numberOf(group.value);
            break;
        case 21:
            second_.y = numberOf(group.value);
            break;
        case 40:
            radius_ = numberOf(group.value);
            break;
        case 42:
            bulge_ = numberOf(group.value);
            if (type_ == "LWPOLYLINE" && !vertices_.empty()) {
                vertices_.back().bulge = bulge_;
            }
            break;
        case 50:
            startAngle_ = numberOf(group.value);
            break;
        case 51:
            endAngle_ = numberOf(group.value);
            break;
        case 70:
            if (type_ == "LWPOLYLINE" || type_ == "POLYLINE") {
                flags_ = std::atoi(std::string(group.value).c_str());
            }
            break;
        default:
            break;
        }
    }

    // The entity that was read so far is complete.
    void end() {
        if (type_ == "POINT") {
            shapes_.addPoint(first_);
        } else if (type_ == "LINE") {
            shapes_.addLine({first_, second_});
        } else if (type_ == "CIRCLE" || type_ == "ARC") {
            constexpr double kDegree = std::numbers::pi / 180.0;
            double to = type_ == "CIRCLE" ? 360.0 : endAngle_;
            const double from = type_ == "CIRCLE" ? 0.0 : startAngle_;
            if (to <= from) {
                to += 360.0;
            }
            std::vector<PlanPoint> line;
            if (std::isfinite(from) && std::isfinite(to) && to - from <= 720.0) {
                appendArc(line, first_, radius_, from * kDegree, to * kDegree);
            }
            shapes_.addLine(std::move(line));
        } else if (type_ == "LWPOLYLINE") {
            addPolyline();
        } else if (type_ == "VERTEX" && inPolyline_) {
            vertices_.push_back({first_, bulge_});
        } else if (!type_.empty() && type_ != "POLYLINE" && type_ != "SEQEND") {
            ++shapes_.leftOut;
        }
        type_ = {};
    }

    void finish() {
        end();
        endPolyline();
    }

  private:
    struct Vertex {
        PlanPoint at;
        double bulge = 0.0; // to the next one
    };

    void endPolyline() {
        if (inPolyline_) {
            addPolyline();
            inPolyline_ = false;
        }
    }

    void addPolyline() {
        std::vector<PlanPoint> line;
        if (!vertices_.empty()) {
            line.push_back(vertices_.front().at);
        }
        for (std::size_t i = 0; i + 1 < vertices_.size(); ++i) {
            appendBulge(line, vertices_[i].at, vertices_[i + 1].at, vertices_[i].bulge);
        }
        if ((flags_ & 1) != 0 && vertices_.size() > 1) {
            appendBulge(line, vertices_.back().at, vertices_.front().at, vertices_.back().bulge);
        }
        shapes_.addLine(std::move(line));
        vertices_.clear();
    }

    BackgroundShapes& shapes_;
    std::string_view type_;
    PlanPoint first_;
    PlanPoint second_;
    double radius_ = 0.0;
    double bulge_ = 0.0;
    double startAngle_ = 0.0; // degrees
    double endAngle_ = 360.0;
    int flags_ = 0;
    bool inPolyline_ = false;
    std::vector<Vertex> vertices_;
};

} // namespace

BackgroundRead readDxf(std::string_view text) {
    BackgroundRead read;
    Groups groups(text);
    Entities entities(read.shapes);
    bool inEntities = false;
    bool any = false;
    std::string_view before;
    while (const auto group = groups.next()) {
        if (group->code == 2 && before == "SECTION") {
            inEntities = group->value == "ENTITIES";
            any = true;
        } else if (group->code == 0 && inEntities) {
            if (group->value == "ENDSEC") {
                inEntities = false;
                entities.finish();
            } else {
                entities.begin(group->value);
            }
        } else if (inEntities) {
            entities.take(*group);
        }
        before = group->code == 0 ? group->value : std::string_view();
    }
    if (groups.broken() || !any) {
        read.error = BackgroundError::NotThisFormat;
    } else if (inEntities) {
        entities.finish(); // the file was cut off: what is there is shown
    }
    return read;
}

} // namespace fenmark::desk
