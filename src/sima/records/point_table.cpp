// The coordinate points read so far.
#include "sima/records/point_table.h"

#include "sima/records/large_allocator.h"
#include "sima/records/number_index.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace fenmark::sima {

struct PointTable::Store {
    std::vector<SimaPoint, LargeAllocator<SimaPoint>> points;
    NumberIndex index;

    void append(SimaPoint&& point) {
        index.add(point.number, static_cast<std::uint32_t>(points.size()));
        points.push_back(std::move(point));
    }
};

const SimaPoint& PointTable::operator[](std::size_t index) const {
    if (index >= count_) {
        throw std::invalid_argument("point index out of range");
    }
    return store_->points[index];
}

std::span<const SimaPoint> PointTable::from(std::size_t first) const {
    if (first > count_) {
        throw std::invalid_argument("point index out of range");
    }
    if (first == count_) {
        return {};
    }
    return std::span<const SimaPoint>(store_->points).subspan(first, count_ - first);
}

void PointTable::append(SimaPoint&& point) {
    if (!store_) {
        store_ = std::make_shared<Store>();
    } else if (count_ != store_->points.size()) {
        // Another table that shares the store has gone on: part from it.
        auto own = std::make_shared<Store>();
        for (const SimaPoint& shared : all()) {
            own->append(SimaPoint(shared));
        }
        store_ = std::move(own);
    }
    store_->append(std::move(point));
    ++count_;
}

void PointTable::expect(std::size_t points) {
    if (store_) {
        return;
    }
    store_ = std::make_shared<Store>();
    try {
        store_->points.reserve(points);
        store_->index.expect(points);
    } catch (const std::bad_alloc&) {
        // The points come one by one then, and may still fit.
    }
}

void PointTable::clear() {
    store_.reset();
    count_ = 0;
}

const SimaPoint* PointTable::find(std::int32_t number) const {
    const auto place = placeOf(number);
    return place ? &store_->points[*place] : nullptr;
}

std::optional<std::uint32_t> PointTable::placeOf(std::int32_t number) const {
    if (count_ == 0) {
        return std::nullopt;
    }
    const auto places = store_->index.find(number);
    if (!places || places->first >= count_) {
        return std::nullopt;
    }
    return places->first;
}

bool PointTable::hasFrom(std::size_t first, std::int32_t number) const {
    if (count_ == 0) {
        return false;
    }
    const auto places = store_->index.find(number);
    return places && places->last >= first;
}

} // namespace fenmark::sima
