// The spatial index of one layer of the drawing.
#include "drawing/geopackage/spatial_index.h"

#include "drawing/geopackage/row_source.h"
#include "drawing/geopackage/spatial_index_schema.h"
#include "platform/beside.h"

#include <algorithm>
#include <utility>

namespace fenmark::drawing {

namespace {

// A box that goes through the module takes as long as some thirty boxes of a tree that is packed.
constexpr std::int64_t kInsertCost = 32;
// The module's nodes hold so many boxes, but for pages of less than 2 KiB.
constexpr std::size_t kUsualCells = 51;
// What fewer features take is less than a thread costs.
constexpr std::uint64_t kFewFeatures = 20'000;

// The leaf of each feature.
class LeafRows : public RowSource {
  public:
    LeafRows(const std::vector<TreeEntry>& entries, const std::vector<NodeNumber>& leaves, RowCounter& counter)
        : entries_(entries), leaves_(leaves), counter_(counter) {}

    bool next() override {
        if (++row_ > entries_.size()) {
            return false;
        }
        counter_.count();
        return true;
    }
    void column(int index, const ColumnSink& sink) override {
        sink.integer(index == 0 ? entries_[row_ - 1].id : leaves_[row_ - 1]);
    }

  private:
    const std::vector<TreeEntry>& entries_;
    const std::vector<NodeNumber>& leaves_;
    RowCounter& counter_;
    std::size_t row_ = 0; // counts from 1
};

} // namespace

SpatialIndex::SpatialIndex(Connection& connection, const char* layer, RowCounter& counter)
    : connection_(connection), layer_(layer), counter_(counter) {}

std::string SpatialIndex::named(const char* sql) const {
    std::string text;
    for (const char* at = sql; *at != '\0'; ++at) {
        if (*at == '@') {
            text += layer_;
        } else {
            text += *at;
        }
    }
    return text;
}

std::int64_t SpatialIndex::ask(const char* sql) const {
    Statement row(connection_, named(sql).c_str());
    return row.step() ? row.integer(0) : 0;
}

void SpatialIndex::beginNew(std::uint64_t coming) {
    if (ask(sql::kHasModule) == 0) {
        return;
    }
    isNew_ = true;
    way_ = Way::Pack;
    expect(coming);
}

// A table that another program put in the place of the index is let alone.
bool SpatialIndex::hasIndex() const {
    Statement row(connection_, named(sql::kReadIndexStatement).c_str());
    if (!row.step()) {
        return false;
    }
    std::string text(row.text(0));
    std::erase_if(text, [](char c) { return c == ' ' || c == '"' || c == '\n' || c == '\t' || c == '\r'; });
    return text == named(sql::kIndexStatement);
}

void SpatialIndex::move(std::int64_t from, std::int64_t to) {
    if (hasIndex()) {
        Statement(connection_, named(sql::kMoveOne).c_str()).bind(1, from).bind(2, to).run();
    }
}

void SpatialIndex::removeAll(const char* query) {
    if (!hasIndex()) {
        return;
    }
    std::vector<std::int64_t> ids;
    Statement rows(connection_, query);
    while (rows.step()) {
        ids.push_back(rows.integer(0));
    }
    Statement remove(connection_, named(sql::kDeleteOne).c_str());
    for (const std::int64_t id : ids) {
        remove.bind(1, id).run();
    }
}

void SpatialIndex::beginChange(std::uint64_t keptTo, std::uint64_t coming, std::span<const IdRange> removed) {
    // A drawing of an earlier version, or one whose index was dropped in a GIS, stays without.
    if (!hasIndex()) {
        return;
    }
    keptTo_ = static_cast<std::int64_t>(keptTo);
    readRemoved(removed);
    const std::int64_t changed =
        countStale() + static_cast<std::int64_t>(removed_.size()) + static_cast<std::int64_t>(coming);
    if (changed == 0) {
        return;
    }
    const auto cells = (ask(sql::kNodeSize) - static_cast<std::int64_t>(kNodeHead)) / std::int64_t{kCellSize};
    way_ = changed * kInsertCost > ask(sql::kLastNode) * cells ? Way::Pack : Way::Insert;
    if (way_ == Way::Pack) {
        entries_.reserve(static_cast<std::size_t>(ask(sql::kCountBoxes)) + static_cast<std::size_t>(coming));
        readKept();
    } else {
        Statement(connection_, named(sql::kDeleteFromIndex).c_str()).bind(1, keptTo_).run();
        Statement remove(connection_, named(sql::kDeleteOne).c_str());
        for (const std::int64_t id : removed_) {
            remove.bind(1, id).run();
        }
    }
    expect(coming);
}

void SpatialIndex::readRemoved(std::span<const IdRange> removed) {
    for (const IdRange& range : removed) {
        Statement rows(connection_, named(sql::kReadRemoved).c_str());
        rows.bind(1, static_cast<std::int64_t>(range.first))
            .bind(2, static_cast<std::int64_t>(range.last))
            .bind(3, static_cast<std::int64_t>(range.import));
        while (rows.step()) {
            removed_.push_back(rows.integer(0));
        }
    }
    std::sort(removed_.begin(), removed_.end());
}

// Boxes to write, with those that are kept.
void SpatialIndex::expect(std::uint64_t coming) {
    entries_.reserve(entries_.size() + static_cast<std::size_t>(coming));
    counter_.expect(entries_.size() + coming);
}

std::int64_t SpatialIndex::countStale() const {
    Statement row(connection_, named(sql::kCountStale).c_str());
    return row.bind(1, keptTo_).step() ? row.integer(0) : 0;
}

// The module gives its boxes in the tree's order; leaves are written in that of the features.
void SpatialIndex::readKept() {
    Statement rows(connection_, named(sql::kReadIndex).c_str());
    while (rows.step()) {
        if (rows.integer(0) <= keptTo_ && !std::binary_search(removed_.begin(), removed_.end(), rows.integer(0))) {
            entries_.push_back({rows.integer(0),
                                {static_cast<float>(rows.real(1)), static_cast<float>(rows.real(2)),
                                 static_cast<float>(rows.real(3)), static_cast<float>(rows.real(4))}});
        }
    }
    std::sort(entries_.begin(), entries_.end(), [](const TreeEntry& a, const TreeEntry& b) { return a.id < b.id; });
}

void SpatialIndex::add(std::int64_t id, const Extent& extent) {
    if (way_ != Way::None && !extent.empty()) {
        entries_.push_back({id, roundedOut(extent)});
    }
}

void SpatialIndex::gather(const Gather& gather, std::uint64_t features) {
    if (way_ == Way::None) {
        return;
    }
    const auto addAll = [this, gather] { gather([this](std::int64_t id, const Extent& extent) { add(id, extent); }); };
    if (way_ == Way::Insert || features <= kFewFeatures) {
        return addAll();
    }
    gathered_ = platform::startBeside([this, addAll] {
        addAll();
        return leafOrder(entries_, kUsualCells);
    });
}

void SpatialIndex::finish() {
    if (way_ == Way::None) {
        return;
    }
    std::vector<std::uint64_t> order;
    if (gathered_.valid()) {
        order = gathered_.get();
    }
    if (way_ == Way::Insert) {
        Statement insert(connection_, named(sql::kInsertIntoIndex).c_str());
        for (const TreeEntry& entry : entries_) {
            insert.bind(1, entry.id)
                .bindEndless(2, double{entry.box.minX})
                .bindEndless(3, double{entry.box.maxX})
                .bindEndless(4, double{entry.box.minY})
                .bindEndless(5, double{entry.box.maxY})
                .run();
            counter_.count();
        }
    } else {
        const ShadowTablesOpen open(connection_);
        if (!isNew_) {
            execute(sql::kDropIndex);
        }
        execute(sql::kCreateIndex);
        pack(std::move(order));
    }
    if (isNew_) {
        execute(sql::kCreateIndexTriggers);
        execute(sql::kDeclareIndex);
    }
    entries_ = {};
}

void SpatialIndex::pack(std::vector<std::uint64_t> order) {
    if (entries_.empty()) {
        return; // the module made an empty root
    }
    Statement insertNode(connection_, named(sql::kInsertNode).c_str());
    Statement insertParent(connection_, named(sql::kInsertParent).c_str());
    const auto nodeSize = static_cast<std::size_t>(ask(sql::kNodeSize));
    if (order.empty() || cellsOf(nodeSize) != kUsualCells) {
        order = leafOrder(entries_, cellsOf(nodeSize));
    }
    TreeSink sink;
    sink.node = [&](NodeNumber node, std::span<const std::byte> bytes) {
        insertNode.bind(1, std::int64_t{node}).bind(2, bytes).run();
    };
    sink.parent = [&](NodeNumber node, NodeNumber parent) {
        insertParent.bind(1, std::int64_t{node}).bind(2, std::int64_t{parent}).run();
    };
    const std::vector<NodeNumber> leaves = packTree(entries_, std::move(order), nodeSize, sink);
    LeafRows rows(entries_, leaves, counter_);
    insertRows(connection_, named(sql::kInsertLeaves).c_str(), sql::kLeafColumns, rows);
}

} // namespace fenmark::drawing
