// The rules of each format, as far as a program can check them without the format's own reader.
#include "judge.h"

#include "exchange/formats.h"
#include "exchange/info.h"
#include "exchange/plan/plot.h"
#include "exchange/report/report.h"
#include "exchange/stakes.h"
#include "require.h"
#include "sima/text/cp932.h"
#include "sima/text/number.h"
#include "sima/text/utf8.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <vector>

namespace fenmark::fuzz {

namespace {

using namespace fenmark::exchange;
using drawing::Drawing;
using nlohmann::json;

// --- texts ---

// The characters that XML 1.0 allows, in UTF-8.
void requireXmlCharacters(std::string_view text, const std::string& what) {
    require(sima::isValidUtf8(text), what + ": UTF-8");
    while (!text.empty()) {
        const char32_t c = sima::takeCharacter(text);
        require(c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c != 0xFFFE && c != 0xFFFF),
                what + ": a character that XML does not have");
    }
}

void judgeXml(const std::string& text, const char* root, const std::string& what) {
    requireXmlCharacters(text, what);
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(text.data(), text.size(), pugi::parse_full);
    require(static_cast<bool>(parsed), what + ": well-formed, " + parsed.description());
    require(std::string_view(document.document_element().name()) == root, what + ": its root");
}

// --- GeoJSON ---

void judgePosition(const json& position, bool degrees) {
    require(position.is_array() && position.size() >= 2, "GeoJSON: a position has two numbers or more");
    for (const json& number : position) {
        require(number.is_number() && std::isfinite(number.get<double>()), "GeoJSON: numbers");
    }
    if (degrees) {
        require(std::fabs(position[0].get<double>()) <= 180.0 && std::fabs(position[1].get<double>()) <= 90.0,
                "GeoJSON: longitude and latitude");
    }
}

void judgePositions(const json& list, std::size_t least, bool degrees) {
    require(list.is_array() && list.size() >= least, "GeoJSON: positions enough");
    for (const json& position : list) {
        judgePosition(position, degrees);
    }
}

void judgeGeometry(const json& geometry, bool degrees) {
    if (geometry.is_null()) {
        return;
    }
    const std::string type = geometry.at("type");
    const json& coordinates = geometry.at("coordinates");
    if (type == "Point") {
        judgePosition(coordinates, degrees);
    } else if (type == "LineString" || type == "MultiPoint") {
        judgePositions(coordinates, type == "LineString" ? 2 : 0, degrees);
    } else if (type == "Polygon" || type == "MultiLineString") {
        for (const json& ring : coordinates) {
            judgePositions(ring, type == "Polygon" ? 4 : 2, degrees);
            require(type != "Polygon" || ring.front() == ring.back(), "GeoJSON: a ring is closed");
        }
    } else {
        require(false, "GeoJSON: the type " + type);
    }
}

void judgeGeoJson(const std::string& text, bool degrees) {
    const json root = json::parse(text, nullptr, false);
    require(!root.is_discarded(), "GeoJSON: JSON");
    require(root.at("type") == "FeatureCollection", "GeoJSON: a collection");
    for (const json& feature : root.at("features")) {
        require(feature.at("type") == "Feature" && feature.contains("properties"), "GeoJSON: a feature");
        judgeGeometry(feature.at("geometry"), degrees);
    }
}

// --- CSV ---

using Records = std::vector<std::vector<std::string>>;

// RFC 4180; lines end in CR LF.
Records csvRecords(std::string_view text, const std::string& what) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    Records records;
    std::size_t i = 0;
    while (i < text.size()) {
        std::vector<std::string>& record = records.emplace_back();
        for (bool more = true; more;) {
            std::string& cell = record.emplace_back();
            if (i < text.size() && text[i] == '"') {
                for (++i;; ++i) {
                    require(i < text.size(), what + ": a quoted cell ends");
                    if (text[i] == '"') {
                        if (i + 1 >= text.size() || text[i + 1] != '"') {
                            break;
                        }
                        ++i;
                    }
                    cell += text[i];
                }
                ++i;
            } else {
                while (i < text.size() && text[i] != ',' && text[i] != '\r' && text[i] != '\n') {
                    require(text[i] != '"', what + ": a quote in a cell without quotes");
                    cell += text[i++];
                }
            }
            require(i < text.size(), what + ": the last line ends");
            more = text[i] == ',';
            if (more) {
                ++i;
            }
        }
        require(text.substr(i, 2) == "\r\n", what + ": a line ends in CR LF");
        i += 2;
    }
    return records;
}

void judgeCsv(const std::string& text, bool table, const std::string& what) {
    require(sima::isValidUtf8(text), what + ": UTF-8");
    const Records records = csvRecords(text, what);
    require(!records.empty(), what + ": a head");
    for (const std::vector<std::string>& record : records) {
        require(!table || record.size() == records.front().size(), what + ": as many cells as the head has");
        for (const std::string& cell : record) {
            for (const char c : cell) {
                require(static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r',
                        what + ": no control characters");
            }
            // Spreadsheets look behind blanks.
            const std::size_t start = std::min(cell.find_first_not_of(" \t\r\n"), cell.size());
            const bool formula =
                start < cell.size() && std::string_view("=+-@").find(cell[start]) != std::string_view::npos;
            char* end = nullptr;
            const double value = formula ? std::strtod(cell.c_str(), &end) : 0.0;
            require(!formula || (end == cell.c_str() + cell.size() && std::isfinite(value)),
                    what + ": a cell that a spreadsheet would run: " + cell);
        }
    }
}

// --- DXF ---

bool isReal(std::string_view text) {
    const std::string copy(sima::trim(text));
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    return !copy.empty() && end == copy.c_str() + copy.size() && std::isfinite(value);
}

bool isWhole(std::string_view text) {
    const std::string copy(sima::trim(text));
    char* end = nullptr;
    std::strtoll(copy.c_str(), &end, 10);
    return !copy.empty() && end == copy.c_str() + copy.size();
}

struct Group {
    int code = 0;
    std::string value;
};

std::vector<Group> dxfGroups(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        require(end != std::string::npos, "DXF: the last line ends");
        std::string line = text.substr(at, end - at);
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        for (const char c : line) {
            require(static_cast<unsigned char>(c) >= 0x20 || c == '\t', "DXF: no control characters");
        }
        lines.push_back(std::move(line));
        at = end + 1;
    }
    require(lines.size() % 2 == 0, "DXF: codes and values in pairs");
    std::vector<Group> groups;
    for (std::size_t i = 0; i < lines.size(); i += 2) {
        require(isWhole(lines[i]), "DXF: a code is a number: " + lines[i]);
        groups.push_back({std::stoi(lines[i]), lines[i + 1]});
    }
    return groups;
}

// A text without "\U+XXXX", which stands for a character that code page 932 does not have, in names too.
std::string withoutCodePoints(std::string text) {
    constexpr std::size_t kLength = 7;
    std::size_t at = 0;
    while ((at = text.find("\\U+", at)) != std::string::npos) {
        require(text.find_first_not_of("0123456789ABCDEF", at + 3) >= at + kLength && at + kLength <= text.size(),
                "DXF: four digits of a code point: " + text);
        text.erase(at, kLength);
    }
    return text;
}

void judgeDxfValue(const Group& group) {
    const int code = group.code;
    const auto within = [code](int first, int last) { return code >= first && code <= last; };
    if (within(10, 59) || within(110, 149) || within(210, 239) || within(460, 469) || within(1010, 1059)) {
        require(isReal(group.value), "DXF: group " + std::to_string(code) + " is a real: " + group.value);
    } else if (within(60, 99) || within(170, 179) || within(270, 289) || within(370, 389) || within(400, 409) ||
               within(420, 429) || within(440, 459) || within(1060, 1071)) {
        require(isWhole(group.value), "DXF: group " + std::to_string(code) + " is whole: " + group.value);
    } else {
        require(within(0, 9) || within(100, 105) || within(290, 299) || within(300, 369) || within(390, 399) ||
                    within(410, 419) || within(430, 439) || within(470, 481) || within(999, 1009),
                "DXF: group " + std::to_string(code) + " has no kind");
        require(group.value.size() <= 2049, "DXF: a text of that length");
    }
}

void judgeDxf(const std::string& bytes, DxfVersion version) {
    std::string text = bytes;
    if (version != DxfVersion::R2018) { // in code page 932
        text.clear();
        sima::decodeCp932(text, bytes);
    }
    require(sima::isValidUtf8(text), "DXF: its encoding");
    const std::vector<Group> groups = dxfGroups(text);
    require(!groups.empty() && groups.back().code == 0 && groups.back().value == "EOF", "DXF: ends with EOF");
    std::set<std::string> handles;
    std::set<std::string> layers;
    std::set<std::string> layersUsed;
    std::string section;
    std::string entity;
    bool awaitsSectionName = false;
    bool inTable = false;
    for (const Group& group : groups) {
        judgeDxfValue(group);
        if (awaitsSectionName) {
            require(group.code == 2, "DXF: a section has a name");
            section = group.value;
            awaitsSectionName = false;
            continue;
        }
        if (group.code == 0) {
            entity = group.value;
            if (entity == "SECTION") {
                require(section.empty(), "DXF: sections do not nest");
                awaitsSectionName = true;
            } else if (entity == "ENDSEC") {
                require(!section.empty() && !inTable, "DXF: a section ends where one began");
                section.clear();
            } else if (entity == "TABLE") {
                require(!inTable, "DXF: tables do not nest");
                inTable = true;
            } else if (entity == "ENDTAB") {
                require(inTable, "DXF: a table ends where one began");
                inTable = false;
            } else {
                require(!section.empty() || entity == "EOF", "DXF: all things lie in sections");
            }
        } else if ((group.code == 5 && section != "HEADER" && entity != "DIMSTYLE") || group.code == 105) {
            require(handles.insert(group.value).second, "DXF: a handle is given once: " + group.value);
            require(group.value.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos && group.value != "0",
                    "DXF: a handle is hexadecimal");
        } else if (group.code == 2 && entity == "LAYER") {
            require(layers.insert(group.value).second, "DXF: a layer stands once: " + group.value);
            const std::string name = withoutCodePoints(group.value);
            require(!group.value.empty() && name.find_first_of("<>/\\\":;?*|=`") == std::string::npos,
                    "DXF: a layer's name: " + group.value);
        } else if (group.code == 8) {
            layersUsed.insert(group.value);
        }
    }
    for (const std::string& layer : layersUsed) {
        require(layers.contains(layer), "DXF: an entity lies on a layer of the table: " + layer);
    }
}

// --- SIMA ---

void judgeSima(const std::string& bytes) {
    std::string text;
    sima::decodeCp932(text, bytes);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        require(end != std::string::npos, "SIMA: a line ends in CR LF");
        const std::string_view line = std::string_view(text).substr(at, end - at);
        for (const char c : line) {
            require(static_cast<unsigned char>(c) >= 0x20, "SIMA: no control characters");
        }
        require(line.size() >= 3 && line[0] >= 'A' && line[0] <= 'Z' && sima::isDigit(line[1]) &&
                    sima::isDigit(line[2]),
                "SIMA: a line begins with its code: " + std::string(line));
        at = end + 2;
    }
}

void judgeFile(const Format& format, const Drawing& drawing, const ExportOptions& options) {
    if (!canWrite(format, drawing, options)) {
        return;
    }
    std::ostringstream out;
    (void)format.write(drawing, options, out);
    const std::string text = out.str();
    if (format.extension == ".geojson") {
        judgeGeoJson(text, !options.plane);
    } else if (format.extension == ".csv") {
        judgeCsv(text, true, "CSV");
    } else if (format.extension == ".dxf") {
        judgeDxf(text, options.dxfVersion);
    } else if (format.extension == ".sim") {
        judgeSima(text);
    } else if (format.extension == ".xml") {
        judgeXml(text, "LandXML", "LandXML");
    } else if (format.extension == ".kml") {
        judgeXml(text, "kml", "KML");
    } else if (format.extension == ".svg") {
        judgeXml(text, "svg", "SVG");
    } else if (format.extension != ".pdf") {
        require(false, "a format that nobody judges: " + std::string(format.extension));
    }
}

void judgePlot(const Plot& plot) {
    require(plot.pages.empty() || !plot.failure, "a plot has pages or a reason");
    for (const std::string& page : plot.pages) {
        judgeXml(page, "svg", "plot");
    }
}

void judgeStakes(const Drawing& drawing, std::size_t alignment) {
    StakeOptions options;
    const double length = drawing.alignment(alignment).length();
    options.every = length < 2000.0 ? 20.0 : 0.0;
    options.mainPoints = true;
    options.offsets = {-2.5, 0.0, 3.0};
    const Stakes stakes = stakesOf(drawing, alignment, options);
    if (stakes.failure) {
        return;
    }
    for (const StakeFormat format : {StakeFormat::Table, StakeFormat::Csv, StakeFormat::Sima, StakeFormat::Json}) {
        std::ostringstream out;
        writeStakes(stakes, format, out);
        if (format == StakeFormat::Csv) {
            judgeCsv(out.str(), true, "stakes as CSV");
        } else if (format == StakeFormat::Sima) {
            judgeSima(out.str());
        } else if (format == StakeFormat::Json) {
            require(!json::parse(out.str(), nullptr, false).is_discarded(), "stakes as JSON");
        }
    }
}

} // namespace

void judgeExports(const Drawing& drawing) {
    ExportOptions options;
    options.zone = drawing.zone() == 0 ? 9 : 0;
    for (const Format& format : formats()) {
        if (format.extension == ".pdf") {
            continue;
        }
        judgeFile(format, drawing, options);
        if (format.planeToo) {
            ExportOptions plane = options;
            plane.plane = true;
            judgeFile(format, drawing, plane);
        }
        if (format.extension == ".dxf") {
            for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2018}) {
                ExportOptions other = options;
                other.dxfVersion = version;
                other.dxfLayers = DxfLayers::Drawing;
                other.elements = true;
                judgeFile(format, drawing, other);
            }
        } else if (format.extension == ".xml") {
            ExportOptions japanese = options;
            japanese.landXmlProfile = LandXmlProfile::JLandXml;
            judgeFile(format, drawing, japanese);
        } else if (format.extension == ".sim") {
            ExportOptions columns = options;
            columns.columns = true;
            judgeFile(format, drawing, columns);
        }
    }
    std::ostringstream info;
    writeInfoJson(drawing, info);
    const json whole = json::parse(info.str(), nullptr, false);
    require(!whole.is_discarded() && whole.at("entities").size() == drawing.entityCount(), "info as JSON");
    std::ostringstream summary;
    writeSummary(drawing, summary);
    for (const ReportFormat format : {ReportFormat::Html, ReportFormat::Csv}) {
        std::ostringstream report;
        (void)writeReport(drawing, {}, format, report);
        if (format == ReportFormat::Csv) {
            judgeCsv(report.str(), false, "report as CSV");
        } else {
            requireXmlCharacters(report.str(), "report as HTML");
        }
    }
    constexpr std::size_t kAlignments = 3; // of more, the first ones show what there is to see
    for (std::size_t i = 0; i < std::min(drawing.alignmentCount(), kAlignments); ++i) {
        judgeStakes(drawing, i);
        judgePlot(plotProfile(drawing, i, {}));
        judgePlot(plotCrossSections(drawing, i, {}));
        judgePlot(plotAlong(drawing, i, {}));
    }
}

} // namespace fenmark::fuzz
