// DXF of a drawing: its groups, tables and handles, and what the entities say.
#include "exchange/dxf.h"
#include "exchange/dxf_writer.h"
#include "exchange/export_options.h"
#include "exchange/notes.h"
#include "sample_drawing.h"
#include "sima/text/cp932.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <sstream>

namespace fenmark::exchange {
namespace {

constexpr double kMetres = 1e-9;      // of coordinates
constexpr double kDegrees = 1e-9;     // of angles
constexpr double kLine = 1.000001e-3; // metres between a clothoid and its line

std::string cp932(std::string_view text) {
    std::string bytes;
    sima::encodeCp932(bytes, text);
    return bytes;
}

struct Group {
    int code;
    std::string value;
};

// As old programs read it: an entity for each element, on the drawing's layers.
ExportOptions oldOptions() {
    ExportOptions options;
    options.dxfVersion = DxfVersion::R12;
    options.dxfLayers = DxfLayers::Drawing;
    options.elements = true;
    return options;
}

std::vector<Group> dxfOf(const Drawing& drawing, const ExportOptions& options = oldOptions()) {
    std::ostringstream out;
    writeDxf(drawing, options, out);
    std::istringstream in(out.str());
    std::vector<Group> groups;
    std::string code;
    std::string value;
    while (std::getline(in, code) && std::getline(in, value)) {
        EXPECT_TRUE(code.ends_with('\r') && value.ends_with('\r'));
        value.pop_back();
        groups.push_back({std::stoi(code), value});
    }
    return groups;
}

// The groups of each entity of a type, in the section of entities.
std::vector<std::vector<Group>> dxfEntities(const std::vector<Group>& groups, const std::string& type) {
    std::vector<std::vector<Group>> found;
    bool within = false;
    bool wanted = false;
    for (const Group& group : groups) {
        if (group.code == 2 && group.value == "ENTITIES") {
            within = true;
        }
        if (group.code == 0) {
            wanted = within && group.value == type;
            if (wanted) {
                found.emplace_back();
            }
        }
        if (wanted) {
            found.back().push_back(group);
        }
    }
    return found;
}

std::string textOf(const std::vector<Group>& entity, int code) {
    for (const Group& group : entity) {
        if (group.code == code) {
            return group.value;
        }
    }
    return {};
}

double numberOf(const std::vector<Group>& entity, int code) {
    return std::stod(textOf(entity, code));
}

TEST(Dxf, IsReleaseTwelveInCodePage932AndComplete) {
    Drawing drawing;
    fillSample(drawing);
    const std::vector<Group> groups = dxfOf(drawing);
    ASSERT_GT(groups.size(), 10U);
    EXPECT_EQ(groups[3].value, "AC1009");
    EXPECT_EQ(groups[5].value, "ANSI_932");
    EXPECT_EQ(groups.back().value, "EOF");
    int open = 0;
    for (const Group& group : groups) {
        open += group.code == 0 ? (group.value == "SECTION" ? 1 : group.value == "ENDSEC" ? -1 : 0) : 0;
    }
    EXPECT_EQ(open, 0);
}

TEST(Dxf, HasStraightsAsLinesArcsAsArcsAndClothoidsAsFinePolylines) {
    Drawing drawing;
    fillSample(drawing);
    const std::vector<Group> groups = dxfOf(drawing);
    EXPECT_EQ(dxfEntities(groups, "LINE").size(), 2U);
    ASSERT_EQ(dxfEntities(groups, "ARC").size(), 1U);
    EXPECT_EQ(dxfEntities(groups, "POLYLINE").size(), 4U) << "two clothoids, a lot and a stake line";
    EXPECT_EQ(dxfEntities(groups, "SEQEND").size(), 4U);
    EXPECT_EQ(dxfEntities(groups, "POINT").size(), 2U);
    const Element& arc = drawing.alignment(0).elements[2];
    const std::vector<Group> written = dxfEntities(groups, "ARC")[0];
    EXPECT_NEAR(numberOf(written, 10), arc.centre().x, kMetres);
    EXPECT_NEAR(numberOf(written, 20), arc.centre().y, kMetres);
    EXPECT_EQ(numberOf(written, 40), 100.0);
}

TEST(Dxf, ArcsAreRedAndClothoidsGreen) {
    for (const bool clockwise : {false, true}) {
        Drawing drawing;
        addRoad(drawing, {0.0, 0.0}, clockwise);
        const std::vector<Group> groups = dxfOf(drawing);
        ASSERT_EQ(dxfEntities(groups, "ARC").size(), 1U);
        EXPECT_EQ(numberOf(dxfEntities(groups, "ARC")[0], 62), 1.0);
        const auto clothoids = dxfEntities(groups, "POLYLINE");
        ASSERT_EQ(clothoids.size(), 2U);
        for (const std::vector<Group>& clothoid : clothoids) {
            EXPECT_EQ(numberOf(clothoid, 62), 3.0);
        }
    }
}

TEST(Dxf, ArcsRunAnticlockwiseWhicheverWayTheAlignmentTurns) {
    for (const bool clockwise : {false, true}) {
        Drawing drawing;
        addRoad(drawing, {0.0, 0.0}, clockwise);
        const std::vector<Group> arc = dxfEntities(dxfOf(drawing), "ARC").at(0);
        const double sweep = std::fmod(numberOf(arc, 51) - numberOf(arc, 50) + 360.0, 360.0);
        EXPECT_NEAR(sweep, 40.0 / 100.0 * 180.0 / std::numbers::pi, kDegrees) << clockwise;
    }
}

// Where they are cut they lie on the arc, at equal parts.
TEST(Dxf, WideArcsOfAPolylineAreCutOnThemselves) {
    for (const double turn : {1.0, 4.0, 6.0}) {
        Drawing drawing;
        addChain(drawing, {{ElementType::Straight, 20.0, kStraight, kStraight, false},
                           {ElementType::Arc, turn * 50.0, 50.0, 50.0, false}});
        ExportOptions options;
        options.dxfVersion = DxfVersion::R2000;
        const auto lines = dxfEntities(dxfOf(drawing, options), "LWPOLYLINE");
        ASSERT_EQ(lines.size(), 1U);
        std::vector<double> x, y;
        for (const Group& group : lines[0]) {
            if (group.code == 10) {
                x.push_back(std::stod(group.value));
            } else if (group.code == 20) {
                y.push_back(std::stod(group.value));
            }
        }
        ASSERT_EQ(x.size(), y.size());
        const std::size_t parts = x.size() - 2;
        EXPECT_EQ(parts > 1, turn > 3.0);
        for (std::size_t i = 0; i <= parts; ++i) {
            const double angle = turn * static_cast<double>(i) / static_cast<double>(parts);
            EXPECT_NEAR(x.at(1 + i), 20.0 + 50.0 * std::sin(angle), 1e-6) << turn;
            EXPECT_NEAR(y.at(1 + i), 50.0 - 50.0 * std::cos(angle), 1e-6) << turn;
        }
    }
}

TEST(Dxf, ClothoidsAreOpenAndTheirSidesStraight) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, false);
    for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2000}) {
        ExportOptions options = oldOptions();
        options.dxfVersion = version;
        const auto groups = dxfOf(drawing, options);
        const auto lines = dxfEntities(groups, version == DxfVersion::R12 ? "POLYLINE" : "LWPOLYLINE");
        ASSERT_EQ(lines.size(), 2U);
        for (const auto& line : lines) {
            EXPECT_EQ(textOf(line, 70), "0");
            EXPECT_EQ(textOf(line, 42), "");
        }
        for (const auto& vertex : dxfEntities(groups, "VERTEX")) {
            EXPECT_EQ(textOf(vertex, 42), "");
        }
    }
}

TEST(Dxf, ClothoidVerticesLieOnTheCurveAndCloseEnough) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, false);
    const auto vertices = dxfEntities(dxfOf(drawing), "VERTEX");
    ASSERT_GT(vertices.size(), 4U);
    const auto& geometry = drawing.geometry(0);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const PlanPoint at{numberOf(vertices[i], 10), numberOf(vertices[i], 20)};
        EXPECT_NEAR(geometry.locate(at)->offset, 0.0, kMetres);
        if (i == 0) {
            continue;
        }
        const PlanPoint before{numberOf(vertices[i - 1], 10), numberOf(vertices[i - 1], 20)};
        constexpr double kArc = 40.0; // metres, between the two clothoids
        if (geometry.locate(at)->station - geometry.locate(before)->station > kArc - kLine) {
            continue;
        }
        const PlanPoint middle{(at.x + before.x) / 2.0, (at.y + before.y) / 2.0};
        EXPECT_LE(std::abs(geometry.locate(middle)->offset), kLine);
    }
}

TEST(Dxf, PointsKeepHeightsAndNamesAreTexts) {
    Drawing drawing;
    fillSample(drawing);
    const std::vector<Group> groups = dxfOf(drawing);
    EXPECT_EQ(numberOf(dxfEntities(groups, "POINT")[0], 30), 12.5);
    std::vector<std::string> texts;
    for (const auto& text : dxfEntities(groups, "TEXT")) {
        texts.push_back(textOf(text, 1));
    }
    EXPECT_EQ(texts, (std::vector<std::string>{cp932("中心線"), "BP", cp932("点,\"2\""), "12-3", cp932("左")}));
}

TEST(Dxf, LotsAreClosedPolylines) {
    Drawing drawing;
    addPolyline(drawing, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, true, "");
    addPolyline(drawing, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, false, "");
    const auto polylines = dxfEntities(dxfOf(drawing), "POLYLINE");
    ASSERT_EQ(polylines.size(), 2U);
    EXPECT_EQ(textOf(polylines[0], 70), "1");
    EXPECT_EQ(textOf(polylines[1], 70), "0");
}

TEST(Dxf, RowsAreExtendedDataOfARegisteredApplication) {
    Drawing drawing;
    addPoint(drawing, {1, 2, 3}, "基1");
    addPolyline(drawing, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}, true, "12-3");
    drawing.addPoint({4, 5, 6}, 0); // without a row
    const std::vector<Group> groups = dxfOf(drawing);
    const auto dataOf = [](const std::vector<Group>& entity) {
        std::vector<std::string> data;
        bool behind = false;
        for (const Group& group : entity) {
            behind = behind || group.code >= 1000;
            EXPECT_EQ(behind, group.code >= 1000) << "nothing ordinary stands behind it";
            if (behind) {
                data.push_back(std::to_string(group.code) + " " + group.value);
            }
        }
        return data;
    };
    const auto points = dxfEntities(groups, "POINT");
    EXPECT_EQ(dataOf(points.at(0)),
              (std::vector<std::string>{"1001 FENMARK", "1000 JSIMA_V3_Point", "1071 1", "1000 " + cp932("基1"),
                                        "1000 " + cp932("座標"), "1000 a.sim"}));
    EXPECT_TRUE(dataOf(points.at(1)).empty());
    EXPECT_EQ(dataOf(dxfEntities(groups, "POLYLINE").at(0)).at(3), "1000 12-3");
    int registered = 0;
    for (std::size_t i = 0; i + 1 < groups.size(); ++i) {
        registered += groups[i].code == 0 && groups[i].value == "APPID" && groups[i + 1].value == "FENMARK" ? 1 : 0;
    }
    EXPECT_EQ(registered, 1);
}

TEST(Dxf, LongTextsOfRowsAreCutBetweenCharacters) {
    Drawing drawing;
    std::string name = "a";
    for (int i = 0; i < 200; ++i) {
        name += "点";
    }
    addPoint(drawing, {1, 2, 3}, name.c_str());
    std::vector<std::string> texts;
    const auto points = dxfEntities(dxfOf(drawing), "POINT");
    for (const Group& group : points.at(0)) {
        if (group.code == 1000) {
            texts.push_back(group.value);
        }
    }
    EXPECT_EQ(texts.at(1).size(), 255U); // one byte and 127 characters of two
    EXPECT_EQ(texts.at(1), cp932(std::string_view(name).substr(0, 1 + 127 * 3)));
}

TEST(Dxf, WhatTheCodePageCannotHoldIsEscaped) {
    Drawing drawing;
    addPoint(drawing, {0, 0, 0}, "é\r한?");
    EXPECT_EQ(textOf(dxfEntities(dxfOf(drawing), "TEXT").at(0), 1), "\\U+00E9 \\U+D55C?");
}

TEST(Dxf, CharactersThatTheReleaseCannotHoldAreTold) {
    Drawing drawing;
    addRoad(drawing, {0.0, 0.0}, true, "\U00020BB7線");
    addPoint(drawing, {1.0, 2.0, 3.0}, "\U00020BB7野\U0001F642");
    addPoint(drawing, {1.0, 2.0, 3.0}, "é髙");
    addPolyline(drawing, {{0, 0, 0}, {0, 8, 0}, {12, 8, 0}}, true, "\U00020BB7");
    ExportOptions options;
    const auto notesOf = [&] {
        std::ostringstream out;
        return writeDxf(drawing, options, out);
    };
    EXPECT_EQ(notesOf(), (Notes{{NoteCode::BeyondRelease, 4}}));
    drawing.addLayer("\U00020BB7\U00020BB7");
    EXPECT_EQ(notesOf(), (Notes{{NoteCode::BeyondRelease, 4}})) << "the layers are those of the kinds";
    options.dxfLayers = DxfLayers::Drawing;
    EXPECT_EQ(notesOf(), (Notes{{NoteCode::BeyondRelease, 6}}));
    options.dxfLayers = DxfLayers::Kinds;
    options.selection.left[static_cast<std::size_t>(Kind::Points)] = true;
    EXPECT_EQ(notesOf(), (Notes{{NoteCode::BeyondRelease, 2}}));
    options.dxfVersion = DxfVersion::R12;
    EXPECT_EQ(notesOf(), (Notes{{NoteCode::BeyondRelease, 2}}));
    options.dxfVersion = DxfVersion::R2018;
    EXPECT_EQ(notesOf(), Notes());
}

TEST(Dxf, LayerNamesLoseWhatDxfForbids) {
    Drawing drawing;
    drawing.addLayer("a/b:測点");
    addPoint(drawing, {0, 0, 0}, "", "座標", *drawing.findLayer("a/b:測点"));
    EXPECT_EQ(textOf(dxfEntities(dxfOf(drawing), "POINT").at(0), 8), cp932("a_b_測点"));
}

TEST(Dxf, EmptyDrawingIsAFileAllTheSame) {
    EXPECT_EQ(dxfOf(Drawing()).back().value, "EOF");
}

// --- release 2000 and later: what its readers demand of every table, record and entity ---

struct DxfItem {
    std::string section;
    std::string type;
    std::vector<Group> groups; // without the type
};

std::vector<DxfItem> itemsOf(const std::vector<Group>& groups) {
    std::vector<DxfItem> items;
    std::string section;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code != 0) {
            if (!items.empty()) {
                items.back().groups.push_back(groups[i]);
            }
            continue;
        }
        if (groups[i].value == "SECTION") {
            section = groups.at(i + 1).value;
        }
        items.push_back({section, groups[i].value, {}});
    }
    return items;
}

std::vector<std::string> allOf(const DxfItem& item, int code) {
    std::vector<std::string> values;
    for (const Group& group : item.groups) {
        if (group.code == code) {
            values.push_back(group.value);
        }
    }
    return values;
}

std::string headerValue(const std::vector<Group>& groups, const std::string& name, int code) {
    for (std::size_t i = 0; i + 1 < groups.size(); ++i) {
        if (groups[i].code == 9 && groups[i].value == name) {
            EXPECT_EQ(groups[i + 1].code, code) << name;
            return groups[i + 1].value;
        }
    }
    ADD_FAILURE() << name;
    return {};
}

class NewDxf : public ::testing::TestWithParam<DxfVersion> {
  protected:
    NewDxf() {
        fillSample(drawing_);
        addRoad(drawing_, {12500.0, -36500.0}, true, "支線");
        addPoint(drawing_, {12000.0, -36001.0, 0.0}, "縦", "縦断成果");
        options_.dxfVersion = GetParam();
    }
    std::vector<Group> groups() const { return dxfOf(drawing_, options_); }

    Drawing drawing_;
    ExportOptions options_;
};

INSTANTIATE_TEST_SUITE_P(Releases, NewDxf, ::testing::Values(DxfVersion::R2000, DxfVersion::R2018),
                         [](const auto& info) { return info.param == DxfVersion::R2000 ? "R2000" : "R2018"; });

TEST_P(NewDxf, SectionsAndTablesAreAllThereInOrder) {
    std::string sections;
    std::string tables;
    const std::vector<Group> all = groups();
    for (std::size_t i = 0; i + 1 < all.size(); ++i) {
        if (all[i].code == 0 && all[i].value == "SECTION") {
            sections += all[i + 1].value + " ";
        } else if (all[i].code == 0 && all[i].value == "TABLE") {
            tables += all[i + 1].value + " ";
        }
    }
    EXPECT_EQ(sections, "HEADER CLASSES TABLES BLOCKS ENTITIES OBJECTS ");
    EXPECT_EQ(tables, "VPORT LTYPE LAYER STYLE VIEW UCS APPID DIMSTYLE BLOCK_RECORD ");
    EXPECT_EQ(all[2].value, "$ACADVER") << "before the code page";
    EXPECT_EQ(headerValue(all, "$ACADVER", 1), GetParam() == DxfVersion::R2000 ? "AC1015" : "AC1032");
    EXPECT_EQ(headerValue(all, "$DWGCODEPAGE", 3), "ANSI_932");
    EXPECT_EQ(headerValue(all, "$INSUNITS", 70), "6");
    EXPECT_EQ(headerValue(all, "$TEXTSTYLE", 7), "kst32b");
}

TEST_P(NewDxf, HandlesAreUniqueBelowTheSeedAndOwnersExist) {
    const std::vector<Group> all = groups();
    const unsigned long seed = std::stoul(headerValue(all, "$HANDSEED", 5), nullptr, 16);
    std::set<std::string> handles;
    const std::vector<DxfItem> items = itemsOf(all);
    for (const DxfItem& item : items) {
        if (item.type == "SECTION" || item.type == "ENDSEC" || item.type == "ENDTAB" || item.type == "EOF") {
            continue;
        }
        const auto own = allOf(item, item.type == "DIMSTYLE" && item.section == "TABLES" ? 105 : 5);
        ASSERT_EQ(own.size(), 1U) << item.section << " " << item.type;
        EXPECT_TRUE(handles.insert(own[0]).second) << own[0];
        EXPECT_GT(std::stoul(own[0], nullptr, 16), 0U);
        EXPECT_LT(std::stoul(own[0], nullptr, 16), seed);
    }
    handles.insert("0"); // the owner of tables and of the root dictionary
    for (const DxfItem& item : items) {
        for (const int code : {330, 340, 350}) {
            for (const std::string& owner : allOf(item, code)) {
                EXPECT_TRUE(handles.contains(owner)) << item.type << " " << code << " " << owner;
            }
        }
    }
}

TEST_P(NewDxf, RecordsBelongToTheirTableWhichCountsThem) {
    std::string table;
    std::string owner;
    int counted = 0;
    int records = 0;
    std::map<std::string, std::set<std::string>> names;
    for (const DxfItem& item : itemsOf(groups())) {
        if (item.section != "TABLES") {
            continue;
        }
        if (item.type == "TABLE") {
            table = allOf(item, 2).at(0);
            owner = allOf(item, 5).at(0);
            counted = std::stoi(allOf(item, 70).at(0));
            records = 0;
            EXPECT_EQ(allOf(item, 330), (std::vector<std::string>{"0"}));
            EXPECT_EQ(allOf(item, 100).at(0), "AcDbSymbolTable");
        } else if (item.type == "ENDTAB") {
            EXPECT_EQ(records, counted) << table;
        } else if (item.type != "SECTION" && item.type != "ENDSEC") {
            ++records;
            EXPECT_EQ(item.type, table);
            EXPECT_EQ(allOf(item, 330).at(0), owner);
            const auto classes = allOf(item, 100);
            ASSERT_EQ(classes.size(), 2U) << item.type;
            EXPECT_EQ(classes[0], "AcDbSymbolTableRecord");
            EXPECT_TRUE(names[table].insert(allOf(item, 2).at(0)).second);
        }
    }
    EXPECT_EQ(names["VPORT"], (std::set<std::string>{"*ACTIVE"}));
    EXPECT_EQ(names["LTYPE"], (std::set<std::string>{"ByBlock", "ByLayer", "Continuous"}));
    EXPECT_EQ(names["STYLE"], (std::set<std::string>{"Standard", "kst32b"}));
    EXPECT_EQ(names["APPID"], (std::set<std::string>{"ACAD", "FENMARK"}));
    EXPECT_EQ(names["DIMSTYLE"], (std::set<std::string>{"Standard"}));
    EXPECT_EQ(names["BLOCK_RECORD"], (std::set<std::string>{"*Model_Space", "*Paper_Space"}));
    EXPECT_TRUE(names["LAYER"].contains("0"));
}

TEST_P(NewDxf, EntitiesLieInTheModelSpaceOnLayersThatExist) {
    std::set<std::string> layers;
    std::string model;
    const std::map<std::string, std::vector<std::string>> kClasses = {
        {"LWPOLYLINE", {"AcDbEntity", "AcDbPolyline"}},   {"POINT", {"AcDbEntity", "AcDbPoint"}},
        {"TEXT", {"AcDbEntity", "AcDbText", "AcDbText"}}, {"LINE", {"AcDbEntity", "AcDbLine"}},
        {"ARC", {"AcDbEntity", "AcDbCircle", "AcDbArc"}},
    };
    for (const bool elements : {false, true}) {
        options_.elements = elements;
        std::size_t entities = 0;
        for (const DxfItem& item : itemsOf(groups())) {
            if (item.section == "TABLES" && item.type == "LAYER") {
                layers.insert(allOf(item, 2).at(0));
            } else if (item.section == "TABLES" && item.type == "BLOCK_RECORD" && allOf(item, 2)[0] == "*Model_Space") {
                model = allOf(item, 5).at(0);
            } else if (item.section == "ENTITIES" && item.type != "SECTION" && item.type != "ENDSEC") {
                ++entities;
                EXPECT_EQ(allOf(item, 330).at(0), model);
                EXPECT_TRUE(layers.contains(allOf(item, 8).at(0))) << allOf(item, 8).at(0);
                ASSERT_TRUE(kClasses.contains(item.type)) << item.type;
                EXPECT_EQ(allOf(item, 100), kClasses.at(item.type)) << item.type;
                if (item.type == "LWPOLYLINE") {
                    EXPECT_EQ(allOf(item, 10).size(), std::stoul(allOf(item, 90).at(0)));
                    EXPECT_EQ(allOf(item, 20).size(), allOf(item, 10).size());
                } else if (item.type == "TEXT") {
                    EXPECT_EQ(allOf(item, 7).at(0), "kst32b");
                }
            }
        }
        EXPECT_EQ(entities, elements ? 22U : 14U);
    }
}

TEST_P(NewDxf, ObjectsBeginWithTheRootDictionary) {
    std::vector<DxfItem> objects;
    for (const DxfItem& item : itemsOf(groups())) {
        if (item.section == "OBJECTS" && item.type == "DICTIONARY") {
            objects.push_back(item);
        }
    }
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(allOf(objects[0], 330).at(0), "0");
    EXPECT_EQ(allOf(objects[0], 3).at(0), "ACAD_GROUP");
    EXPECT_EQ(allOf(objects[0], 350).at(0), allOf(objects[1], 5).at(0));
    EXPECT_EQ(allOf(objects[1], 330).at(0), allOf(objects[0], 5).at(0));
}

TEST_P(NewDxf, BlocksOfBothSpacesBelongToTheirRecords) {
    std::map<std::string, std::string> records;
    std::string found;
    for (const DxfItem& item : itemsOf(groups())) {
        if (item.section == "TABLES" && item.type == "BLOCK_RECORD") {
            records[allOf(item, 2).at(0)] = allOf(item, 5).at(0);
        } else if (item.section == "BLOCKS" && item.type == "BLOCK") {
            const std::string name = allOf(item, 2).at(0);
            found += name + " ";
            EXPECT_EQ(allOf(item, 330).at(0), records.at(name));
            EXPECT_EQ(allOf(item, 100), (std::vector<std::string>{"AcDbEntity", "AcDbBlockBegin"}));
            EXPECT_EQ(allOf(item, 67).size(), name == "*Paper_Space" ? 1U : 0U);
        } else if (item.section == "BLOCKS" && item.type == "ENDBLK") {
            EXPECT_EQ(allOf(item, 100), (std::vector<std::string>{"AcDbEntity", "AcDbBlockEnd"}));
        }
    }
    EXPECT_EQ(found, "*Model_Space *Paper_Space ");
}

TEST_P(NewDxf, TheFirstViewHoldsTheDrawing) {
    for (const DxfItem& item : itemsOf(groups())) {
        if (item.type != "VPORT" || item.section != "TABLES") {
            continue;
        }
        const double height = std::stod(allOf(item, 40).at(0));
        const double width = height * std::stod(allOf(item, 41).at(0));
        const double x = std::stod(allOf(item, 12).at(0));
        const double y = std::stod(allOf(item, 22).at(0));
        const drawing::Extent& extent = drawing_.extent();
        EXPECT_LE(x - width / 2.0, extent.minX);
        EXPECT_GE(x + width / 2.0, extent.maxX);
        EXPECT_LE(y - height / 2.0, extent.minY);
        EXPECT_GE(y + height / 2.0, extent.maxY);
        EXPECT_LT(height, 3.0 * std::max(extent.maxY - extent.minY, extent.maxX - extent.minX));
    }
}

TEST(Dxf, TheFirstViewHasATwentiethFreeOnEachSideAndIsTenMetresHighAtLeast) {
    const struct {
        std::vector<MdGePoint3d> points;
        double x, y, height;
    } kCases[] = {
        {{}, 0.0, 0.0, 10.0},
        {{{5, -7, 0}}, 5.0, -7.0, 10.0},
        {{{0, 0, 0}, {160, 20, 0}}, 80.0, 10.0, 110.0}, // as wide as 1.6 of its height
        {{{-30, 40, 0}, {20, 140, 0}}, -5.0, 90.0, 110.0},
        {{{0, 0, 0}, {0, 9, 0}}, 0.0, 4.5, 10.0},
    };
    for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2000, DxfVersion::R2018}) {
        ExportOptions options;
        options.dxfVersion = version;
        for (const auto& [points, x, y, height] : kCases) {
            Drawing drawing;
            for (const MdGePoint3d& point : points) {
                addPoint(drawing, point, "P");
            }
            int views = 0;
            for (const DxfItem& item : itemsOf(dxfOf(drawing, options))) {
                if (item.type == "VPORT" && item.section == "TABLES") {
                    ++views;
                    EXPECT_NEAR(std::stod(allOf(item, 12).at(0)), x, kMetres);
                    EXPECT_NEAR(std::stod(allOf(item, 22).at(0)), y, kMetres);
                    EXPECT_NEAR(std::stod(allOf(item, 40).at(0)), height, kMetres);
                    EXPECT_EQ(std::stod(allOf(item, 41).at(0)), 1.6);
                }
            }
            EXPECT_EQ(views, 1);
        }
    }
}

TEST_P(NewDxf, AnAlignmentIsOnePolylineWithBulgesWithinAMillimetre) {
    for (std::size_t road = 0; road < 2; ++road) {
        std::vector<std::vector<Group>> lines;
        for (const auto& line : dxfEntities(groups(), "LWPOLYLINE")) {
            if (textOf(line, 1000) == "alignment") {
                lines.push_back(line);
            }
        }
        ASSERT_EQ(lines.size(), 2U);
        const auto& geometry = drawing_.geometry(road);
        std::vector<PlanPoint> points;
        std::vector<double> bulges;
        for (const Group& group : lines[road]) {
            if (group.code == 10) {
                points.push_back({std::stod(group.value), 0.0});
                bulges.push_back(0.0);
            } else if (group.code == 20) {
                points.back().y = std::stod(group.value);
            } else if (group.code == 42) {
                bulges.back() = std::stod(group.value);
            }
        }
        double length = 0.0;
        int arcs = 0;
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const PlanPoint& a = points[i];
            const PlanPoint& b = points[i + 1];
            EXPECT_NEAR(geometry.locate(a)->offset, 0.0, kMetres);
            // The middle of a bulge lies this share of half the chord to the right of it.
            const PlanPoint middle{(a.x + b.x) / 2.0 + bulges[i] * (b.y - a.y) / 2.0,
                                   (a.y + b.y) / 2.0 - bulges[i] * (b.x - a.x) / 2.0};
            EXPECT_LE(std::abs(geometry.locate(middle)->offset), bulges[i] == 0.0 ? kLine : kMetres);
            arcs += bulges[i] != 0.0 ? 1 : 0;
            const double chord = std::hypot(b.x - a.x, b.y - a.y);
            const double angle = 4.0 * std::atan(std::abs(bulges[i]));
            length += angle > 0.0 ? chord / 2.0 / std::sin(angle / 2.0) * angle : chord;
        }
        EXPECT_EQ(arcs, 1);
        EXPECT_NEAR(length, 192.0, 0.01);
    }
}

TEST_P(NewDxf, AlignmentsHaveExtendedDataByElementToo) {
    const auto dataOf = [](const std::vector<Group>& entity) {
        std::vector<std::string> data;
        for (const Group& group : entity) {
            if (group.code >= 1000) {
                data.push_back(std::to_string(group.code) + " " + group.value);
            }
        }
        return data;
    };
    const auto text = [&](std::string_view value) {
        return GetParam() == DxfVersion::R2018 ? std::string(value) : cp932(value);
    };
    const std::string id = std::to_string(drawing_.alignment(0).id.asUint64());
    const std::vector<std::string> alignment = {"1001 FENMARK",
                                                "1000 alignment",
                                                "1071 " + id,
                                                "1000 " + text("中心線"),
                                                "1000 " + text("平面線形"),
                                                "1000 " + text("a-中心線"),
                                                "1000 " + text("サイト"),
                                                "1040 100",
                                                "1040 192"};
    EXPECT_EQ(dataOf(dxfEntities(groups(), "LWPOLYLINE").at(0)), alignment);
    options_.elements = true;
    std::vector<std::string> arc = alignment;
    for (const char* value : {"1071 3", "1000 R", "1040 186", "1040 40", "1040 100", "1040 100"}) {
        arc.push_back(value);
    }
    EXPECT_EQ(dataOf(dxfEntities(groups(), "ARC").at(0)), arc);
}

TEST_P(NewDxf, HeightsThatNobodyGaveStayOut) {
    std::vector<std::string> heights;
    for (const auto& point : dxfEntities(groups(), "POINT")) {
        heights.push_back(textOf(point, 30));
    }
    EXPECT_EQ(heights, (std::vector<std::string>{"12.5", "", "0"})) << "a result has its height, also at 0";
}

TEST_P(NewDxf, NamesAreAsHighAsTheScaleSays) {
    EXPECT_EQ(numberOf(dxfEntities(groups(), "TEXT").at(0), 40), 1.25);
    options_.scale = 1000.0;
    EXPECT_EQ(numberOf(dxfEntities(groups(), "TEXT").at(0), 40), 2.5);
}

TEST_P(NewDxf, KindsHaveLayersWithColoursOrTheDrawingsAreKept) {
    const auto layersOf = [&] {
        std::map<std::string, std::string> layers;
        for (const DxfItem& item : itemsOf(groups())) {
            if (item.section == "TABLES" && item.type == "LAYER") {
                layers[allOf(item, 2).at(0)] = allOf(item, 62).at(0);
            }
        }
        return layers;
    };
    const auto name = [&](std::string_view value) {
        return GetParam() == DxfVersion::R2018 ? std::string(value) : cp932(value);
    };
    EXPECT_EQ(layersOf(), (std::map<std::string, std::string>{{"0", "7"},
                                                              {name("座標点"), "7"},
                                                              {name("点名"), "7"},
                                                              {name("画地"), "3"},
                                                              {name("画地名"), "3"},
                                                              {name("線形"), "1"},
                                                              {name("線形名"), "1"},
                                                              {name("幅杭"), "4"},
                                                              {name("路線名"), "4"},
                                                              {name("縦断"), "2"},
                                                              {name("縦断点名"), "2"}}));
    options_.dxfLayers = DxfLayers::Drawing;
    EXPECT_EQ(layersOf(), (std::map<std::string, std::string>{{"0", "7"}, {"0-NAME", "7"}}));
}

TEST_P(NewDxf, ArcsOfMoreThanHalfATurnTakeTwoBulges) {
    Drawing drawing;
    const std::size_t road = drawing.addAlignment(drawing.addSite("S"), "C", "0", "", "");
    Element arc;
    arc.type = ElementType::Arc;
    arc.length = 150.0;
    arc.startRadius = arc.endRadius = 30.0;
    arc.end = drawing::poseOnElement(arc, arc.length).point;
    drawing.addElement(road, arc);
    const auto line = dxfEntities(dxfOf(drawing, options_), "LWPOLYLINE").at(0);
    EXPECT_EQ(textOf(line, 90), "3");
    EXPECT_NEAR(numberOf(line, 42), std::tan(150.0 / 30.0 / 8.0), kMetres);
}

TEST(DxfText, EscapesWhatReadersTakeForControlSequences) {
    using enum DxfVersion;
    EXPECT_EQ(dxfText(std::string_view("a\0b\n\x7F", 5), R2000), "a b  ");
    EXPECT_EQ(dxfText("2^3", R2000), "2^ 3");
    EXPECT_EQ(dxfText("a\xE6\x97", R2018), "a\uFFFD") << "bytes that are no UTF-8";
    EXPECT_EQ(dxfText("\\U+0041 \\M+1 \\P", R2000), "\\U+005CU+0041 \\U+005CM+1 \\P");
    EXPECT_EQ(dxfText("髙﨑", R2000), cp932("髙﨑"));
    EXPECT_EQ(dxfText("髙﨑é", R2018), "髙﨑é");
    EXPECT_EQ(dxfText("\uFFFE😀", R2000), "\\U+FFFE\\U+FFFD");
    EXPECT_EQ(dxfText("\uFFFE😀", R2018), "\uFFFD😀");
    EXPECT_EQ(dxfText("点点", R2018, 5), "点");
    // The first and the last characters of each length.
    EXPECT_EQ(dxfText("\u0080|\u07FF|\u0800|\u0E01|\uFFFD|\U00010000|\U0010FFFD|", R2000),
              "\\U+0080|\\U+07FF|\\U+0800|\\U+0E01|\\U+FFFD|\\U+FFFD|\\U+FFFD|");
    EXPECT_EQ(dxfLayer("a^b\x01", R2000), "a_b_");
    EXPECT_EQ(dxfLayer("", R2000), "0");
}

TEST(DxfLayerNames, HoldNothingThatLayersForbid) {
    for (int code = 1; code < 0x80; ++code) {
        const char c = static_cast<char>(code);
        const bool forbidden =
            code < 0x20 || code == 0x7F || std::string_view("<>/\\\":;?*|=',`^").find(c) != std::string_view::npos;
        const std::string name = std::string("画") + c + "地";
        for (const DxfVersion version : {DxfVersion::R12, DxfVersion::R2000, DxfVersion::R2018}) {
            const std::string wanted = std::string("画") + (forbidden ? '_' : c) + "地";
            EXPECT_EQ(dxfLayer(name, version), version == DxfVersion::R2018 ? wanted : cp932(wanted)) << code;
        }
    }
    EXPECT_EQ(dxfLayer("", DxfVersion::R2000), "0");
}

} // namespace
} // namespace fenmark::exchange
