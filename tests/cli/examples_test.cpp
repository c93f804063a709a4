// The examples: each gives its log to the byte, and the road comes through tangent at every joint.
#include "command_line.h"

#include <cmath>

namespace fenmark::cli {
namespace {

constexpr double kJointTolerance = 2e-4;   // metres: the points of the file are rounded to 0.1 mm
constexpr double kTangentTolerance = 1e-5; // radians: what that rounding turns the shortest element by

class Example : public CommandLine, public ::testing::WithParamInterface<const char*> {};

TEST_P(Example, GivesItsLogToTheByte) {
    const std::string name = GetParam();
    const Ran ran = fenmark({"import", example(name + ".sim")});
    EXPECT_EQ(ran.code, kDone) << ran.err;
    const std::string expected = test::readFile(std::string(FENMARK_SOURCE_DIR) + "/examples/" + name + "_Input.log");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(test::readFile(folder.at(name + "_Input.log")), expected);
}

TEST_P(Example, LinesEndInCarriageReturnAndLineFeed) {
    const std::string text = test::readFile(std::string(FENMARK_SOURCE_DIR) + "/examples/" + GetParam() + ".sim");
    ASSERT_FALSE(text.empty());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            ASSERT_TRUE(i > 0 && text[i - 1] == '\r') << "byte " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, Example, ::testing::Values("road", "cadastral", "dirty"));

// Unit tangents at both ends of an element of the JSON.
struct Tangents {
    double start = 0.0; // radians
    double end = 0.0;
};

double direction(const nlohmann::json& from, const nlohmann::json& to) {
    return std::atan2(to[1].get<double>() - from[1].get<double>(), to[0].get<double>() - from[0].get<double>());
}

Tangents tangentsOf(const nlohmann::json& element) {
    const std::string type = element["type"];
    if (type == "S") {
        return {direction(element["start"], element["end"]), direction(element["start"], element["end"])};
    }
    if (type == "A") {
        return {direction(element["start"], element["pi"]), direction(element["pi"], element["end"])};
    }
    const double quarter = element["clockwise"].get<bool>() ? -std::acos(0.0) : std::acos(0.0);
    return {direction(element["center"], element["start"]) + quarter,
            direction(element["center"], element["end"]) + quarter};
}

class Road : public CommandLine {
  protected:
    void SetUp() override {
        const Ran ran = fenmark({"import", example("road.sim"), "--quiet"});
        ASSERT_EQ(ran.code, kDone) << ran.err;
        EXPECT_EQ(ran.err, "");
        drawing = info(folder.at("road.gpkg"));
    }
    nlohmann::json alignment(const std::string& name) const {
        for (const auto& candidate : drawing["sites"][0]["alignments"]) {
            if (candidate["name"] == name) {
                return candidate;
            }
        }
        ADD_FAILURE() << "no alignment " << name;
        return {};
    }
    nlohmann::json drawing;
};

TEST_F(Road, HoldsEveryElementOfItsCentreLine) {
    std::string types;
    std::string turns;
    const nlohmann::json elements = alignment("中心線")["elements"];
    for (const auto& element : elements) {
        types += element["type"].get<std::string>();
        if (element["type"] == "R") {
            turns += element["clockwise"].get<bool>() ? 'R' : 'L';
        }
    }
    EXPECT_EQ(types, "SARASARASARARAS");
    EXPECT_EQ(turns, "LRRR");
}

TEST_F(Road, EveryJointIsTangent) {
    for (const char* name : {"中心線", "旧道", "護岸"}) {
        const nlohmann::json elements = alignment(name)["elements"];
        for (std::size_t i = 1; i < elements.size(); ++i) {
            const auto& a = elements[i - 1]["end"];
            const auto& b = elements[i]["start"];
            EXPECT_LT(std::hypot(a[0].get<double>() - b[0].get<double>(), a[1].get<double>() - b[1].get<double>()),
                      kJointTolerance)
                << name << " joint " << i;
            const double turn =
                std::remainder(tangentsOf(elements[i]).start - tangentsOf(elements[i - 1]).end, 4.0 * std::acos(0.0));
            EXPECT_LT(std::abs(turn), kTangentTolerance) << name << " joint " << i;
        }
    }
}

TEST_F(Road, EggShapedClothoidLiesBetweenTwoArcs) {
    const nlohmann::json egg = alignment("中心線")["elements"][11];
    EXPECT_EQ(egg["type"], "A");
    EXPECT_DOUBLE_EQ(egg["start_radius"].get<double>(), 200.0);
    EXPECT_DOUBLE_EQ(egg["end_radius"].get<double>(), 100.0);
    EXPECT_DOUBLE_EQ(egg["length"].get<double>(), 72.0);
}

TEST_F(Road, StationAndLocateAreInverse) {
    const std::string path = folder.at("road.gpkg");
    for (const char* station : {"100", "155.5", "263.25", "400", "613.125", "960"}) {
        for (const char* offset : {"0", "-7.5", "12.25"}) {
            const Ran there = fenmark({"station", path, "中心線", station, offset});
            ASSERT_EQ(there.code, kDone) << there.err;
            std::istringstream point(there.out);
            std::string x;
            std::string y;
            point >> x >> y;
            const Ran back = fenmark({"locate", path, "中心線", x, y});
            ASSERT_EQ(back.code, kDone) << back.err;
            std::istringstream answer(back.out);
            double s = 0.0;
            double o = 0.0;
            answer >> s >> o;
            constexpr double kMetres = 1e-6;
            EXPECT_NEAR(s, std::stod(station), kMetres);
            EXPECT_NEAR(o, std::stod(offset), kMetres);
        }
    }
}

TEST_F(Road, OffsetsToTheRightArePositive) {
    // The stake to the right of No.10 stands 9 m off the centre line.
    for (const auto& entity : drawing["entities"]) {
        if (entity["type"] != "point" || entity["data"]["Name"] != "右10") {
            continue;
        }
        const Ran located = fenmark(
            {"locate", folder.at("road.gpkg"), "中心線", entity["position"][0].dump(), entity["position"][1].dump()});
        std::istringstream answer(located.out);
        double s = 0.0;
        double o = 0.0;
        answer >> s >> o;
        EXPECT_NEAR(s, 200.0, kJointTolerance);
        EXPECT_NEAR(o, 9.0, kJointTolerance);
        return;
    }
    FAIL() << "the stake is not in the drawing";
}

TEST_F(Road, EveryPointAndPolylineTellsWhereItCameFrom) {
    ASSERT_FALSE(drawing["entities"].empty());
    for (const auto& entity : drawing["entities"]) {
        ASSERT_TRUE(entity["data"].is_object()) << entity;
        EXPECT_EQ(entity["data"]["FileName"], "road.sim");
        EXPECT_EQ(entity["data"]["table"], entity["type"] == "point" ? "JSIMA_V3_Point" : "JSIMA_V3_Pline");
    }
}

} // namespace
} // namespace fenmark::cli
