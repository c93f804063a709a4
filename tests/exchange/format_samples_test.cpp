// Every format writes a small drawing to the byte as the files beside this test have it: what a format's own reader, or
// a rule of another test, does not look at, a slip of one group, bracket or place, is seen here.
//
// All numbers of the drawing are plain, so that the files do not hang on the last digit of a computed curve.
#include "exchange/dxf.h"
#include "exchange/formats.h"
#include "exchange/info.h"
#include "sample_drawing.h"
#include "support/sample_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

namespace fenmark::exchange {
namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2.0;

// A straight, a quarter of a circle to the left or a straight across its corners, a straight.
void addPlainRoad(Drawing& drawing, bool curved) {
    const auto site = drawing.addSite("サイト");
    const std::size_t road = drawing.addAlignment(site, "本線 <1>", "道路", "Standard", "Standard");
    drawing.setDescription(road, "a-本線 <1>");
    drawing.setStartStation(road, 100.0);
    Element first;
    first.start = {1000.0, 2000.0};
    first.end = {1100.0, 2000.0};
    first.length = 100.0;
    drawing.addElement(road, first);
    Element arc;
    arc.start = first.end;
    arc.end = {1150.0, 2050.0};
    if (curved) {
        arc.type = ElementType::Arc;
        arc.length = 50.0 * kQuarterTurn;
        arc.startRadius = arc.endRadius = 50.0;
    } else {
        arc.direction = kQuarterTurn / 2.0;
        arc.length = 50.0 * std::numbers::sqrt2;
    }
    drawing.addElement(road, arc);
    Element last;
    last.start = arc.end;
    last.end = {1150.0, 2070.0};
    last.direction = kQuarterTurn;
    last.length = 20.0;
    drawing.addElement(road, last);
}

void fillPlain(Drawing& drawing, bool curved) {
    drawing.setZone(9);
    drawing.addLayer("道路");
    drawing.addLayer("境界/点");
    addPoint(drawing, {1000.0, 2000.0, 12.5}, "BP");
    drawing.addPoint({1010.0, 2010.0, 0.0}, *drawing.findLayer("境界/点"));
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), 2, "髙﨑 1\u3000", "座標",
                   "a.sim");
    drawing.addPoint({1020.0, 2010.0, 0.0}, 0);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), 3, "<&\"'^\\U+0041,é한", "座標",
                   "a.sim");
    drawing.addPoint({1020.0, 2020.25, -1.125}, 0);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Point"), 4, "a\t\x1B\x7F\uFFFE z", "座標",
                   "a.sim");
    addPlainRoad(drawing, curved);
    drawing.addPolyline(std::vector<MdGePoint3d>{{1010, 2010, 0}, {1020, 2020.25, 0}, {1020, 2010, 0}},
                        *drawing.findLayer("境界/点"), EntityKind::Polyline, true);
    drawing.setRow(drawing.entityCount() - 1, tableNamed(drawing, "JSIMA_V3_Pline"), 7, "12-3", "画地", "a.sim");
    addPolyline(drawing, {{1000, 2000, 0}, {1010, 2010, 0}}, false, "左", "幅杭線左");
    addPoint(drawing, {1050.0, 2000.0, 0.0}, "No.7+10", "縦断成果");
    addPoint(drawing, {1050.0, 2005.0, 1.5}, "左端", "横断成果");
    addPoint(drawing, {1050.0, 2000.0, 1.25}, "No.7+10", "横断成果");
    drawing.addPoint({1030.0, 2030.0, 0.0}, 0); // without a row
}

struct Sample {
    const char* file;
    ExportOptions options;
};

ExportOptions dxf(DxfVersion version, bool other) {
    ExportOptions options;
    options.dxfVersion = version;
    options.elements = other;
    options.dxfLayers = other ? DxfLayers::Drawing : DxfLayers::Kinds;
    options.scale = other ? 1000.0 : 500.0;
    return options;
}

ExportOptions inPlane() {
    ExportOptions options;
    options.plane = true;
    return options;
}

ExportOptions sima(bool columns) {
    ExportOptions options;
    options.title = "試験";
    options.columns = columns;
    return options;
}

ExportOptions landXml(LandXmlProfile profile) {
    ExportOptions options;
    options.landXmlProfile = profile;
    return options;
}

// LandXML holds the time when it was written.
std::string withoutTime(const std::string& text) {
    static const std::regex kTimes(" (date|time|timeStamp)=\"[-0-9T:]*\"");
    return std::regex_replace(text, kTimes, " $1=\"\"");
}

class FormatSamples : public ::testing::TestWithParam<Sample> {};

TEST_P(FormatSamples, AreWrittenToTheByte) {
    const auto& [file, options] = GetParam();
    Drawing drawing;
    const bool hasCurves = formatOf(file)->extension == ".dxf" || formatOf(file)->extension == ".sim";
    fillPlain(drawing, hasCurves);
    std::ostringstream out;
    formatOf(file)->write(drawing, options, out);
    const std::string written = formatOf(file)->extension == ".xml" ? withoutTime(out.str()) : out.str();
    expectSample(file, written);
}

INSTANTIATE_TEST_SUITE_P(Files, FormatSamples,
                         ::testing::Values(Sample{"r12.dxf", dxf(DxfVersion::R12, false)},
                                           Sample{"r12_elements.dxf", dxf(DxfVersion::R12, true)},
                                           Sample{"r2000.dxf", dxf(DxfVersion::R2000, false)},
                                           Sample{"r2000_elements.dxf", dxf(DxfVersion::R2000, true)},
                                           Sample{"r2018.dxf", dxf(DxfVersion::R2018, false)},
                                           Sample{"degrees.geojson", {}}, Sample{"plane.geojson", inPlane()},
                                           Sample{"sample.kml", {}}, Sample{"sample.sim", sima(false)},
                                           Sample{"columns.sim", sima(true)}, Sample{"points.csv", {}},
                                           Sample{"landxml.xml", landXml(LandXmlProfile::LandXml)},
                                           Sample{"j_landxml.xml", landXml(LandXmlProfile::JLandXml)}),
                         [](const auto& info) {
                             std::string name = info.param.file;
                             for (char& c : name) {
                                 c = c == '.' ? '_' : c;
                             }
                             return name;
                         });

TEST(InfoSamples, TellAllThatADrawingHolds) {
    Drawing drawing;
    fillPlain(drawing, true);
    std::vector<drawing::Layer> layers = drawing.layers();
    layers[1].colour = drawing::Colour{0x8e, 0x24, 0x0a};
    ASSERT_TRUE(drawing.setLayers(layers));
    std::ostringstream json;
    writeInfoJson(drawing, json);
    expectSample("info.json", json.str());
    // A second alignment of its own site, and a site without any.
    addChain(drawing, {{ElementType::Straight, 50, kStraight, kStraight, false},
                       {ElementType::Clothoid, 36, kStraight, 100, true},
                       {ElementType::Clothoid, 36, 100, kStraight, true},
                       {ElementType::Clothoid, 36, kStraight, 100, false},
                       {ElementType::Clothoid, 36, 100, kStraight, false}});
    drawing.addSite("空の現場");
    std::ostringstream summary;
    writeSummary(drawing, summary);
    expectSample("info.txt", summary.str());
    std::ostringstream sites;
    writeInfoJson(drawing, sites);
    expectSample("info_of_sites.json", sites.str());
    std::ostringstream nothing;
    writeSummary(Drawing(), nothing);
    writeInfoJson(Drawing(), nothing);
    expectSample("info_of_nothing.txt", nothing.str());
}

TEST(Formats, AreAllAmongTheSamples) {
    std::set<std::string> among;
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(FENMARK_SOURCE_DIR) + "/tests/exchange/samples")) {
        among.insert(file.path().extension().string());
    }
    for (const Format& format : formats()) {
        EXPECT_TRUE(format.isPlan || among.contains(std::string(format.extension)))
            << "no sample of " << format.extension;
    }
}

// What offers formats, judges them or describes them beside the table has each of them.
TEST(Formats, StandWhereverFormatsAreListed) {
    for (const char* file :
         {"apps/web/page/page.js", "qgis/fenmark/algorithms.py", "qgis/fenmark/texts.py", "docs/exports.md",
          "README.md", "README.ja.md", "fuzz/judge.cpp", "fuzz/options.dict", "tests/faults/test_faults.py"}) {
        const std::string text = test::readFile(std::string(FENMARK_SOURCE_DIR) + "/" + file);
        ASSERT_FALSE(text.empty()) << file;
        for (const Format& format : formats()) {
            EXPECT_TRUE(format.isPlan || text.find(format.extension) != std::string::npos)
                << format.extension << " is missing in " << file;
        }
    }
}

TEST(Formats, HaveOneExtensionEachThatFindsThem) {
    std::set<std::string_view> seen;
    for (const Format& format : formats()) {
        EXPECT_TRUE(seen.insert(format.extension).second) << format.extension;
        EXPECT_EQ(formatOf("a" + std::string(format.extension)), &format);
        EXPECT_EQ(formatOf(format.extension), &format) << "a name without anything in front";
        EXPECT_FALSE(format.name.empty() || format.japanese.empty());
    }
    EXPECT_EQ(formatOf("A.GeoJSON"), formatOf("a.geojson"));
    for (const char* path : {"", "dxf", "a.dwg", "a.dxf.bak", "xml"}) {
        EXPECT_EQ(formatOf(path), nullptr) << path;
    }
    EXPECT_EQ(extensions(true), ".svg");
    EXPECT_TRUE(extensions(false).starts_with(".dxf, .xml, ")) << extensions(false);
    EXPECT_TRUE(extensions(false).ends_with(" or " + std::string(formats().back().extension))) << extensions(false);
}

TEST(Formats, AreNamedInBothLanguages) {
    std::string names;
    for (const Format& format : formats()) {
        names +=
            std::string(format.extension) + "|" + std::string(format.name) + "|" + std::string(format.japanese) + "\n";
    }
    expectSample("format_names.txt", names);
}

TEST(Formats, DegreesNeedAZone) {
    Drawing drawing;
    ExportOptions options;
    for (const Format& format : formats()) {
        EXPECT_EQ(static_cast<bool>(canWrite(format, drawing, options)), !format.degrees) << format.extension;
    }
    options.plane = true;
    EXPECT_TRUE(canWrite(*formatOf("a.geojson"), drawing, options));
    EXPECT_FALSE(canWrite(*formatOf("a.kml"), drawing, options)) << "KML has no metres";
    options.plane = false;
    options.zone = 1;
    EXPECT_TRUE(canWrite(*formatOf("a.kml"), drawing, options));
    options.zone = 0;
    drawing.setZone(19);
    EXPECT_TRUE(canWrite(*formatOf("a.geojson"), drawing, options));
}

TEST(Selections, TakeByKindLayerAndRectangle) {
    Drawing drawing;
    fillPlain(drawing, true);
    const auto taken = [&](const Selection& selection) {
        std::string names;
        for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
            const auto entity = drawing.entity(i);
            if (selection.takes(entity)) {
                names += entity.row ? std::string(entity.row->name.substr(0, 4)) + " " : "? ";
            }
        }
        return names + (selection.takes(drawing.alignment(0)) ? "road" : "");
    };
    Selection selection;
    EXPECT_TRUE(selection.takesAll());
    selection.left.fill(true);
    selection.left[static_cast<std::size_t>(Kind::Lots)] = false;
    selection.left[static_cast<std::size_t>(Kind::Alignments)] = false;
    EXPECT_FALSE(selection.takesAll());
    EXPECT_EQ(taken(selection), "12-3 road");
    selection = {};
    selection.layers = {"道路"};
    EXPECT_EQ(taken(selection), "road");
    selection = {};
    selection.rectangle.emplace();
    selection.rectangle->add(1050.0, 2000.0);
    selection.rectangle->add(1060.0, 2004.0);
    EXPECT_EQ(taken(selection), "No.7 No.7 road") << "edges are within";
    selection.rectangle.emplace();
    selection.rectangle->add(1025.0, 2030.0);
    selection.rectangle->add(1030.0, 2040.0);
    EXPECT_EQ(taken(selection), "? road") << "the road's box holds it";
}

TEST(Selections, TakeWhatTouchesAnEdgeOfTheRectangle) {
    Drawing drawing;
    addPolyline(drawing, {{10, 20, 0}, {14, 26, 0}}, false, "1");
    const struct {
        double minX, minY, maxX, maxY;
        bool takes;
    } kCases[] = {
        {0, 0, 10, 99, true},   {0, 0, 9.999, 99, false},   {14, 0, 99, 99, true}, {14.001, 0, 99, 99, false},
        {0, 0, 99, 20, true},   {0, 0, 99, 19.999, false},  {0, 26, 99, 99, true}, {0, 26.001, 99, 99, false},
        {11, 22, 12, 23, true}, {-99, -99, 199, 199, true},
    };
    for (const auto& [minX, minY, maxX, maxY, takes] : kCases) {
        Selection selection;
        selection.rectangle = {minX, minY, maxX, maxY};
        EXPECT_EQ(selection.takes(drawing.entity(0)), takes) << minX << ' ' << minY << ' ' << maxX << ' ' << maxY;
        EXPECT_EQ(takesAny(drawing, selection), takes) << minX << ' ' << minY << ' ' << maxX << ' ' << maxY;
    }
    Drawing road;
    addRoad(road, {0.0, 0.0}, true);
    Selection selection;
    EXPECT_TRUE(takesAny(road, selection));
    selection.left[static_cast<std::size_t>(Kind::Alignments)] = true;
    EXPECT_FALSE(takesAny(road, selection));
    EXPECT_FALSE(takesAny(Drawing(), {}));
}

// Neither in what stands in front of the entities, as layers and extent, nor in their numbers.
TEST(Selections, OfADxfAreWrittenAsIfTheRestWereNotThere) {
    Drawing plain;
    fillPlain(plain, true);
    const auto drawing = selectedPart(plain, {}); // alignments first, so that those of its parts have the same numbers
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
        ExportOptions options;
        options.selection.left[kind] = true;
        std::ostringstream selected;
        writeDxf(*drawing, options, selected);
        std::ostringstream whole;
        writeDxf(*selectedPart(*drawing, options.selection), {}, whole);
        EXPECT_EQ(selected.str(), whole.str()) << kind;
    }
}

TEST(Selections, ReachEveryFormat) {
    Drawing drawing;
    fillPlain(drawing, true);
    ExportOptions options;
    options.selection.left.fill(true);
    for (const Format& format : formats()) {
        std::ostringstream out;
        format.write(drawing, options, out);
        EXPECT_EQ(out.str().find("12-3"), std::string::npos) << format.extension;
        EXPECT_EQ(out.str().find("No.7"), std::string::npos) << format.extension;
    }
}

TEST(Selections, APartIsADrawingWithTheSameObjects) {
    Drawing drawing;
    fillPlain(drawing, true);
    const auto part = selectedPart(drawing, {});
    EXPECT_EQ(part->zone(), 9);
    ASSERT_EQ(part->entityCount(), drawing.entityCount());
    for (std::size_t i = 0; i < drawing.entityCount(); ++i) {
        const auto was = drawing.entity(i);
        const auto is = part->entity(i);
        EXPECT_EQ(std::tie(is.kind, is.closed, is.layer), std::tie(was.kind, was.closed, was.layer));
        EXPECT_TRUE(std::equal(
            is.vertices.begin(), is.vertices.end(), was.vertices.begin(), was.vertices.end(),
            [](const MdGePoint3d& a, const MdGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }));
        ASSERT_EQ(is.row.has_value(), was.row.has_value());
        if (is.row) {
            EXPECT_EQ(std::tie(is.row->table, is.row->no, is.row->name, is.row->type, is.row->fileName),
                      std::tie(was.row->table, was.row->no, was.row->name, was.row->type, was.row->fileName));
        }
    }
    ASSERT_EQ(part->alignmentCount(), 1U);
    EXPECT_EQ(part->alignment(0).name, "本線 <1>");
    EXPECT_EQ(part->alignment(0).description, "a-本線 <1>");
    EXPECT_EQ(part->alignment(0).layer, "道路");
    EXPECT_EQ(part->alignment(0).startStation, 100.0);
    EXPECT_EQ(part->alignment(0).length(), drawing.alignment(0).length());
    EXPECT_EQ(part->sites().size(), 1U);
}

} // namespace
} // namespace fenmark::exchange
