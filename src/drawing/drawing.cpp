// The embedded host's drawing in memory.
#include "drawing/drawing.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace fenmark::drawing {

namespace {

// From so many elements of an alignment on, room is taken for a quarter more and not for twice as many: a million of them
// take 80 MB, and nearly as much room lay idle.
constexpr std::size_t kManyElements = 4096;

template <typename Items>
std::optional<std::size_t> findName(const Items& items, std::string_view name) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].name == name) {
            return i;
        }
    }
    return std::nullopt;
}

// Items stand in the order of their identifiers.
template <typename Items>
std::optional<std::size_t> findId(const Items& items, MdDbObjectId id) {
    const auto found = std::lower_bound(items.begin(), items.end(), id,
                                        [](const auto& item, MdDbObjectId key) { return item.id < key; });
    if (found == items.end() || found->id != id) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - items.begin());
}

// Takes the items behind the first ones off the list.
template <typename Item>
std::vector<Item> cutItems(std::vector<Item>& items, std::size_t left) {
    const auto from = items.begin() + static_cast<std::ptrdiff_t>(left);
    std::vector<Item> cut(std::make_move_iterator(from), std::make_move_iterator(items.end()));
    items.erase(from, items.end());
    return cut;
}

template <typename Item>
void putItems(std::vector<Item>& items, std::vector<Item>&& more) {
    items.insert(items.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace

double Alignment::length() const {
    double sum = 0.0;
    for (const Element& element : elements) {
        sum += element.length;
    }
    return sum;
}

void Extent::add(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return;
    }
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
}

void Extent::add(const Extent& other) {
    if (!other.empty()) {
        add(other.minX, other.minY);
        add(other.maxX, other.maxY);
    }
}

Extent extentOf(const Element& element) {
    Extent extent;
    extent.add(element.start.x, element.start.y);
    extent.add(element.end.x, element.end.y);
    if (const std::optional<ElementBox> box = boxOfElement(element)) {
        extent.add(box->minX, box->minY);
        extent.add(box->maxX, box->maxY);
    }
    return extent;
}

Drawing::Drawing() {
    addLayer(kFirstLayer);
}

// --- reading ---

std::optional<std::size_t> Drawing::findLayer(std::string_view name) const {
    // Most objects of an import lie on one layer, and it was looked for just now.
    if (recentLayer_ < layers_.size() && layers_[recentLayer_].name == name) {
        return recentLayer_;
    }
    const std::optional<std::size_t> found = findName(layers_, name);
    if (found) {
        recentLayer_ = *found;
    }
    return found;
}

std::optional<std::size_t> Drawing::findLayer(MdDbObjectId id) const {
    return findId(layers_, id);
}

std::optional<std::size_t> Drawing::findSite(std::string_view name) const {
    return findName(sites_, name);
}

std::optional<std::size_t> Drawing::findSite(MdDbObjectId id) const {
    return findId(sites_, id);
}

std::optional<std::size_t> Drawing::findTable(std::string_view name) const {
    return findName(tables_, name);
}

std::optional<std::size_t> Drawing::findAlignment(MdDbObjectId id) const {
    const auto found =
        std::lower_bound(alignments_.begin(), alignments_.end(), id,
                         [](const StoredAlignment& item, MdDbObjectId key) { return item.alignment.id < key; });
    if (found == alignments_.end() || found->alignment.id != id) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - alignments_.begin());
}

bool Drawing::has(MdDbObjectId id) const {
    return findEntity(id) || findAlignment(id) || findLayer(id) || findSite(id) || findId(tables_, id);
}

std::optional<std::size_t> Drawing::findEntity(MdDbObjectId id) const {
    if (entities_ == 0) {
        return std::nullopt;
    }
    std::size_t low = 0;
    std::size_t high = entities_ - 1;
    if (record(high).id == id.asUint64()) {
        return high; // the one made last is asked for most
    }
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (record(middle).id < id.asUint64()) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    if (record(low).id != id.asUint64()) {
        return std::nullopt;
    }
    return low;
}

std::vector<std::size_t> Drawing::layerCounts() const {
    std::vector<std::size_t> counts(layers_.size());
    for (std::size_t i = 0; i < entities_; ++i) {
        ++counts[record(i).layer];
    }
    for (const StoredAlignment& stored : alignments_) {
        if (const std::optional<std::size_t> layer = findLayer(stored.alignment.layer)) {
            ++counts[*layer];
        }
    }
    return counts;
}

const Drawing::EntityRecord& Drawing::record(std::size_t index) const {
    return records_.run((static_cast<std::uint64_t>(index / kRecordBlock) << 32) | index % kRecordBlock, 1).front();
}

Drawing::EntityRecord& Drawing::record(std::size_t index) {
    return records_.run((static_cast<std::uint64_t>(index / kRecordBlock) << 32) | index % kRecordBlock, 1).front();
}

EntityView Drawing::entity(std::size_t index) const {
    const EntityRecord& item = record(index);
    EntityView view;
    view.id = MdDbObjectId(item.id);
    view.kind = static_cast<EntityKind>(item.kind);
    view.closed = item.closed != 0;
    view.layer = layers_[item.layer].name;
    view.vertices = vertices_.run(item.vertices, item.vertexCount);
    if (item.row != kNoRow) {
        const RowRecord& row = rows_.run(item.row, 1).front();
        view.row = RowView{tables_[row.table].name, row.no, texts_.view(row.name), texts_.view(row.type),
                           texts_.view(row.fileName)};
    }
    return view;
}

bool Drawing::isPoint(std::size_t index) const {
    return static_cast<EntityKind>(record(index).kind) == EntityKind::Point;
}

Extent Drawing::entityExtent(std::size_t index) const {
    const EntityRecord& item = record(index);
    Extent extent;
    for (const MdGePoint3d& vertex : vertices_.run(item.vertices, item.vertexCount)) {
        extent.add(vertex.x, vertex.y);
    }
    return extent;
}

const AlignmentGeometry& Drawing::geometry(std::size_t index) const {
    const StoredAlignment& stored = alignments_[index];
    if (!stored.geometry) {
        stored.geometry = std::make_unique<AlignmentGeometry>(stored.alignment.elements, stored.alignment.startStation);
    }
    return *stored.geometry;
}

std::vector<std::size_t> Drawing::importsOf(std::string_view fileName) const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < imports_.size(); ++i) {
        if (imports_[i].fileName == fileName) {
            found.push_back(i);
        }
    }
    return found;
}

// An import's own identifier follows those of its objects, so the one that made an object is the first beyond it.
MdDbObjectId Drawing::importOf(MdDbObjectId object) const {
    const auto found =
        std::lower_bound(imports_.begin(), imports_.end(), object,
                         [](const Import& import, MdDbObjectId key) { return import.lastId < key.asUint64(); });
    const bool made = found != imports_.end() && found->firstId <= object.asUint64();
    return made ? found->id : MdDbObjectId();
}

// --- making ---

void Drawing::touchEntity(std::uint64_t id) {
    unsaved_.entities = std::min(unsaved_.entities, id - 1);
}

void Drawing::touchOther(MdDbObjectId id) {
    unsaved_.others = std::min(unsaved_.others, id.asUint64() - 1);
}

MdDbObjectId Drawing::addLayer(std::string_view name) {
    std::string text = readableText(name);
    if (const std::optional<std::size_t> found = findLayer(text)) {
        return layers_[*found].id;
    }
    layers_.push_back({nextId(), std::move(text)});
    return layers_.back().id;
}

void Drawing::setCurrentLayer(std::size_t index) {
    currentLayer_ = index;
    unsaved_.settings = true;
}

bool Drawing::mayBecomeLayers(const std::vector<Layer>& layers) const {
    std::vector<std::string_view> names;
    std::uint64_t before = 0;
    for (const Layer& layer : layers) {
        if (layer.name.empty() || layer.id.asUint64() <= before || layer.id.asUint64() > lastId_) {
            return false;
        }
        before = layer.id.asUint64();
        names.push_back(layer.name);
    }
    std::sort(names.begin(), names.end());
    if (names.empty() || std::adjacent_find(names.begin(), names.end()) != names.end()) {
        return false;
    }
    const auto stays = [&](const Layer& layer) { return findId(layers, layer.id).has_value(); };
    if (std::all_of(layers_.begin(), layers_.end(), stays)) {
        return true;
    }
    const std::vector<std::size_t> counts = layerCounts();
    for (std::size_t i = 0; i < layers_.size(); ++i) {
        if (!stays(layers_[i]) && (!entitiesLoaded_ || counts[i] > 0 || i == currentLayer_)) {
            return false;
        }
    }
    return true;
}

bool Drawing::setLayers(std::vector<Layer> layers) {
    for (Layer& layer : layers) {
        layer.name = readableText(layer.name);
    }
    if (!mayBecomeLayers(layers)) {
        return false;
    }
    std::vector<std::uint32_t> places; // of the layers that were, among those that come
    bool moved = false;
    for (std::size_t i = 0; i < layers_.size(); ++i) {
        const std::size_t place = findId(layers, layers_[i].id).value_or(0); // of one that goes nothing asks
        places.push_back(static_cast<std::uint32_t>(place) & 0xFFFFFFU);
        moved = moved || place != i;
    }
    for (std::size_t i = 0; moved && i < entities_; ++i) {
        EntityRecord& item = record(i);
        item.layer = places[item.layer] & 0xFFFFFFU;
    }
    for (StoredAlignment& stored : alignments_) {
        if (const std::optional<std::size_t> found = findName(layers_, stored.alignment.layer)) {
            stored.alignment.layer = layers[places[*found]].name;
        }
    }
    currentLayer_ = places[currentLayer_];
    layers_ = std::move(layers);
    recentLayer_ = 0;
    unsaved_.layers = true;
    return true;
}

void Drawing::setZone(int zone) {
    zone_ = zone;
    unsaved_.settings = true;
}

MdDbObjectId Drawing::addSite(std::string_view name) {
    sites_.push_back({nextId(), readableText(name)});
    return sites_.back().id;
}

MdDbObjectId Drawing::addTable(std::string_view name) {
    std::string text = readableText(name);
    if (findTable(text)) {
        return {};
    }
    tables_.push_back({nextId(), std::move(text)});
    return tables_.back().id;
}

std::size_t Drawing::addAlignment(MdDbObjectId site, std::string_view name, std::string_view layer,
                                  std::string_view firstStyle, std::string_view secondStyle) {
    StoredAlignment stored;
    stored.alignment.id = nextId();
    stored.alignment.site = site;
    stored.alignment.name = readableText(name);
    stored.alignment.layer = readableText(layer);
    stored.alignment.firstStyle = readableText(firstStyle);
    stored.alignment.secondStyle = readableText(secondStyle);
    alignments_.push_back(std::move(stored));
    return alignments_.size() - 1;
}

Drawing::StoredAlignment& Drawing::changeAlignment(std::size_t index) {
    StoredAlignment& stored = alignments_[index];
    touchOther(stored.alignment.id);
    stored.geometry.reset();
    return stored;
}

void Drawing::setDescription(std::size_t alignment, std::string_view text) {
    changeAlignment(alignment).alignment.description = readableText(text);
}

void Drawing::setStartStation(std::size_t alignment, double station) {
    changeAlignment(alignment).alignment.startStation = station;
}

std::int32_t Drawing::addElement(std::size_t alignment, const Element& element) {
    StoredAlignment& stored = changeAlignment(alignment);
    std::vector<Element>& elements = stored.alignment.elements;
    if (elements.size() == elements.capacity() && elements.size() >= kManyElements) {
        elements.reserve(elements.size() + elements.size() / 4);
    }
    elements.push_back(element);
    elements.back().id = ++stored.lastElementId;
    addToExtent(element);
    return stored.lastElementId;
}

void Drawing::addToExtent(const Element& element) {
    extent_.add(extentOf(element));
}

void Drawing::takeFromExtent(const Extent& gone) {
    extentMayBeLess_ = extentMayBeLess_ || (!gone.empty() && (gone.minX <= extent_.minX || gone.minY <= extent_.minY ||
                                                              gone.maxX >= extent_.maxX || gone.maxY >= extent_.maxY));
}

const Extent& Drawing::extent() const {
    if (!extentMayBeLess_ || !entitiesLoaded_) {
        return extent_;
    }
    extent_ = {};
    for (const StoredAlignment& stored : alignments_) {
        for (const Element& element : stored.alignment.elements) {
            extent_.add(extentOf(element));
        }
    }
    for (std::size_t i = 0; i < entities_; ++i) {
        extent_.add(entityExtent(i));
    }
    extentMayBeLess_ = false;
    return extent_;
}

void Drawing::relayLastElements(std::size_t alignment, std::span<const Element> last) {
    if (last.empty()) {
        return;
    }
    std::vector<Element>& elements = changeAlignment(alignment).alignment.elements;
    const auto before = elements.end() - static_cast<std::ptrdiff_t>(last.size());
    std::for_each(before, elements.end(), [this](const Element& element) { takeFromExtent(extentOf(element)); });
    std::copy(last.begin(), last.end(), before);
    for (const Element& element : last) {
        addToExtent(element);
    }
}

void Drawing::removeElement(std::size_t alignment, std::size_t element) {
    std::vector<Element>& elements = changeAlignment(alignment).alignment.elements;
    takeFromExtent(extentOf(elements[element]));
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(element));
}

MdDbObjectId Drawing::addEntity(std::span<const MdGePoint3d> vertices, std::size_t layer, EntityKind kind,
                                bool closed) {
    if (vertices.size() > UINT32_MAX) {
        throw std::length_error("a polyline of more than 4294967295 vertices");
    }
    EntityRecord item{};
    item.id = nextId().asUint64();
    item.vertices = vertices_.append(vertices);
    item.row = kNoRow;
    item.vertexCount = static_cast<std::uint32_t>(vertices.size());
    item.layer = static_cast<std::uint32_t>(layer) & 0xFFFFFFU;
    item.kind = static_cast<std::uint32_t>(kind) & 0x7FU;
    item.closed = closed ? 1 : 0;
    records_.append(item);
    ++entities_;
    for (const MdGePoint3d& vertex : vertices) {
        extent_.add(vertex.x, vertex.y);
    }
    return MdDbObjectId(item.id);
}

MdDbObjectId Drawing::addPoint(const MdGePoint3d& position, std::size_t layer) {
    return addEntity({&position, 1}, layer, EntityKind::Point, false);
}

MdDbObjectId Drawing::addPolyline(std::span<const MdGePoint3d> vertices, std::size_t layer, EntityKind kind,
                                  bool closed) {
    const MdDbObjectId id = addEntity(vertices, layer, kind, closed);
    if (kind == EntityKind::Polyline) {
        makeLightweight(entities_ - 1);
    }
    return id;
}

void Drawing::setEntityLayer(std::size_t entity, std::size_t layer) {
    EntityRecord& item = record(entity);
    item.layer = static_cast<std::uint32_t>(layer) & 0xFFFFFFU;
    touchEntity(item.id);
}

void Drawing::setEntityClosed(std::size_t entity, bool closed) {
    EntityRecord& item = record(entity);
    item.closed = closed ? 1 : 0;
    touchEntity(item.id);
}

void Drawing::makeLightweight(std::size_t entity) {
    EntityRecord& item = record(entity);
    item.kind = static_cast<std::uint32_t>(EntityKind::Polyline) & 0x7FU;
    for (MdGePoint3d& vertex : vertices_.run(item.vertices, item.vertexCount)) {
        vertex.z = 0.0;
    }
    touchEntity(item.id);
}

void Drawing::setRow(std::size_t entity, std::size_t table, std::int32_t no, std::string_view name,
                     std::string_view type, std::string_view fileName) {
    const RowRecord row{texts_.add(name), texts_.add(type), texts_.add(fileName), no,
                        static_cast<std::uint32_t>(table)};
    EntityRecord& item = record(entity);
    if (item.row == kNoRow) {
        item.row = rows_.append(row);
    } else {
        rows_.run(item.row, 1).front() = row;
    }
    touchEntity(item.id);
}

MdDbObjectId Drawing::addImport(Import import) {
    import.id = nextId();
    import.fileName = readableText(import.fileName);
    import.path = readableText(import.path);
    imports_.push_back(std::move(import));
    return imports_.back().id;
}

bool Drawing::removeImport(MdDbObjectId import) {
    const std::optional<std::size_t> found = findId(imports_, import);
    if (!found) {
        return false;
    }
    const std::uint64_t first = imports_[*found].firstId;
    const std::uint64_t last = imports_[*found].lastId;
    const auto made = [&](std::uint64_t id) { return id >= first && id <= last; };
    imports_.erase(imports_.begin() + static_cast<std::ptrdiff_t>(*found));
    removed_.push_back({import.asUint64(), first, last});
    if (first > last) {
        return true;
    }
    extentMayBeLess_ = true;
    std::erase_if(alignments_, [&](const StoredAlignment& item) { return made(item.alignment.id.asUint64()); });
    ChunkedArray<EntityRecord, kRecordBlock> kept;
    std::size_t count = 0;
    for (std::size_t i = 0; i < entities_; ++i) {
        if (!made(record(i).id)) {
            kept.append(record(i));
            ++count;
        }
    }
    records_ = std::move(kept);
    entities_ = count;
    return true;
}

// --- undo and keeping ---

Drawing::Mark Drawing::mark() const {
    Mark mark;
    mark.layers = layers_.size();
    mark.sites = sites_.size();
    mark.tables = tables_.size();
    mark.imports = imports_.size();
    mark.alignments = alignments_.size();
    mark.entities = entities_;
    mark.records = records_.mark();
    mark.vertices = vertices_.mark();
    mark.rows = rows_.mark();
    mark.texts = texts_.mark();
    mark.extent = extent();
    mark.currentLayer = currentLayer_;
    mark.zone = zone_;
    mark.lastId = lastId_;
    return mark;
}

void Drawing::rollback(const Mark& mark) {
    takeBack(mark);
}

Drawing::Removed Drawing::takeBack(const Mark& mark) {
    Removed removed;
    removed.firstId = mark.lastId;
    removed.full = this->mark();
    removed.unsavedFull = unsaved_;
    removed.layers = cutItems(layers_, mark.layers);
    removed.sites = cutItems(sites_, mark.sites);
    removed.tables = cutItems(tables_, mark.tables);
    removed.imports = cutItems(imports_, mark.imports);
    removed.alignments = cutItems(alignments_, mark.alignments);
    entities_ = mark.entities;
    removed.records = records_.cut(mark.records);
    removed.vertices = vertices_.cut(mark.vertices);
    removed.rows = rows_.cut(mark.rows);
    removed.texts = texts_.cut(mark.texts);
    extent_ = mark.extent;
    extentMayBeLess_ = false;
    if (currentLayer_ != mark.currentLayer) {
        setCurrentLayer(mark.currentLayer);
    }
    if (zone_ != mark.zone) {
        setZone(mark.zone);
    }
    unsaved_.entities = std::min(unsaved_.entities, mark.lastId);
    unsaved_.others = std::min(unsaved_.others, mark.lastId);
    removed.left = this->mark();
    removed.unsavedLeft = unsaved_;
    return removed;
}

bool Drawing::putBack(Removed&& removed) {
    if (mark() != removed.left) {
        return false;
    }
    // If the drawing was saved meanwhile, all that comes back differs from the store.
    if (unsaved_ == removed.unsavedLeft) {
        unsaved_ = removed.unsavedFull;
    } else {
        unsaved_.entities = std::min(unsaved_.entities, removed.firstId);
        unsaved_.others = std::min(unsaved_.others, removed.firstId);
        unsaved_.settings = true;
    }
    putItems(layers_, std::move(removed.layers));
    putItems(sites_, std::move(removed.sites));
    putItems(tables_, std::move(removed.tables));
    putItems(imports_, std::move(removed.imports));
    putItems(alignments_, std::move(removed.alignments));
    entities_ = removed.full.entities;
    records_.restore(std::move(removed.records));
    vertices_.restore(std::move(removed.vertices));
    rows_.restore(std::move(removed.rows));
    texts_.restore(std::move(removed.texts));
    extent_ = removed.full.extent;
    extentMayBeLess_ = false;
    currentLayer_ = removed.full.currentLayer;
    zone_ = removed.full.zone;
    return true;
}

} // namespace fenmark::drawing
