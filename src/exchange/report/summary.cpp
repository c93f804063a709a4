// The summary of what was imported, and the list of coordinates.
#include "exchange/report/tables.h"

#include "exchange/kinds.h"
#include "exchange/placed.h"

#include <map>
#include <optional>

namespace fenmark::exchange::report {

using drawing::Drawing;
using drawing::EntityView;

namespace {

constexpr std::size_t kMostErrors = 200; // of one table: a summary is read, the log has them all

// How many objects each file gave, by kind, in the order of first appearance.
class Counts {
  public:
    void add(std::string_view file, std::string_view type) {
        const std::pair<std::string, std::string> key(file, type);
        const auto [at, isNew] = counts_.emplace(key, 0);
        if (isNew) {
            order_.push_back(key);
        }
        ++at->second;
    }
    void fill(Table& table) const {
        for (const auto& key : order_) {
            table.add(key.first, key.second, std::to_string(counts_.at(key)));
        }
    }

  private:
    std::map<std::pair<std::string, std::string>, std::size_t> counts_;
    std::vector<std::pair<std::string, std::string>> order_;
};

} // namespace

void summaryTables(const Drawing& drawing, const ReportOptions& options, const TableSink& sink) {
    Table objects;
    objects.kind = "取込概要";
    objects.columns = {{"ファイル", Align::Left}, {"種別", Align::Left}, {"数"}};
    Counts counts;
    std::size_t points = 0;
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const EntityView entity = drawing.entity(i);
        points += entity.isPoint() ? 1 : 0;
        if (entity.row) {
            counts.add(trimmedName(entity.row->fileName), entity.row->type);
        } else {
            counts.add("", entity.isPoint() ? "点" : "線");
        }
    }
    counts.fill(objects);
    double length = 0.0;
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        length += drawing.alignment(i).length();
    }
    objects.addTotal("点", std::to_string(points));
    objects.addTotal("ポリライン", std::to_string(drawing.entityCount() - points));
    objects.addTotal("平面線形", std::to_string(drawing.alignmentCount()));
    objects.addTotal("平面線形の総延長", metresText(length), "m");
    sink(objects);

    if (drawing.alignmentCount() > 0) {
        Table alignments;
        alignments.kind = "平面線形一覧";
        alignments.columns = {
            {"平面線形", Align::Left}, {"説明", Align::Left}, {"始点"}, {"終点"}, {"延長"}, {"要素数"}};
        for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
            const drawing::Alignment& alignment = drawing.alignment(i);
            alignments.add(trimmedName(alignment.name), trimmedName(alignment.description),
                           metresText(alignment.startStation), metresText(alignment.startStation + alignment.length()),
                           metresText(alignment.length()), std::to_string(alignment.elements.size()));
        }
        sink(alignments);
    }

    for (const std::string& log : options.logs) {
        Table errors;
        errors.kind = "取込エラー";
        errors.subject = log;
        errors.columns = {{"エラー", Align::Left}, {"レコード", Align::Left}};
        std::size_t count = 0;
        for (const LogError& error : options.errors) {
            if (error.file == log && ++count <= kMostErrors) {
                errors.add(error.text, error.record);
            }
        }
        errors.remarks.push_back(count == 0 ? "エラー無し" : "エラー " + std::to_string(count) + "件");
        if (count > kMostErrors) {
            errors.remarks.push_back("はじめの" + std::to_string(kMostErrors) + "件を示す。残りはログを参照。");
        }
        sink(errors);
    }
}

void pointTable(const Drawing& drawing, const TableSink& sink) {
    Table table;
    table.kind = "座標一覧";
    table.columns = {
        {"番号"}, {"点名", Align::Left}, {"X"}, {"Y"}, {"標高"}, {"種別", Align::Left}, {"ファイル", Align::Left}};
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        if (!drawing.isPoint(i)) {
            continue;
        }
        const EntityView point = drawing.entity(i);
        // The sections list their results.
        if (isResult(kindOf(point)) || !hasPlace(point)) {
            continue;
        }
        const host::MdGePoint3d& at = point.position();
        const std::optional<double> known = knownHeight(point);
        const std::string height = known ? metresText(*known) : std::string();
        if (point.row) {
            table.add(std::to_string(point.row->no), trimmedName(point.row->name), metresText(at.y), metresText(at.x),
                      height, point.row->type, trimmedName(point.row->fileName));
        } else {
            table.add("", "", metresText(at.y), metresText(at.x), height, "", "");
        }
    }
    if (!table.groups.empty()) {
        sink(table);
    }
}

} // namespace fenmark::exchange::report
