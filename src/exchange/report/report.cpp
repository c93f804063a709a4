// Writes the tables of a report as HTML for paper or as comma-separated text.
#include "exchange/report/report.h"

#include "exchange/csv_field.h"
#include "exchange/report/datum.h"
#include "exchange/report/tables.h"
#include "exchange/text.h"

#include <ostream>
#include <utility>

namespace fenmark::exchange {

using drawing::Drawing;
using report::Align;
using report::Table;

namespace {

constexpr char kDocumentHead[] = R"(<!DOCTYPE html>
<html lang="ja"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width">
<title>)";

constexpr char kReportStyle[] = R"(</title>
<style>
@page{size:A4 landscape;margin:14mm 12mm 16mm;@bottom-center{content:"－ " counter(page) " －";font:9pt "IPAexGothic","IPAGothic","Noto Sans CJK JP","Yu Gothic","MS Gothic",sans-serif}}
body{font:9.5pt/1.35 "IPAexGothic","IPAGothic","Noto Sans CJK JP","Yu Gothic","Hiragino Sans","MS Gothic",sans-serif;color:#111;margin:0 auto;max-width:273mm}
section{break-before:page}
section:first-of-type{break-before:auto}
section.follows{break-before:auto;margin-top:7mm}
section.lot{break-before:auto;break-inside:avoid;margin-top:4mm}
.head{display:flex;justify-content:space-between;align-items:flex-end;gap:8mm;break-after:avoid;margin-bottom:2mm}
h1{font-size:14pt;letter-spacing:.35em;margin:0}
h2{font-size:10.5pt;font-weight:normal;margin:.5mm 0 0}
.datum{text-align:right;font-size:8.5pt;white-space:nowrap}
.body{display:flex;gap:7mm;align-items:flex-start}
table{border-collapse:collapse;flex:0 1 auto}
.wide table{width:100%}
thead{display:table-header-group}
tbody,tr{break-inside:avoid}
th,td{border:.2mm solid #555;padding:.5mm 2mm}
th{background:#eef1f3;font-weight:normal;text-align:center;white-space:nowrap}
td{text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums}
td.l{text-align:left;white-space:normal;overflow-wrap:anywhere}
dl{display:grid;grid-template-columns:max-content max-content max-content;gap:.5mm 0;margin:2.5mm 0;break-inside:avoid}
dt{color:#333;padding-right:6mm}dd{margin:0;text-align:right}dd+dd{text-align:left;padding-left:1mm}
p.remark{break-before:avoid;margin:1.5mm 0;font-size:8.5pt}
svg.figure{flex:none;border:.15mm solid #999;break-inside:avoid}
svg .lot{fill:#f4efdf;stroke:#333;stroke-width:.3}
svg circle{fill:#fff;stroke:#333;stroke-width:.2}
svg .north{fill:#333}
@media screen{body{padding:6mm}section{border-top:1px solid #bbb;margin-top:8mm;padding-top:6mm}}
</style></head><body>
)";

class HtmlWriter {
  public:
    HtmlWriter(const Drawing& drawing, std::ostream& out) : out_(out), datum_(datumOf(drawing)) {
        site_ = drawing.sites().empty() ? std::string() : std::string(trimmedName(drawing.sites()[0].name));
        out_ << kDocumentHead << xmlText(site_.empty() ? "測量成果" : site_) << kReportStyle;
    }
    void add(const Table& table) {
        // The parts of the summary and the small tables of an alignment share pages.
        const bool follows = table.kind == "平面線形一覧" || table.kind == "取込エラー" || table.kind == "IP計算書";
        const bool figure = !table.figure.empty();
        const bool nextLot = figure && lastHadFigure_; // two on a page
        lastHadFigure_ = figure;
        out_ << "<section"
             << (nextLot   ? " class=\"lot\""
                 : follows ? " class=\"follows\""
                           : "")
             << "><div class=\"head\"><div><h1>" << xmlText(table.kind) << "</h1><h2>";
        if (!site_.empty()) {
            out_ << "現場名　" << xmlText(site_) << (table.subject.empty() ? "" : "　　");
        }
        if (!table.subject.empty()) {
            out_ << subjectTitle(table) << xmlText(table.subject);
        }
        out_ << "</h2></div><div class=\"datum\">" << datum_ << "<br>X 北、Y 東（m）</div></div>\n<div class=\"body"
             << (figure ? "" : " wide") << "\">";
        if (figure) {
            out_ << "<div>";
        }
        writeTable(table);
        if (figure) {
            writeTotals(table);
            out_ << "</div>" << table.figure;
        }
        out_ << "</div>\n";
        if (!figure) {
            writeTotals(table);
        }
        for (const std::string& remark : table.remarks) {
            out_ << "<p class=\"remark\">" << xmlText(remark) << "</p>\n";
        }
        out_ << "</section>\n";
    }
    void finish(bool any) {
        if (!any) {
            out_ << "<p>図面に成果がありません。</p>\n";
        }
        out_ << "</body></html>\n";
    }

  private:
    static const char* subjectTitle(const Table& table) {
        return table.kind == "座標求積表" ? "画地　" : table.kind == "取込エラー" ? "ログ　" : "路線名　";
    }
    void writeTable(const Table& table) {
        if (table.groups.empty()) {
            return;
        }
        out_ << "<table><thead><tr>";
        for (const report::Column& column : table.columns) {
            out_ << "<th>" << xmlText(column.title) << "</th>";
        }
        out_ << "</tr></thead>\n";
        for (const report::RowGroup& group : table.groups) {
            out_ << "<tbody>";
            for (const auto& row : group) {
                out_ << "<tr>";
                for (std::size_t i = 0; i < row.size(); ++i) {
                    out_ << (table.columns[i].align == Align::Left ? "<td class=\"l\">" : "<td>") << xmlText(row[i])
                         << "</td>";
                }
                out_ << "</tr>";
            }
            out_ << "</tbody>\n";
        }
        out_ << "</table>";
    }
    void writeTotals(const Table& table) {
        if (table.totals.empty()) {
            return;
        }
        out_ << "<dl>";
        for (const report::Total& total : table.totals) {
            out_ << "<dt>" << xmlText(total.name) << "</dt><dd>" << xmlText(total.value) << "</dd><dd>"
                 << xmlText(total.unit) << "</dd>";
        }
        out_ << "</dl>\n";
    }

    std::ostream& out_;
    std::string datum_;
    std::string site_;
    bool lastHadFigure_ = false;
};

void writeCsvTable(std::ostream& out, const Table& table, bool first) {
    out << (first ? "" : "\r\n") << CsvField{table.kind};
    if (!table.subject.empty()) {
        out << ',' << CsvField{table.subject};
    }
    out << "\r\n";
    const auto line = [&out](const auto& cells, auto text) {
        const char* separator = "";
        for (const auto& cell : cells) {
            out << std::exchange(separator, ",") << CsvField{text(cell)};
        }
        out << "\r\n";
    };
    if (!table.groups.empty()) {
        line(table.columns, [](const report::Column& column) { return column.title; });
    }
    for (const report::RowGroup& group : table.groups) {
        for (const auto& row : group) {
            line(row, [](const std::string& cell) { return std::string_view(cell); });
        }
    }
    for (const report::Total& total : table.totals) {
        out << CsvField{total.name} << ',' << CsvField{total.value};
        if (!total.unit.empty()) {
            out << ',' << CsvField{total.unit};
        }
        out << "\r\n";
    }
    for (const std::string& remark : table.remarks) {
        out << CsvField{remark} << "\r\n";
    }
}

} // namespace

Notes writeReport(const Drawing& drawing, const ReportOptions& options, ReportFormat format, std::ostream& out) {
    bool any = false;
    std::optional<HtmlWriter> html;
    if (format == ReportFormat::Html) {
        html.emplace(drawing, out);
    } else {
        out << "\xEF\xBB\xBF";
    }
    const report::TableSink sink = [&](const Table& table) {
        if (html) {
            html->add(table);
        } else {
            writeCsvTable(out, table, !any);
        }
        any = true;
    };
    const Notes notes = report::tablesOf(drawing, options, sink);
    if (html) {
        html->finish(any);
    }
    return notes;
}

Notes report::tablesOf(const Drawing& drawing, const ReportOptions& options, const TableSink& given) {
    std::size_t tables = 0;
    const TableSink sink = [&](const Table& table) {
        ++tables;
        given(table);
    };
    const PointNames names(drawing);
    if (options.has(ReportPart::Summary)) {
        summaryTables(drawing, options, sink);
    }
    LotsLeftOut lots;
    if (options.has(ReportPart::Lots)) {
        lots = lotTables(drawing, names, options, sink);
    }
    if (options.has(ReportPart::Points)) {
        pointTable(drawing, sink);
    }
    alignmentTables(drawing, names, options, sink);
    Notes notes;
    if (tables == 0) {
        notes.push_back({NoteCode::NothingReported});
    }
    if (lots.tooFar > 0) {
        notes.push_back({NoteCode::LotWithoutArea, lots.tooFar});
    }
    if (lots.noRing > 0) {
        notes.push_back({NoteCode::LotWithoutRing, lots.noRing});
    }
    return notes;
}

} // namespace fenmark::exchange
