// Numbers, texts, and the file that replaces its target whole.
#include "exchange/output_file.h"
#include "exchange/plan/plan_geometry.h"
#include "exchange/text.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <stdexcept>

#include <sys/resource.h>

namespace fenmark::exchange {
namespace {

template <typename Value>
std::string printed(Value value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

TEST(Reals, ReadBackToTheSameValue) {
    for (const double value : {0.1, 1.0 / 3.0, -36173.0603, 1e-9, 123456789.123456789, 5e-324, 1.7976931348623157e308,
                               -0.0, 1e22, 100000.0}) {
        EXPECT_EQ(std::strtod(printed(JsonReal{value}).c_str(), nullptr), value);
        EXPECT_EQ(std::strtod(printed(PlainReal{value}).c_str(), nullptr), value);
        EXPECT_EQ(printed(PlainReal{value}).find('e'), std::string::npos);
    }
}

TEST(Reals, OfJsonHaveAPointAndInfinityIsNull) {
    EXPECT_EQ(printed(JsonReal{150.0}), "150.0");
    EXPECT_EQ(printed(JsonReal{-0.25}), "-0.25");
    EXPECT_EQ(printed(JsonReal{std::numeric_limits<double>::infinity()}), "null");
    EXPECT_EQ(printed(JsonReal{std::numeric_limits<double>::quiet_NaN()}), "null");
}

TEST(Reals, ThatAreWholeHaveNoPoint) {
    EXPECT_EQ(shortReal(5.0), "5");
    EXPECT_EQ(shortReal(-100000.0), "-100000");
    EXPECT_EQ(shortReal(1e21), "1000000000000000000000");
    EXPECT_EQ(shortReal(2.5), "2.5");
    EXPECT_EQ(shortReal(10.05), "10.05");
    EXPECT_EQ(shortReal(0.0), "0");
}

TEST(Reals, WithFixedDecimalsHaveNoMinusZero) {
    EXPECT_EQ(fixedReal(-0.0001, 2), "0.00");
    EXPECT_EQ(fixedReal(-0.006, 2), "-0.01");
    EXPECT_EQ(fixedReal(12.3456, 3), "12.346");
}

TEST(Texts, AreEscapedForTheirFormat) {
    EXPECT_EQ(printed(JsonText{"a\"b\\c\n点\x01"}), "\"a\\\"b\\\\c\\u000a点\\u0001\"");
    EXPECT_EQ(printed(JsonText{"\"q\""}), "\"\\\"q\\\"\"") << "at both ends";
    EXPECT_EQ(printed(JsonText{""}), "\"\"");
    EXPECT_EQ(xmlText("a\tb\nc\rd"), "a&#9;b&#10;c&#13;d");
    EXPECT_EQ(xmlText("<a & \"b\">\x02点"), "&lt;a &amp; &quot;b&quot;&gt;\uFFFD点");
    EXPECT_EQ(xmlText("\x1F|\x20|~|\x7F|"), "\uFFFD|\x20|~|\uFFFD|");
    EXPECT_EQ(xmlText("\u0080|\u0085|\u009F|\u00A0|é|"), "\uFFFD|\uFFFD|\uFFFD|\u00A0|é|");
    EXPECT_EQ(xmlText("\xEF\xBF\xBE"
                      "a\xEF\xBF\xBF\xEF\xBF\xBD"),
              "\uFFFDa\uFFFD\uFFFD")
        << "no characters of XML";
}

TEST(UniqueNames, GiveANumberToWhatWasTaken) {
    UniqueNames names;
    EXPECT_EQ(names.take("K1"), "K1");
    EXPECT_EQ(names.take("K1"), "K1 (2)");
    EXPECT_EQ(names.take("K1"), "K1 (3)");
    EXPECT_EQ(names.take("K1 (2)"), "K1 (2) (2)");
}

TEST(Area, IsExactFarFromTheOriginAndSignedByTheSense) {
    const std::vector<host::MdGePoint3d> ring = {
        {12010, -36010, 0}, {12010, -36030, 0}, {12030, -36030, 0}, {12030, -36010, 0}};
    EXPECT_EQ(signedArea(ring), 400.0);
    EXPECT_EQ(signedArea(std::vector<host::MdGePoint3d>(ring.rbegin(), ring.rend())), -400.0);
    EXPECT_EQ(signedArea({}), 0.0);
}

TEST(LabelPoint, OfASquareIsItsMiddle) {
    const std::vector<host::MdGePoint3d> ring = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
    EXPECT_EQ(labelPoint(ring), (host::PlanPoint{2.0, 2.0}));
}

TEST(LabelPoint, OfAHorseshoeLiesInsideIt) {
    // Open to the right; its centroid lies in the gap.
    const std::vector<host::MdGePoint3d> ring = {{0, 0, 0}, {10, 0, 0}, {10, 1, 0},  {1, 1, 0},
                                                 {1, 9, 0}, {10, 9, 0}, {10, 10, 0}, {0, 10, 0}};
    const host::PlanPoint at = labelPoint(ring);
    EXPECT_EQ(at, (host::PlanPoint{0.5, 5.0}));
}

TEST(LabelPoint, OfNoAreaIsTheMeanOfTheVertices) {
    EXPECT_EQ(labelPoint(std::vector<host::MdGePoint3d>{{0, 0, 0}, {4, 2, 0}}), (host::PlanPoint{2.0, 1.0}));
}

TEST(OutputFile, ReplacesTheTargetAndKeepsItsPermissions) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("out.txt", "old");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_TRUE(writeFile(path, [](std::ostream& out) { out << "new"; }));
    EXPECT_EQ(test::readFile(path), "new");
    EXPECT_EQ(std::filesystem::status(path).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(OutputFile, WriterThatRaisesLeavesTheTargetAsItWas) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("out.txt", "old");
    EXPECT_THROW((void)writeFile(path,
                                 [](std::ostream& out) {
                                     out << "half";
                                     throw std::runtime_error("broken");
                                 }),
                 std::runtime_error);
    EXPECT_EQ(test::readFile(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(OutputFile, LinkStaysALink) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("out.txt", "old");
    std::filesystem::create_symlink("out.txt", folder.at("link.txt"));
    EXPECT_TRUE(writeFile(folder.at("link.txt"), [](std::ostream& out) { out << "new"; }));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.at("link.txt")));
    EXPECT_EQ(test::readFile(path), "new");
}

TEST(OutputFile, FullDiskLeavesTheTargetAsItWas) {
    test::TemporaryFolder folder;
    const std::string path = folder.write("out.txt", "old");
    // A limit to the size of files stands for a disk that fills up.
    struct ::rlimit before {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct ::rlimit small = before;
    small.rlim_cur = 100000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const Outcome outcome = writeFile(path, [](std::ostream& out) { out << std::string(1000000, 'x'); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_NE(outcome.message.english.find(path + ": cannot be written: "), std::string::npos)
        << outcome.message.english;
    EXPECT_EQ(test::readFile(path), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
} // namespace fenmark::exchange
