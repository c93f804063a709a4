// The outline of a lot.
#include "sima/records/lot_points.h"

#include <stdexcept>
#include <utility>

namespace fenmark::sima {

LotPoints::LotPoints(std::initializer_list<SimaPoint> points) {
    ownPoints() = points;
    count_ = points.size();
}

const SimaPoint& LotPoints::operator[](std::size_t index) const {
    if (index >= count_) {
        throw std::invalid_argument("array index out of range");
    }
    if (!outlines_->own_.empty()) {
        return outlines_->own_[index];
    }
    return outlines_->table_[outlines_->places_[first_ + index]];
}

SimaPoint& LotPoints::operator[](std::size_t index) {
    if (index >= count_) {
        throw std::invalid_argument("array index out of range");
    }
    return ownPoints()[index];
}

void LotPoints::push_back(SimaPoint point) {
    ownPoints().push_back(std::move(point));
    ++count_;
}

void LotPoints::resize(std::size_t count) {
    ownPoints().resize(count);
    count_ = count;
}

// The points as this lot's alone, copied unless they are that already.
std::vector<SimaPoint>& LotPoints::ownPoints() {
    const bool alone = outlines_ && outlines_.use_count() == 1 && outlines_->own_.size() == count_;
    if (!alone || count_ == 0) {
        auto outlines = std::make_shared<LotOutlines>();
        outlines->own_.assign(begin(), end());
        outlines_ = std::move(outlines);
        first_ = 0;
    }
    return outlines_->own_;
}

void LotOutlines::open(const PointTable& table) {
    if (table.size() != table_.size()) {
        table_ = table;
    }
    first_ = places_.size();
}

LotPoints LotOutlines::close(const std::shared_ptr<LotOutlines>& outlines) {
    LotPoints points;
    points.outlines_ = outlines;
    points.first_ = outlines->first_;
    points.count_ = outlines->size();
    return points;
}

} // namespace fenmark::sima
