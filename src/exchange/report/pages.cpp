// Survey documents as pages of paper.
#include "exchange/report/pages.h"

#include "exchange/plan/page_image.h"
#include "exchange/plan/plan.h"
#include "exchange/plan/section_page.h"
#include "exchange/report/datum.h"
#include "exchange/report/tables.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

namespace fenmark::exchange {

using drawing::Drawing;
using report::Align;
using report::RowGroup;
using report::Table;

namespace {

// Millimetres of paper.
constexpr double kPageMargin = 12.0;
constexpr double kHead = 15.0;        // kind, subject and datum above a table
constexpr double kFoot = 8.0;         // the number of the page
constexpr double kCellTextSize = 2.9; // of cells, where the table is not too wide
constexpr double kLeastText = 1.6;    // of the widest tables
constexpr double kCellRoom = 3.0;     // beside the text of a cell
constexpr double kRowHeight = 1.75;   // of the text's size
constexpr double kTableGap = 9.0;     // between two tables on a page
constexpr double kFigureGap = 6.0;    // between a table and its figure
constexpr double kNoteSize = 2.5;
constexpr double kNoteLine = 4.2;
constexpr std::size_t kMostTablePages = 20000;

// Pages of tables in the making.
class TablePages {
  public:
    TablePages(const Drawing& drawing, const PlotOptions& options) : drawing_(drawing), options_(options) {
        const PlanSheet sheet({}, 0.0, 1, options.paper.value_or("A4"), options.upright.value_or(false));
        width_ = sheet.width();
        height_ = sheet.height();
    }

    void add(const Table& table) {
        if (full_) {
            return;
        }
        layOut(table);
        const double figure = table.figure.empty() ? 0.0 : figureHeight_;
        const double rows = rowHeight_ * (1.0 + static_cast<double>(rowCount(table)));
        const double whole = kHead + std::max(rows + notesHeight(table), figure);
        const bool fits = !pages_.empty() && y_ + kTableGap + whole <= bottom();
        if (fits) {
            y_ += kTableGap;
        } else {
            newPage();
        }
        drawHead(table);
        const double top = y_;
        drawRows(table);
        drawNotes(table);
        if (!table.figure.empty()) {
            drawFigure(table, top);
        }
    }

    Plot finish() {
        Plot plot;
        if (full_) {
            plot.failure = {ObstacleCode::TooManyPages, kMostTablePages};
            return plot;
        }
        if (pages_.empty()) {
            plot.failure = {ObstacleCode::NothingToList};
            return plot;
        }
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            SectionPage& page = pages_[i];
            page.text({width_ / 2.0, height_ - 7.0}, kNoteSize, "middle",
                      "－ " + std::to_string(i + 1) + " / " + std::to_string(pages_.size()) + " －");
            plot.pages.push_back(page.svg());
        }
        return plot;
    }

  private:
    double bottom() const { return height_ - kPageMargin - kFoot; }
    double room() const { return width_ - 2.0 * kPageMargin; }
    static std::size_t rowCount(const Table& table) {
        std::size_t rows = 0;
        for (const RowGroup& group : table.groups) {
            rows += group.size();
        }
        return rows;
    }
    static double notesHeight(const Table& table) {
        return kNoteLine * (static_cast<double>(table.totals.size() + table.remarks.size()) + 0.5);
    }

    void newPage() {
        if (pages_.size() >= kMostTablePages) {
            full_ = true;
            return;
        }
        pages_.emplace_back(width_, height_);
        y_ = kPageMargin;
    }

    // Column widths, and a size of text at which all of them have room beside the figure.
    void layOut(const Table& table) {
        figureWidth_ = figureHeight_ = 0.0;
        if (!table.figure.empty()) {
            if (const auto size = sizeOfFigure(table.figure)) {
                figureWidth_ = size->x;
                figureHeight_ = size->y;
            }
        }
        std::vector<double> ems;
        for (const report::Column& column : table.columns) {
            ems.push_back(widthInEms(column.title));
        }
        for (const RowGroup& group : table.groups) {
            for (const auto& row : group) {
                for (std::size_t i = 0; i < row.size() && i < ems.size(); ++i) {
                    ems[i] = std::max(ems[i], widthInEms(row[i]));
                }
            }
        }
        double sum = 0.0;
        for (const double em : ems) {
            sum += em;
        }
        const double cells = kCellRoom * static_cast<double>(ems.size());
        const double beside = room() - (figureWidth_ > 0.0 ? figureWidth_ + kFigureGap : 0.0);
        // A figure that leaves no room goes below.
        figureBelow_ = figureWidth_ > 0.0 && sum * kLeastText + cells > beside;
        const double wide = figureBelow_ ? room() : beside;
        size_ = sum > 0.0 ? std::clamp((wide - cells) / sum, kLeastText, kCellTextSize) : kCellTextSize;
        rowHeight_ = kRowHeight * size_;
        widths_.clear();
        for (const double em : ems) {
            widths_.push_back(em * size_ + kCellRoom);
        }
    }

    static std::optional<PaperPoint> sizeOfFigure(const std::string& figure) {
        const std::size_t box = figure.find("viewBox=\"0 0 ");
        if (box == std::string::npos) {
            return std::nullopt;
        }
        std::string_view rest = std::string_view(figure).substr(box + 13);
        const double width = leadingReal(rest);
        rest.remove_prefix(rest.empty() ? 0 : 1); // the blank between
        const double height = leadingReal(rest);
        return width > 0.0 && height > 0.0 ? std::optional(PaperPoint{width, height}) : std::nullopt;
    }

    void drawHead(const Table& table) {
        SectionPage& page = pages_.back();
        page.text({kPageMargin, y_ + 3.0}, 4.6, "start", table.kind, 0.0, "title");
        std::string line;
        const auto addPart = [&line](const std::string& name, const std::string& value) {
            if (!value.empty()) {
                line += (line.empty() ? "" : "　　") + name + "　" + value;
            }
        };
        addPart(table.kind == "座標求積表" ? "画地" : table.kind == "取込エラー" ? "ログ" : "路線名", table.subject);
        if (!drawing_.sites().empty()) {
            addPart("現場名", std::string(trimmedName(drawing_.sites()[0].name)));
        }
        for (const auto& [name, value] : options_.titles) {
            addPart(name, value);
        }
        page.text({kPageMargin, y_ + 9.5}, kNoteSize, "start", line);
        page.text({width_ - kPageMargin, y_ + 3.0}, kNoteSize, "end", datumOf(drawing_) + "　X 北、Y 東（m）");
        y_ += kHead;
    }

    void drawTitles(const Table& table) {
        SectionPage& page = pages_.back();
        double x = kPageMargin;
        page.line("thin", {kPageMargin, y_}, {right(), y_});
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            page.text({x + widths_[i] / 2.0, y_ + rowHeight_ / 2.0}, size_, "middle", table.columns[i].title);
            x += widths_[i];
        }
        y_ += rowHeight_;
        page.line("base", {kPageMargin, y_}, {right(), y_});
    }

    double right() const {
        double x = kPageMargin;
        for (const double width : widths_) {
            x += width;
        }
        return x;
    }

    void closeColumns(double top) {
        SectionPage& page = pages_.back();
        double x = kPageMargin;
        page.line("thin", {x, top}, {x, y_});
        for (const double width : widths_) {
            x += width;
            page.line("thin", {x, top}, {x, y_});
        }
    }

    void drawRows(const Table& table) {
        if (table.groups.empty()) {
            return;
        }
        double top = y_;
        drawTitles(table);
        for (const RowGroup& group : table.groups) {
            const double needed = rowHeight_ * static_cast<double>(group.size());
            const bool begun = y_ > top + rowHeight_ * 1.5; // a page holds one group at least
            if (begun && y_ + needed > bottom()) {
                closeColumns(top);
                newPage();
                if (full_) {
                    return;
                }
                drawHead(table);
                top = y_;
                drawTitles(table);
            }
            for (const auto& row : group) {
                drawRow(table, row);
            }
            pages_.back().line("thin", {kPageMargin, y_}, {right(), y_});
        }
        closeColumns(top);
    }

    void drawRow(const Table& table, const std::vector<std::string>& row) {
        double x = kPageMargin;
        for (std::size_t i = 0; i < row.size() && i < widths_.size(); ++i) {
            const bool left = table.columns[i].align == Align::Left;
            pages_.back().text({left ? x + kCellRoom / 2.0 : x + widths_[i] - kCellRoom / 2.0, y_ + rowHeight_ / 2.0},
                               size_, left ? "start" : "end", row[i]);
            x += widths_[i];
        }
        y_ += rowHeight_;
    }

    void drawNotes(const Table& table) {
        if (full_ || (table.totals.empty() && table.remarks.empty())) {
            return;
        }
        if (y_ + notesHeight(table) > height_ - kPageMargin - kFoot / 2.0) {
            newPage();
            if (full_) {
                return;
            }
            drawHead(table);
        }
        y_ += kNoteLine;
        for (const report::Total& total : table.totals) {
            pages_.back().text({kPageMargin + 4.0, y_}, kCellTextSize, "start",
                               std::string(total.name) + "　" + total.value + (total.unit.empty() ? "" : " ") +
                                   std::string(total.unit));
            y_ += kNoteLine;
        }
        for (const std::string& remark : table.remarks) {
            pages_.back().text({kPageMargin + 4.0, y_}, kNoteSize, "start", remark);
            y_ += kNoteLine;
        }
    }

    void drawFigure(const Table& table, double top) {
        if (full_) {
            return;
        }
        double x = width_ - kPageMargin - figureWidth_;
        double y = top;
        if (figureBelow_ || y + figureHeight_ > bottom()) {
            if (y_ + figureHeight_ > bottom()) {
                newPage();
                if (full_) {
                    return;
                }
                drawHead(table);
            }
            x = kPageMargin;
            y = y_;
        }
        pages_.back().figure({x, y}, figureWidth_, figureHeight_, table.figure);
        y_ = std::max(y_, y + figureHeight_);
    }

    const Drawing& drawing_;
    const PlotOptions& options_;
    double width_ = 297.0;
    double height_ = 210.0;
    std::vector<SectionPage> pages_;
    double y_ = 0.0;
    bool full_ = false;
    std::vector<double> widths_;
    double size_ = kCellTextSize;
    double rowHeight_ = kRowHeight * kCellTextSize;
    double figureWidth_ = 0.0;
    double figureHeight_ = 0.0;
    bool figureBelow_ = false;
};

} // namespace

Plot reportPages(const Drawing& drawing, const ReportOptions& options, const PlotOptions& paper) {
    TablePages pages(drawing, paper);
    const Notes notes = report::tablesOf(drawing, options, [&pages](const Table& table) { pages.add(table); });
    Plot plot = pages.finish();
    plot.notes = notes;
    return plot;
}

Plot stakePages(const Drawing& drawing, const Stakes& stakes, const PlotOptions& paper) {
    if (stakes.failure) {
        Plot plot;
        plot.failure = stakes.failure;
        return plot;
    }
    Table table;
    table.kind = "測設座標一覧";
    table.subject = std::string(trimmedName(stakes.alignment));
    table.columns = {{"点名", Align::Left}, {"測点", Align::Left}, {"追加距離"}, {"幅"}, {"X"}, {"Y"}, {"接線方向角"}};
    for (const Stake& stake : stakes.stakes) {
        table.add(stake.name, stake.stationName, metresText(stake.station), metresText(stake.offset),
                  metresText(stake.point.y), metresText(stake.point.x), degreesText(azimuthDegrees(stake.tangent)));
    }
    TablePages pages(drawing, paper);
    if (!stakes.stakes.empty()) {
        pages.add(table);
    }
    return pages.finish();
}

} // namespace fenmark::exchange
