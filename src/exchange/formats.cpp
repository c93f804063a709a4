// The table of export formats.
#include "exchange/formats.h"

#include "exchange/csv.h"
#include "exchange/dxf.h"
#include "exchange/geo_feature.h"
#include "exchange/geojson.h"
#include "exchange/kml.h"
#include "exchange/landxml.h"
#include "exchange/plan/plan_svg.h"
#include "exchange/selection.h"
#include "exchange/sima_file.h"

#include <algorithm>
#include <array>

namespace fenmark::exchange {

namespace {

using drawing::Drawing;

Notes csv(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    return writeSelectedCsv(drawing, options.selection, out);
}

// For writers that take whole drawings.
template <Notes (*Write)(const Drawing&, std::ostream&)>
Notes whole(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    return options.selection.takesAll() ? Write(drawing, out) : Write(*selectedPart(drawing, options.selection), out);
}

Notes landXml(const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    const LandXmlProfile profile = options.landXmlProfile;
    return options.selection.takesAll()
               ? writeLandXmlProfile(drawing, profile, out, options.zone)
               : writeLandXmlProfile(*selectedPart(drawing, options.selection), profile, out, options.zone);
}

constexpr std::array<Format, 7> kFormats = {{
    {".svg", "Plan as SVG", "平面図 SVG", true, false, false, false, whole<writePlanSvg>},
    {".dxf", "DXF", "DXF", false, false, false, false, writeDxf},
    {".xml", "LandXML", "LandXML", false, false, false, true, landXml},
    {".sim", "SIMA", "SIMA", false, false, false, false, writeSima},
    {".geojson", "GeoJSON", "GeoJSON", false, true, true, true, writeGeoJson},
    {".kml", "KML", "KML", false, true, false, true, writeKml},
    {".csv", "Points as CSV", "点の一覧 CSV", false, false, false, false, csv},
}};

bool endsIn(std::string_view path, std::string_view extension) {
    if (path.size() < extension.size()) {
        return false;
    }
    path.remove_prefix(path.size() - extension.size());
    return std::equal(path.begin(), path.end(), extension.begin(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

} // namespace

Notes writeAs(const Format& format, const Drawing& drawing, const ExportOptions& options, std::ostream& out) {
    Notes notes = format.write(drawing, options, out);
    if (!options.selection.takesAll() && !takesAny(drawing, options.selection)) {
        notes.push_back({NoteCode::NothingSelected});
    }
    return notes;
}

std::span<const Format> formats() {
    return kFormats;
}

const Format* formatOf(std::string_view path) {
    const auto found = std::find_if(kFormats.begin(), kFormats.end(),
                                    [path](const Format& format) { return endsIn(path, format.extension); });
    return found == kFormats.end() ? nullptr : &*found;
}

std::string extensions(bool plans, std::string_view beforeLast) {
    std::vector<std::string_view> names;
    for (const Format& format : kFormats) {
        if (format.isPlan == plans) {
            names.push_back(format.extension);
        }
    }
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        list.append(i == 0 ? "" : i + 1 == names.size() ? beforeLast : ", ").append(names[i]);
    }
    return list;
}

bool tellsZone(const Format& format, const ExportOptions& options) {
    return format.zone && !(format.planeToo && options.plane);
}

Outcome canWrite(const Format& format, const Drawing& drawing, const ExportOptions& options) {
    if (format.degrees && tellsZone(format, options) && zoneOf(drawing, options) == 0) {
        const std::string name(format.name);
        return failed({name +
                           " has longitude and latitude, and the drawing does not say in which plane rectangular zone "
                           "its coordinates are: give the zone" +
                           (format.planeToo ? ", or choose metres" : ""),
                       name + "は経緯度の形式ですが、図面に座標系の設定がありません。系番号を指定" +
                           (format.planeToo ? "するか、メートル座標を選択" : "") + "してください"});
    }
    return {};
}

} // namespace fenmark::exchange
