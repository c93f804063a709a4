// Lines of alignments and reference systems of geometries that another program changed: the elements and the table count,
// and what differs is told.
#include "drawing/geopackage/geometry_blob.h"
#include "drawing/geopackage/reference_systems.h"
#include "drawing/geopackage/store_notes.h"
#include "drawing/index_check.h"
#include "support/drawing_support.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numbers>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::drawing {
namespace {

using Line = std::vector<PlanPoint>;

class DerivedLayers : public SavedDrawing {
  protected:
    void SetUp() override {
        SavedDrawing::SetUp();
        for (const std::string& trigger :
             OtherProgram(path_).ask("SELECT name FROM sqlite_master WHERE type = 'trigger' AND name LIKE 'rtree%'")) {
            change("DROP TRIGGER " + trigger);
        }
    }
    void change(const std::string& sql) const { EXPECT_EQ(OtherProgram(path_).ask(sql), std::vector<std::string>()); }
    // The notes with the code, as text.
    std::string told(StoreNoteCode code) const {
        Drawing read;
        DrawingStore store;
        EXPECT_TRUE(store.open(path_, read));
        EXPECT_EQ(describe(read), describe(drawing_));
        std::string text;
        for (const StoreNote& note : store.notes()) {
            text += note.code == code ? noteText(note) + "\n" : "";
        }
        return text;
    }
    static std::string literal(std::span<const std::byte> blob) {
        constexpr const char* kDigits = "0123456789abcdef";
        std::string text = "x'";
        for (const std::byte byte : blob) {
            text += kDigits[std::to_integer<unsigned>(byte) >> 4U];
            text += kDigits[std::to_integer<unsigned>(byte) & 15U];
        }
        return text + "'";
    }
    // The line of the first alignment as it is drawn.
    Line drawn() const {
        Line line;
        LinePoints points;
        points.beginAlignment();
        for (const Element& element : drawing_.alignment(0).elements) {
            if (!line.empty()) {
                line.pop_back();
            }
            points.append(element, kLineTolerance, line);
        }
        return line;
    }
    void setLine(const Line& line) const {
        BlobWriter writer(kUndefinedSrs);
        change("UPDATE alignments SET geom = " + literal(writer.line(line)) +
               " WHERE fid IN (SELECT min(fid) FROM alignments)");
    }
};

TEST_F(DerivedLayers, ALineThatDoesNotRunAlongItsElementsIsTold) {
    const Line line = drawn();
    ASSERT_GT(line.size(), 8U) << "with vertices within the curves";
    EXPECT_EQ(told(StoreNoteCode::LinesDiffer), "");
    const std::string wanted = "1 alignment has a line (first fid " +
                               std::to_string(drawing_.alignment(0).id.asUint64()) +
                               ") that does not run along the elements: the elements are taken\n";
    for (std::size_t i = 0; i < line.size(); ++i) {
        for (const auto& [metres, isTold] : {std::pair(0.009, false), std::pair(0.012, true)}) {
            // Across the travel: along a curve a vertex stays on it.
            const PlanPoint& before = line[i == 0 ? 0 : i - 1];
            const PlanPoint& after = line[std::min(i + 1, line.size() - 1)];
            const double chord = std::hypot(after.x - before.x, after.y - before.y);
            Line moved = line;
            moved[i].x -= (after.y - before.y) / chord * metres;
            moved[i].y += (after.x - before.x) / chord * metres;
            setLine(moved);
            EXPECT_EQ(told(StoreNoteCode::LinesDiffer), isTold ? wanted : "") << i << " by " << metres;
        }
    }
    struct Change {
        const char* name;
        std::function<void(Line&)> make;
        bool isTold;
    };
    const Change changes[] = {
        {"a vertex more on the straight",
         [](Line& l) {
             l.insert(l.begin() + 1, {3, 4});
         },
         false},
        {"a vertex more beside the straight",
         [](Line& l) {
             l.insert(l.begin() + 1, {3, 4.1});
         },
         true},
        {"a vertex less within a curve", [](Line& l) { l.erase(l.begin() + 3); }, false},
        {"a joint less", [](Line& l) { l.erase(l.begin() + 1); }, true},
        {"no start", [](Line& l) { l.erase(l.begin()); }, true},
        {"no end", [](Line& l) { l.pop_back(); }, true},
        {"the other direction", [](Line& l) { std::reverse(l.begin(), l.end()); }, true},
        {"the start again at the end", [](Line& l) { l.push_back(l.front()); }, true},
        {"two vertices", [](Line& l) { l.resize(2); }, true},
    };
    for (const Change& change : changes) {
        Line changed = line;
        change.make(changed);
        setLine(changed);
        EXPECT_EQ(told(StoreNoteCode::LinesDiffer), change.isTold ? wanted : "") << change.name;
    }
    change("UPDATE alignments SET geom = NULL");
    EXPECT_EQ(told(StoreNoteCode::LinesDiffer), wanted) << "none; the alignment without elements has none either";
    change("UPDATE alignments SET geom = (SELECT geom FROM points) WHERE fid IN (SELECT min(fid) FROM alignments)");
    EXPECT_EQ(told(StoreNoteCode::LinesDiffer), wanted) << "a point";
}

TEST_F(DerivedLayers, ACopyUnderAnotherNameHasThemAnew) {
    change("UPDATE alignments SET geom = NULL");
    change("DELETE FROM lots");
    change("UPDATE polylines SET import_id = 1");
    EXPECT_NE(told(StoreNoteCode::LinesDiffer), "");
    EXPECT_NE(told(StoreNoteCode::LotsDiffer), "");
    Drawing open;
    DrawingStore store;
    ASSERT_TRUE(store.open(path_, open));
    const std::string copy = folder_.at("写し.gpkg");
    ASSERT_TRUE(store.save(copy, open));
    ASSERT_TRUE(store.open(copy, open));
    EXPECT_TRUE(store.notes().empty());
    EXPECT_EQ(OtherProgram(copy).one("SELECT count(*) FROM lots"), "1");
    EXPECT_EQ(OtherProgram(copy).one("SELECT count(geom) FROM alignments"), "1");
}

// Elements shorter than what is told and joints that are broken; and curves of a full circle and more, which do not tell
// which vertex is whose.
TEST_F(DerivedLayers, NothingIsSaidOfLinesAsTheyWereDrawn) {
    const std::vector<double> plain = {0.0, 0.004, 0.004, 0.004, 61.0, 0.0, 0.011, 0.02, 40.0, 0.001};
    const std::vector<double> winding = {5.0, 20.0 * std::numbers::pi, 7.0, 400.0};
    for (const std::vector<double>& lengths : {plain, winding}) {
        const std::size_t alignment =
            drawing_.addAlignment(drawing_.sites().front().id, "環", "0", kStandardStyle, kStandardStyle);
        Element element;
        element.type = ElementType::Arc;
        element.startRadius = element.endRadius = 10;
        for (const double length : lengths) {
            element.length = length;
            element.end = poseOnElement(element, length).point;
            drawing_.addElement(alignment, element);
            element.start = element.end;
            element.direction = element.endDirection();
        }
        // A joint that is broken, and a straight of its own behind it.
        element.type = ElementType::Straight;
        element.startRadius = element.endRadius = kInfiniteRadius;
        element.start.x += 5;
        element.length = 1;
        element.end = poseOnElement(element, 1).point;
        drawing_.addElement(alignment, element);
    }
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(told(StoreNoteCode::LinesDiffer), "");
}

TEST_F(DerivedLayers, GeometryOfAnotherReferenceSystemThanItsTableIsTold) {
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), "");
    const auto rename = [this](const char* table, int first, std::uint32_t srs) {
        std::string hex(8, '0');
        for (std::size_t i = 0; i < 4; ++i) {
            hex[2 * i] = "0123456789abcdef"[(srs >> (8 * i + 4)) & 15U];
            hex[2 * i + 1] = "0123456789abcdef"[(srs >> (8 * i)) & 15U];
        }
        change(std::string("UPDATE ") + table + " SET geom = CAST(substr(geom, 1, 4) || x'" + hex +
               "' || substr(geom, 9) AS BLOB) WHERE fid >= (SELECT min(fid) FROM " + table + ") + " +
               std::to_string(first) + " AND geom NOT NULL");
    };
    const auto wanted = [this](const char* table, int first, const char* count) {
        return std::string(count) + " another reference system than the table '" + table + "' (first fid " +
               OtherProgram(path_).one(std::string("SELECT min(fid) + ") + std::to_string(first) + " FROM " + table) +
               "), taken as coordinates in the table's\n";
    };
    rename("points", 4, 6677);
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), wanted("points", 4, "1 feature names"));
    rename("points", 0, 4326);
    rename("polylines", 2, 1);
    EXPECT_EQ(told(StoreNoteCode::OtherSystem),
              wanted("points", 0, "5 features name") + wanted("polylines", 2, "2 features name"));
    rename("points", 0, 0);
    rename("polylines", 0, 0xffffffff);
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), "") << "those that name none are in the table's";
    drawing_.setZone(9);
    ASSERT_TRUE(store_.save(path_, drawing_));
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), "");
    rename("points", 0, 6678);
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), wanted("points", 0, "5 features name"));
    change("UPDATE gpkg_geometry_columns SET srs_id = 0");
    rename("points", 0, 6677);
    EXPECT_EQ(told(StoreNoteCode::OtherSystem), "") << "the drawing's";
}

} // namespace
} // namespace fenmark::drawing
