// The element pass against a collection that writes down what it is given.
#include "output/alignment_passes.h"
#include "output/leading_clothoid.h"
#include "support/route_elements.h"

#include "host/boundary/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vector>

namespace fenmark {
namespace {

using host::MdGePoint3d;
using Elements = sima::Array<sima::EntityData>;

constexpr double kPointTolerance = 1e-9; // metres

struct Add {
    char type = 'S';
    MdGePoint3d start;
    MdGePoint3d end; // of a clothoid the PI
    double radius = 0.0;
    double startRadius = 0.0;
    double endRadius = 0.0;
    double length = 0.0;
    std::int16_t direction = 0;
    std::int32_t elementBefore = 0;
    std::int32_t spiralKind = 0;
};

class Element : public host::AlignmentElement {
  public:
    Element(std::int32_t id, MdGePoint3d end, int& living) : id_(id), end_(end), living_(living) { ++living_; }
    ~Element() override { --living_; }
    std::int32_t elementId() override { return id_; }
    double endX() override { return end_.x; }
    double endY() override { return end_.y; }
    double arcValue1() override { return 1.5; }
    double arcValue2() override { return 2.5; }

  private:
    std::int32_t id_;
    MdGePoint3d end_;
    int& living_;
};

// Element identifiers are 11, 12, ...; curves report the end given.
class Collection : public host::AlignmentElements {
  public:
    std::int32_t addFixedLine(const MdGePoint3d& start, const MdGePoint3d& end,
                              std::unique_ptr<host::AlignmentElement>& element) override {
        Add add;
        add.start = start;
        add.end = end;
        return give(add, element);
    }
    std::int32_t addFixedCurve(const MdGePoint3d& start, const MdGePoint3d& end, double radius, std::int16_t direction,
                               std::unique_ptr<host::AlignmentElement>& element) override {
        Add add;
        add.type = 'R';
        add.start = start;
        add.end = end;
        add.radius = radius;
        add.direction = direction;
        return give(add, element);
    }
    std::int32_t addFixedSpiral(std::int32_t elementBefore, const MdGePoint3d& start, const MdGePoint3d& pi,
                                double startRadius, double endRadius, double length, std::int16_t direction,
                                std::int32_t spiralKind, std::unique_ptr<host::AlignmentElement>& element) override {
        Add add;
        add.type = 'A';
        add.start = start;
        add.end = pi;
        add.startRadius = startRadius;
        add.endRadius = endRadius;
        add.length = length;
        add.direction = direction;
        add.elementBefore = elementBefore;
        add.spiralKind = spiralKind;
        return give(add, element);
    }

    std::vector<Add> adds;
    int failingAdd = -1;
    int living = 0; // elements that were not released
    MdGePoint3d reportedEnd{300.25, 40.125, 0.0};

  private:
    std::int32_t give(const Add& add, std::unique_ptr<host::AlignmentElement>& element) {
        EXPECT_EQ(living, 0) << "the element before was not released";
        const int index = static_cast<int>(adds.size());
        adds.push_back(add);
        if (index == failingAdd) {
            return -5;
        }
        element = std::make_unique<Element>(11 + index, reportedEnd, living);
        return 0;
    }
};

class ElementPass : public testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(collection.living, 0); }
    std::int32_t run(Elements& elements) {
        output::resolveSpiralPis(elements);
        return output::addAlignmentElements(collection, elements);
    }
    Collection collection;
};

TEST_F(ElementPass, StraightGoesInThePlanAndKeepsItsIdentifier) {
    Elements elements{test::straight(0.0, 0.0, 30.0, 40.0)};
    elements[0].startZ = 5.0;
    elements[0].endZ = 6.0;
    EXPECT_EQ(run(elements), 0);
    ASSERT_EQ(collection.adds.size(), 1U);
    EXPECT_EQ(collection.adds[0].start, (MdGePoint3d{0.0, 0.0, 0.0}));
    EXPECT_EQ(collection.adds[0].end, (MdGePoint3d{30.0, 40.0, 0.0}));
    EXPECT_EQ(elements[0].spareInt, 11);
}

TEST_F(ElementPass, StraightBehindAStraightKeepsItsStart) {
    Elements elements{test::straight(0.0, 0.0, 30.0, 40.0), test::straight(31.0, 41.0, 50.0, 0.0)};
    EXPECT_EQ(run(elements), 0);
    EXPECT_EQ(elements[1].startX, "31.000000000000");
    EXPECT_EQ(collection.adds[1].start, (MdGePoint3d{31.0, 41.0, 0.0}));
}

TEST_F(ElementPass, StraightBehindAnArcStartsAtTheReportedEndWithTwelveDecimalsAtItsOwnHeight) {
    Elements elements{test::straight(0.0, 0.0, 100.0, 0.0), test::arc(100.0, 0.0, 150.0, 20.0, "-200.5", "L"),
                      test::straight(150.0, 20.0, 200.0, 60.0)};
    elements[2].startZ = 9.0;
    collection.reportedEnd = {150.00012345678912, 19.99987654321, 0.0};
    EXPECT_EQ(run(elements), 0);
    EXPECT_EQ(elements[2].startX, "150.000123456789");
    EXPECT_EQ(elements[2].startY, "19.999876543210");
    EXPECT_EQ(elements[2].startZ, 9.0);
    EXPECT_EQ(collection.adds[1].radius, 200.5);
    EXPECT_EQ(collection.adds[1].direction, -1);
    EXPECT_EQ(collection.adds[2].start.x, 150.000123456789);
    EXPECT_EQ(elements[1].curve().sparePoint1.x, 1.5);
    EXPECT_EQ(elements[1].curve().sparePoint1.y, 2.5);
    EXPECT_EQ(elements[1].spareInt, 12);
}

TEST_F(ElementPass, DirectionIsMinusOneForLeftAndZeroOtherwise) {
    for (const auto& [direction, flag] : {std::pair{"L", -1}, std::pair{"R", 0}, std::pair{"", 0}}) {
        collection.adds.clear();
        Elements elements{test::arc(0.0, 0.0, 10.0, 10.0, "20", direction)};
        EXPECT_EQ(run(elements), 0);
        EXPECT_EQ(collection.adds[0].direction, flag);
    }
}

TEST_F(ElementPass, ClothoidNamesTheElementBeforeAndPassesItsSizes) {
    Elements elements{test::straight(0.0, 0.0, 100.0, 0.0),
                      test::clothoid(100.0, 0.0, 149.92, 2.08, "100", "0", "-200", "L")};
    elements[1].startZ = elements[1].endZ = 4.0;
    EXPECT_EQ(run(elements), 0);
    const Add& spiral = collection.adds[1];
    EXPECT_EQ(spiral.type, 'A');
    EXPECT_EQ(spiral.elementBefore, 11);
    EXPECT_EQ(spiral.start, (MdGePoint3d{100.0, 0.0, 0.0})) << "the start lies in the plan";
    EXPECT_EQ(spiral.end, elements[1].curve().sparePoint2);
    EXPECT_NEAR(spiral.end.z, 4.0, kPointTolerance) << "the PI keeps its own height";
    EXPECT_EQ(spiral.startRadius, std::numeric_limits<double>::infinity());
    EXPECT_EQ(spiral.endRadius, 200.0);
    EXPECT_EQ(spiral.length, 50.0);
    EXPECT_EQ(spiral.direction, -1);
    EXPECT_EQ(spiral.spiralKind, 1);
}

TEST_F(ElementPass, ClothoidBehindAnArcGetsItsPiAnewFromTheReportedEnd) {
    Elements elements{test::straight(0.0, 0.0, 100.0, 0.0), test::arc(100.0, 0.0, 150.0, 20.0, "200", "R"),
                      test::clothoid(150.0, 20.0, 190.0, 48.0, "100", "200", "0", "R")};
    output::resolveSpiralPis(elements);
    const MdGePoint3d first = elements[2].curve().sparePoint2;
    collection.reportedEnd = {150.5, 20.5, 0.0};
    EXPECT_EQ(output::addAlignmentElements(collection, elements), 0);
    EXPECT_NE(elements[2].curve().sparePoint2, first);
    EXPECT_EQ(collection.adds[2].start, (MdGePoint3d{150.5, 20.5, 0.0}));
    EXPECT_EQ(collection.adds[2].end, elements[2].curve().sparePoint2);
    sima::EntityData again = elements[2];
    output::computeSpiralPi(again);
    EXPECT_EQ(again.curve().sparePoint2, elements[2].curve().sparePoint2);
}

TEST_F(ElementPass, ClothoidBehindAStraightKeepsThePiOfThePiPass) {
    Elements elements{test::straight(0.0, 0.0, 100.0, 0.0),
                      test::clothoid(100.0, 0.0, 149.92, 2.08, "100", "0", "200", "R")};
    output::resolveSpiralPis(elements);
    elements[1].editCurve().sparePoint2 = {1.0, 2.0, 3.0}; // would be overwritten by a second computation
    EXPECT_EQ(output::addAlignmentElements(collection, elements), 0);
    EXPECT_EQ(collection.adds[1].end, (MdGePoint3d{1.0, 2.0, 3.0}));
}

TEST_F(ElementPass, SecondOfTwoClothoidsNamesTheFirst) {
    Elements elements{test::straight(0.0, 0.0, 100.0, 0.0),
                      test::clothoid(100.0, 0.0, 149.92, 2.08, "100", "0", "200", "R"),
                      test::clothoid(149.92, 2.08, 190.0, 15.0, "100", "200", "0", "R")};
    EXPECT_EQ(run(elements), 0);
    EXPECT_EQ(elements[1].spareInt, 12);
    EXPECT_EQ(collection.adds[2].elementBefore, 12);
    EXPECT_EQ(collection.adds[2].start, (MdGePoint3d{300.25, 40.125, 0.0}));
}

TEST_F(ElementPass, PiIsComputedForAnyElementBehindACurve) {
    Elements elements{test::arc(0.0, 0.0, 10.0, 10.0, "20", "R"), test::straight(10.0, 10.0, 50.0, 10.0)};
    elements[1].editCurve().sparePoint2 = {1.0, 2.0, 3.0};
    EXPECT_EQ(run(elements), 0);
    EXPECT_EQ(elements[1].curve().sparePoint2, MdGePoint3d()) << "a straight's tangents do not meet";
}

TEST_F(ElementPass, UnknownTypesAddNothing) {
    Elements elements{test::straight(0.0, 0.0, 1.0, 0.0)};
    elements[0].type = "X";
    EXPECT_EQ(run(elements), 0);
    EXPECT_TRUE(collection.adds.empty());
}

TEST_F(ElementPass, LeadingClothoidIsAnExceptionOfItsOwnThatSaysWhy) {
    Elements elements{test::clothoid(100.0, 50.0, 149.92, 52.08, "100", "0", "200", "R")};
    try {
        run(elements);
        FAIL() << "nothing was raised";
    } catch (const output::LeadingClothoid& error) {
        EXPECT_STREQ(error.what(), "the route begins with a clothoid, and a clothoid needs an element before it");
    }
}

TEST_F(ElementPass, LeadingClothoidEndsWithInvalidArgumentBehindItsAuxiliaryLine) {
    Elements elements{test::clothoid(100.0, 50.0, 149.92, 52.08, "100", "0", "200", "R"),
                      test::straight(149.92, 52.08, 200.0, 60.0)};
    EXPECT_THROW(run(elements), std::invalid_argument);
    ASSERT_EQ(collection.adds.size(), 1U) << "the auxiliary line alone";
    const Add& line = collection.adds[0];
    EXPECT_EQ(line.type, 'S');
    EXPECT_EQ(line.end, (MdGePoint3d{100.0, 50.0, 0.0}));
    // 100 m long, and away from the PI: start, PI and line's start lie on one line with the start between.
    EXPECT_NEAR(std::hypot(line.start.x - 100.0, line.start.y - 50.0), 100.0, kPointTolerance);
    const MdGePoint3d pi = elements[0].curve().sparePoint2;
    EXPECT_NEAR(host::mdutAngle(pi, {100.0, 50.0, 0.0}), host::mdutAngle({100.0, 50.0, 0.0}, line.start), 1e-9);
    EXPECT_EQ(elements[0].spareInt, 0);
}

TEST_F(ElementPass, RefusedElementStopsThePass) {
    for (int failing = 0; failing < 3; ++failing) {
        collection.adds.clear();
        collection.failingAdd = failing;
        Elements elements{test::straight(0.0, 0.0, 100.0, 0.0), test::arc(100.0, 0.0, 150.0, 20.0, "200", "R"),
                          test::clothoid(150.0, 20.0, 190.0, 48.0, "100", "200", "0", "R"),
                          test::straight(190.0, 48.0, 300.0, 150.0)};
        EXPECT_EQ(run(elements), -1);
        EXPECT_EQ(collection.adds.size(), static_cast<std::size_t>(failing) + 1);
    }
}

TEST_F(ElementPass, RefusedAuxiliaryLineStopsThePassToo) {
    collection.failingAdd = 0;
    Elements elements{test::clothoid(100.0, 50.0, 149.92, 52.08, "100", "0", "200", "R")};
    EXPECT_EQ(run(elements), -1);
}

TEST_F(ElementPass, NoElementsIsSuccess) {
    Elements elements;
    EXPECT_EQ(run(elements), 0);
}

} // namespace
} // namespace fenmark
