// Writes lines as paths of a sheet. A line of very many points is more than one path.
#pragma once

#include "exchange/plan/plan.h"

#include <cmath>
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>

namespace fenmark::exchange {

// Whoever draws a path looks for crossings of all its sides with each other, also where nothing is filled; of a clothoid
// that winds up these grow with the square of its points.
inline constexpr std::size_t kMostPathPoints = 100;

class PathWriter {
  public:
    // Attributes are those of every path, without the quotation mark at the end: "class=\"tick". A closed line stays one
    // path, since it may be filled.
    PathWriter(std::ostream& out, std::string attributes, bool closed = false)
        : out_(out), attributes_(std::move(attributes)), closed_(closed) {
        open();
    }
    PathWriter(const PathWriter&) = delete;
    PathWriter& operator=(const PathWriter&) = delete;

    void moveTo(const PaperPoint& to) {
        if (isFull()) {
            finish();
            open();
        }
        drawn_ = 0.0;
        append('M', to);
    }
    void lineTo(const PaperPoint& to) {
        if (isFull()) {
            finish();
            open(" stroke-dashoffset=\"" + mm(drawn_) + '"'); // dashes go on as if it were one path
            append('M', last_);
        }
        drawn_ += std::hypot(to.x - last_.x, to.y - last_.y);
        append('L', to);
    }
    // No points come behind this.
    void finish() { out_ << (closed_ ? "Z\"/>\n" : "\"/>\n"); }

  private:
    bool isFull() const { return !closed_ && points_ >= kMostPathPoints; }
    void open(const std::string& further = {}) {
        out_ << "<path " << attributes_ << '"' << further << " d=\"";
        points_ = 0;
    }
    void append(char command, const PaperPoint& to) {
        out_ << command << mm(to.x) << ' ' << mm(to.y);
        last_ = to;
        ++points_;
    }

    std::ostream& out_;
    std::string attributes_;
    bool closed_;
    PaperPoint last_{};
    double drawn_ = 0.0; // millimetres since the line began
    std::size_t points_ = 0;
};

} // namespace fenmark::exchange
