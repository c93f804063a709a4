// DXF of a drawing: its groups, tables and handles, and what the entities say.
#include "exchange/dxf.h"
#include "sample_drawing.h"
#include "sima/text/cp932.h"

#include <gtest/gtest.h>

#include <cmath>
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

TEST(Dxf, ArcsRunAnticlockwiseWhicheverWayTheAlignmentTurns) {
    for (const bool clockwise : {false, true}) {
        Drawing drawing;
        addRoad(drawing, {0.0, 0.0}, clockwise);
        const std::vector<Group> arc = dxfEntities(dxfOf(drawing), "ARC").at(0);
        const double sweep = std::fmod(numberOf(arc, 51) - numberOf(arc, 50) + 360.0, 360.0);
        EXPECT_NEAR(sweep, 40.0 / 100.0 * 180.0 / std::numbers::pi, kDegrees) << clockwise;
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

TEST(Dxf, LayerNamesLoseWhatDxfForbids) {
    Drawing drawing;
    drawing.addLayer("a/b:測点");
    addPoint(drawing, {0, 0, 0}, "", "座標", *drawing.findLayer("a/b:測点"));
    EXPECT_EQ(textOf(dxfEntities(dxfOf(drawing), "POINT").at(0), 8), cp932("a_b_測点"));
}

TEST(Dxf, EmptyDrawingIsAFileAllTheSame) {
    EXPECT_EQ(dxfOf(Drawing()).back().value, "EOF");
}

} // namespace
} // namespace fenmark::exchange
