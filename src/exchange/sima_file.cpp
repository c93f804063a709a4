// A drawing as a SIMA common-format file: its objects in the order in which they were made, so that an import makes
// them in that order again.
#include "exchange/sima_file.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"
#include "exchange/sima_lines.h"
#include "exchange/sima_points.h"
#include "exchange/sima_results.h"
#include "exchange/sima_routes.h"
#include "exchange/text.h"
#include "sima/text/number.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <unordered_set>
#include <utility>

namespace fenmark::exchange {

using drawing::Drawing;
using drawing::EntityView;
using Index = SimaPointTable::Index;

namespace {

constexpr int kCentreLine = 3; // route type of an alignment
constexpr std::size_t kNoAlignment = ~std::size_t{0};
constexpr double kOnAlignment = 1e-6; // metres

// The route type of a polyline with such a row; 0 for a lot.
int routeTypeOf(Kind kind, bool closed) {
    const KindEntry& entry = entryOf(kind);
    if (entry.shape == KindShape::Line) {
        return entry.routeType;
    }
    return closed ? 0 : entryOf(Kind::Continuous).routeType;
}

class SimaWriter {
  public:
    SimaWriter(const Drawing& drawing, const ExportOptions& options, std::ostream& out)
        : drawing_(drawing), options_(options), lines_(out, options.columns), points_(drawing) {}

    Notes write() {
        bindResults();
        lines_.begin("G00").text("01").name(options_.title).end();
        // Identifiers follow the order of making. Results stand behind their alignment in any case.
        std::size_t alignment = 0;
        for (std::size_t i = 0; i < drawing_.entityCount();) {
            const EntityView entity = drawing_.entity(i);
            for (; alignment < drawing_.alignmentCount() &&
                   drawing_.alignment(alignment).id.asUint64() < entity.id.asUint64();
                 ++alignment) {
                writeAlignment(alignment);
            }
            i = writeEntity(i, entity);
        }
        for (; alignment < drawing_.alignmentCount(); ++alignment) {
            writeAlignment(alignment);
        }
        closePoints();
        return notes();
    }

  private:
    // --- which results belong to which alignment ---
    using ResultKey = std::pair<std::int32_t, std::string>; // number and file of the rows

    struct Sample {
        std::vector<host::MdGePoint3d> longitudinal;
        std::vector<host::MdGePoint3d> crossSections;
    };

    void bindResults() {
        constexpr std::size_t kEnough = 100; // points of each kind that show where a section lies
        std::map<ResultKey, Sample> samples;
        std::unordered_set<std::int32_t> numbers;     // of lots, routes and results
        std::map<std::int32_t, std::uint64_t> routes; // number of a polyline's route and its identifier
        std::optional<ResultKey> recentKey;
        Sample* recent = nullptr;
        for (std::size_t i = 0; i < drawing_.entityCount(); ++i) {
            const EntityView entity = drawing_.entity(i);
            const Kind kind = kindOf(entity);
            if (!entity.row || kind == Kind::Points) {
                continue;
            }
            if (!entity.isPoint() && routeTypeOf(kind, entity.closed) != 0) {
                routes.emplace(entity.row->no, entity.id.asUint64());
                numbers.insert(entity.row->no);
            }
            if (!isResult(kind) || !entity.isPoint() || !hasPlace(entity)) {
                continue;
            }
            if (!recentKey || recentKey->first != entity.row->no || recentKey->second != entity.row->fileName) {
                recentKey = ResultKey(entity.row->no, entity.row->fileName);
                recent = &samples[*recentKey];
                numbers.insert(entity.row->no);
            }
            auto& list = kind == Kind::Longitudinal ? recent->longitudinal : recent->crossSections;
            if (list.size() < kEnough) {
                list.push_back(entity.position());
            }
        }
        routeNumbers_.assign(drawing_.alignmentCount(), -1);
        std::unordered_set<std::int32_t> taken;
        for (const auto& [key, sample] : samples) {
            const std::size_t alignment = alignmentOf(key, sample);
            bindings_[key] = alignment;
            if (alignment == kNoAlignment || routeNumbers_[alignment] >= 0) {
                continue;
            }
            // A polyline's route of that number before it would be found first.
            const auto route = routes.find(key.first);
            const bool hidden = route != routes.end() && route->second < drawing_.alignment(alignment).id.asUint64();
            if (key.first >= 0 && !hidden && taken.insert(key.first).second) {
                routeNumbers_[alignment] = key.first;
            }
        }
        std::int32_t next = 0;
        for (std::int32_t& number : routeNumbers_) {
            while (number < 0) {
                ++next;
                if (!numbers.contains(next) && taken.insert(next).second) {
                    number = next;
                }
            }
        }
    }

    bool liesOn(const drawing::AlignmentGeometry& geometry, const host::MdGePoint3d& point) const {
        return geometry.locateWithin({point.x, point.y}, kOnAlignment).has_value();
    }

    // All points of a longitudinal section lie on its alignment, of cross-sections at least one for each.
    bool fits(std::size_t index, const Sample& sample) const {
        const drawing::AlignmentGeometry& geometry = drawing_.geometry(index);
        const auto on = [&](const host::MdGePoint3d& point) { return liesOn(geometry, point); };
        return !geometry.empty() && std::all_of(sample.longitudinal.begin(), sample.longitudinal.end(), on) &&
               (sample.crossSections.empty() ||
                std::any_of(sample.crossSections.begin(), sample.crossSections.end(), on));
    }

    std::size_t alignmentOf(const ResultKey& key, const Sample& sample) const {
        const std::string base = key.second.substr(0, key.second.rfind('.'));
        std::size_t found = kNoAlignment;
        for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
            const drawing::Alignment& alignment = drawing_.alignment(i);
            if (!hasPlace(alignment) || !fits(i, sample)) {
                continue;
            }
            if (alignment.description == base + "-" + alignment.name) {
                return i;
            }
            if (found == kNoAlignment) {
                found = i;
            }
        }
        return found;
    }

    // --- coordinate points ---
    void writePoint(Index index) {
        const SimaPointTable::Point& point = points_[index];
        if (point.written) {
            return;
        }
        if (points_.hasRepeatedNumbers() && pointsOpen_ && sectionNumbers_.contains(point.number)) {
            closePoints();
        }
        if (!std::exchange(pointsOpen_, true)) {
            lines_.line("A00,");
            sectionNumbers_.clear();
        }
        if (points_.hasRepeatedNumbers()) {
            sectionNumbers_.insert(point.number);
        }
        lines_.begin("A01").number(point.number).name(points_.name(index));
        lines_.metres(exactMetres(point.y)).metres(exactMetres(point.x));
        lines_.metres(point.hasHeight ? exactMetres(point.z) : std::string()).end();
        points_.setWritten(index);
        if (firstWritten_ == SimaPointTable::kNone && point.findable) {
            firstWritten_ = index;
        }
    }

    void closePoints() {
        if (std::exchange(pointsOpen_, false)) {
            lines_.line("A99,");
        }
    }

    void writeReference(Index index) {
        lines_.begin("B01").number(points_[index].number).name(points_.name(index)).end();
    }

    // --- entities ---
    // Returns the index of the next entity.
    std::size_t writeEntity(std::size_t index, const EntityView& entity) {
        if (!options_.selection.takes(entity) || !unplaced_.look(entity) || entity.vertices.empty()) {
            return index + 1;
        }
        if (!entity.isPoint()) {
            writePolyline(entity);
            return index + 1;
        }
        const Kind kind = kindOf(entity);
        if (isResult(kind)) {
            return writeResults(index, kind);
        }
        if (const Index point = points_.ofEntity(index); point != SimaPointTable::kNone) {
            writePoint(point);
        }
        return index + 1;
    }

    // What becomes of a route of one point, wherever that stands.
    static bool isLoneOrigin(const EntityView& entity, int type) {
        return type != 0 && entity.vertices.size() == 1 && entity.position().x == 0.0 && entity.position().y == 0.0;
    }

    void writePolyline(const EntityView& entity) {
        references_.clear();
        const int type = routeTypeOf(kindOf(entity), entity.closed);
        for (const host::MdGePoint3d& vertex : entity.vertices) {
            Index point = points_.at(vertex.x, vertex.y);
            if (point == SimaPointTable::kNone && isLoneOrigin(entity, type) &&
                firstWritten_ != SimaPointTable::kNone) {
                point = firstWritten_;
            }
            if (point == SimaPointTable::kNone) {
                point = points_.add(vertex.x, vertex.y, 0.0, false, {});
            }
            references_.push_back(point);
        }
        for (const Index point : references_) {
            writePoint(point);
        }
        closePoints();
        const bool hasNumber = entity.row && entity.row->no >= 0; // no reader takes another
        const std::int32_t number = hasNumber ? entity.row->no : points_.freeNumber();
        const std::string_view name = entity.row ? entity.row->name : std::string_view();
        linesWithoutRow_ += kindOf(entity) == Kind::Others ? 1 : 0;
        if (type == 0) {
            lines_.begin("D00").number(number).name(name).text(entity.closed ? "1" : "2").end();
        } else {
            lines_.begin("F00").number(number).number(1).name(name).number(type).end();
        }
        for (const Index point : references_) {
            writeReference(point);
        }
        lines_.line(type == 0 ? "D99," : "F99,");
    }

    void writeAlignment(std::size_t index) {
        const drawing::Alignment& alignment = drawing_.alignment(index);
        if (!options_.selection.takes(alignment) || !unplaced_.look(alignment)) {
            return;
        }
        const std::optional<SimaRoute> route = simaRouteOf(alignment, points_);
        if (!route) {
            ++leadingClothoids_;
            unwritable_.insert(index);
            return;
        }
        merged_ += route->mergedStraights ? 1 : 0;
        for (const SimaRoute::Step& step : route->steps) {
            writePoint(step.point);
        }
        closePoints();
        lines_.begin("F00").number(routeNumbers_[index]).number(1).name(alignment.name).number(kCentreLine).end();
        lines_.begin("F03").metres(exactMetres(alignment.startStation)).end();
        for (const SimaRoute::Step& step : route->steps) {
            writeReference(step.point);
            if (!step.record.empty()) {
                lines_.line(step.record);
            }
        }
        lines_.line("F99,");
    }

    // --- results ---
    std::size_t writeResults(std::size_t first, Kind kind) {
        const EntityView begin = drawing_.entity(first);
        std::vector<std::size_t> run;
        std::size_t index = first;
        for (; index < drawing_.entityCount(); ++index) {
            const EntityView entity = drawing_.entity(index);
            if (!entity.isPoint() || kindOf(entity) != kind || entity.row->no != begin.row->no ||
                entity.row->fileName != begin.row->fileName) {
                break;
            }
            // The first was looked at already.
            if (options_.selection.takes(entity) && (index == first || unplaced_.look(entity))) {
                run.push_back(index);
            }
        }
        const std::size_t alignment = bindings_.at(ResultKey(begin.row->no, begin.row->fileName));
        if (alignment == kNoAlignment || unwritable_.contains(alignment)) {
            writeAsPoints(run);
        } else if (kind == Kind::Longitudinal) {
            writeLongitudinal(run, alignment);
        } else {
            writeCrossSections(run, alignment);
        }
        return index;
    }

    void writeAsPoints(const std::vector<std::size_t>& run) {
        for (const std::size_t index : run) {
            const EntityView entity = drawing_.entity(index);
            const host::MdGePoint3d& at = entity.position();
            writePoint(points_.add(at.x, at.y, heightOf(entity), true, std::string(entity.row->name)));
            ++resultsAsPoints_;
        }
    }

    void beginResults(std::string_view code, std::size_t alignment, std::int32_t number) {
        closePoints();
        renumberedResults_ = renumberedResults_ || number != routeNumbers_[alignment];
        lines_.begin(code).number(routeNumbers_[alignment]).name(drawing_.alignment(alignment).name).end();
    }

    void writeLongitudinal(const std::vector<std::size_t>& run, std::size_t alignment) {
        const drawing::AlignmentGeometry& geometry = drawing_.geometry(alignment);
        std::vector<std::size_t> beside;
        std::optional<double> before;
        for (const std::size_t index : run) {
            const EntityView entity = drawing_.entity(index);
            std::optional<std::string> station = stationOnAlignment(geometry, entity.position());
            if (!station) {
                beside.push_back(index);
                continue;
            }
            if (!before) {
                beginResults("H00", alignment, entity.row->no);
            } else if (*before == sima::toReal(*station)) {
                station = fixedReal(*before + 1e-7, 7); // a reader moves equal stations apart by more
            }
            before = sima::toReal(*station);
            lines_.begin("H01").name(entity.row->name).metres(*station).metres(exactMetres(heightOf(entity)));
            lines_.metres({}).text("1").end();
        }
        if (before) {
            lines_.line("H99,");
        }
        writeAsPoints(beside);
    }

    void writeCrossSections(const std::vector<std::size_t>& run, std::size_t alignment) {
        std::vector<host::MdGePoint3d> positions;
        for (const std::size_t index : run) {
            positions.push_back(drawing_.entity(index).position());
        }
        const std::vector<SimaCrossSection> sections = crossSectionsOf(drawing_.geometry(alignment), positions);
        std::vector<std::size_t> beside;
        bool open = false;
        for (const SimaCrossSection& section : sections) {
            if (section.offsets.empty()) {
                beside.push_back(run[section.first]);
                continue;
            }
            if (!std::exchange(open, true)) {
                beginResults("I00", alignment, drawing_.entity(run[section.first]).row->no);
            }
            writeCrossSection(section, run);
        }
        if (open) {
            lines_.line("I99,");
        }
        writeAsPoints(beside);
    }

    void writeCrossSection(const SimaCrossSection& section, const std::vector<std::size_t>& run) {
        const auto pointOf = [&](std::size_t i) { return drawing_.entity(run[section.first + i]); };
        const EntityView centre = pointOf(section.centre.value_or(0));
        addedCentres_ += section.centre ? 0 : 1;
        // A point without a name takes the section's, so where one has none the section has none.
        std::string_view name = sima::trim(centre.row->name);
        for (std::size_t i = 0; i < section.offsets.size(); ++i) {
            if (pointOf(i).row->name.empty()) {
                name = {};
            }
        }
        lines_.begin("I01").name(name).metres(section.station).metres(exactMetres(heightOf(centre))).metres({}).end();
        for (std::size_t i = 0; i < section.offsets.size(); ++i) {
            const EntityView point = pointOf(i);
            lines_.begin("I02").name(point.row->name == name ? std::string_view() : point.row->name);
            lines_.metres(section.offsets[i]).metres(exactMetres(heightOf(point))).end();
        }
    }

    // --- what differs ---
    Notes notes() const {
        Notes notes = unplaced_.notes(Fate::LeftOut);
        const auto tell = [&notes](NoteCode code, std::size_t count) {
            if (count > 0) {
                notes.push_back({code, count});
            }
        };
        tell(NoteCode::LeadingClothoid, leadingClothoids_);
        tell(NoteCode::JoinedStraights, merged_);
        tell(NoteCode::AddedPoints, points_.added() - resultsAsPoints_);
        tell(NoteCode::RenumberedPoints, points_.renumbered());
        tell(NoteCode::WithoutRow, points_.withoutRow() + linesWithoutRow_);
        tell(NoteCode::ResultsAsPoints, resultsAsPoints_);
        tell(NoteCode::AddedCentres, addedCentres_);
        tell(NoteCode::ReplacedCharacters, lines_.replacedCharacters());
        tell(NoteCode::ControlCharacters, lines_.controlCharacters());
        if (renumberedResults_) {
            notes.push_back({NoteCode::RenumberedResults});
        }
        return notes;
    }

    const Drawing& drawing_;
    const ExportOptions& options_;
    SimaLines lines_;
    SimaPointTable points_;
    std::map<ResultKey, std::size_t> bindings_; // the alignment of the results
    std::vector<std::int32_t> routeNumbers_;    // of the alignments
    std::unordered_set<std::size_t> unwritable_;
    std::unordered_set<std::int32_t> sectionNumbers_;
    std::vector<Index> references_;
    Index firstWritten_ = SimaPointTable::kNone; // of the points that a number finds
    bool pointsOpen_ = false;
    Unplaced unplaced_;
    std::size_t leadingClothoids_ = 0;
    std::size_t merged_ = 0;
    std::size_t linesWithoutRow_ = 0;
    std::size_t resultsAsPoints_ = 0;
    std::size_t addedCentres_ = 0;
    bool renumberedResults_ = false;
};

} // namespace

Notes writeSima(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    return SimaWriter(drawing, options, out).write();
}

} // namespace fenmark::exchange
