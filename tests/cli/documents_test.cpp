// fenmark stakes, report and plot, and the profiles of export.
#include "command_line.h"
#include "sima/text/cp932.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::cli {
namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

class Documents : public CommandLine {
  protected:
    void SetUp() override {
        const Ran ran = fenmark({"import", "-q", "--zone", "9", example("road.sim")});
        ASSERT_EQ(ran.code, kDone) << ran.err;
        drawing = folder.at("road.gpkg");
    }
    std::string drawing;
};

TEST_F(Documents, StakesGoToStandardOutputOrToAFileOfTheFormatOfItsName) {
    const Ran table = fenmark({"stakes", drawing, "中心線", "--at", "No.6+0.5,1k-700", "--offset=-4,0"});
    EXPECT_EQ(table.code, kDone) << table.err;
    EXPECT_EQ(std::count(table.out.begin(), table.out.end(), '\n'), 5);
    EXPECT_NE(table.out.find("No.6+0.500左4 "), std::string::npos) << table.out;
    EXPECT_NE(table.out.find("No.15 "), std::string::npos) << table.out;
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--at", "No.6+0.5,1k-700", "--offset=-4,0", "--out", "-"}).out,
              table.out);
    const std::string target = folder.at("s.csv");
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--every", "100", "--out", target}).code, kDone);
    EXPECT_EQ(countOf(contentOf(target), "\r\n"), 10U) << "a head, and No.5 to No.45";
}

TEST_F(Documents, StakesAsSimaComeBackWithTheirCoordinates) {
    const std::string target = folder.at("stakes.sim");
    ASSERT_EQ(fenmark({"stakes", drawing, "中心線", "--main-points", "--offset", "0,5", "--out", target}).code, kDone);
    ASSERT_EQ(fenmark({"import", "-q", target}).code, kDone);
    const auto points = info(folder.at("stakes.gpkg"))["entities"];
    const auto stakes =
        fenmark({"stakes", drawing, "中心線", "--main-points", "--offset", "0,5", "--format", "json"}).json()["stakes"];
    ASSERT_EQ(points.size(), stakes.size());
    ASSERT_GT(points.size(), 100U);
    constexpr double kWritten = 0.00051; // metres: three decimals
    for (std::size_t i = 0; i < points.size(); ++i) {
        std::string name = points[i]["data"]["Name"]; // rows keep the blanks that fill the column
        name.erase(name.find_last_not_of(' ') + 1);
        EXPECT_EQ(name, stakes[i]["name"]);
        EXPECT_NEAR(points[i]["position"][0].get<double>(), stakes[i]["x"].get<double>(), kWritten);
        EXPECT_NEAR(points[i]["position"][1].get<double>(), stakes[i]["y"].get<double>(), kWritten);
    }
    EXPECT_EQ(contentOf(folder.at("stakes_Input.log")).find("Err"), std::string::npos);
}

TEST_F(Documents, WrongUsageOfStakesIsTold) {
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--at", "x"}).code, kWrongUsage);
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--every", "-1"}).code, kWrongUsage);
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--pitch", "0"}).code, kWrongUsage);
    EXPECT_EQ(fenmark({"stakes", drawing, "中心線", "--offset", "1,,2"}).code, kWrongUsage);
    const Ran outside = fenmark({"stakes", drawing, "中心線", "--at", "99"});
    EXPECT_EQ(outside.code, kNotDone);
    EXPECT_NE(outside.err.find("runs from 100.000 to 968.417"), std::string::npos) << outside.err;
    EXPECT_EQ(outside.out, "");
}

TEST_F(Documents, ReportHoldsTheTablesThatAreAskedFor) {
    const std::string target = folder.at("r.csv");
    ASSERT_EQ(fenmark({"report", drawing, target, "--tables", "lots,ips"}).code, kDone);
    const std::string csv = contentOf(target);
    EXPECT_NE(csv.find("座標求積表,川端12-1\r\n"), std::string::npos);
    EXPECT_NE(csv.find("IP計算書,中心線\r\n"), std::string::npos);
    EXPECT_EQ(csv.find("座標一覧"), std::string::npos);
    const Ran wrong = fenmark({"report", drawing, target, "--tables", "lots,areas"});
    EXPECT_EQ(wrong.code, kWrongUsage);
    EXPECT_NE(wrong.err.find("'areas'"), std::string::npos);
    EXPECT_EQ(fenmark({"report", drawing, folder.at("r.pdf")}).code, kWrongUsage);
}

TEST_F(Documents, ReportListsTheErrorsOfALog) {
    ASSERT_EQ(fenmark({"import", "-q", example("dirty.sim")}).code, kDone);
    const std::string target = folder.at("r.csv");
    const std::string log = folder.at("dirty_Input.log");
    ASSERT_EQ(fenmark({"report", folder.at("dirty.gpkg"), target, "--tables", "summary", "--log", log}).code, kDone);
    const std::string csv = contentOf(target);
    EXPECT_NE(csv.find("\r\nErrA01-1 点番号が５桁以下の整数ではありません。,\"00010行目 A01,x,番号,0,0,,\"\r\n"),
              std::string::npos)
        << csv;
    const Ran missing = fenmark({"report", drawing, target, "--log", folder.at("none.log")});
    EXPECT_EQ(missing.code, kNotDone);
    EXPECT_TRUE(contains(missing.err, "none.log: ") && contains(missing.err, "No such file")) << missing.err;
}

TEST_F(Documents, APlotIsOfOneKind) {
    const std::vector<std::string> kinds = {"--along", "--profile", "--cross-sections"};
    for (const std::string& first : kinds) {
        for (const std::string& second : kinds) {
            if (first != second) {
                const Ran ran = fenmark({"plot", drawing, folder.at("o.svg"), first, "中心線", second, "中心線"});
                EXPECT_EQ(ran.code, kWrongUsage) << first << ' ' << second;
                EXPECT_FALSE(test::fileExists(folder.at("o.svg"))) << first << ' ' << second;
            }
        }
    }
}

TEST_F(Documents, ReportReadsOrdinaryLogsAlone) {
    const std::string huge = file("", "huge.log");
    std::filesystem::resize_file(huge, (std::uintmax_t{1} << 30) + 1); // with a hole in it
    const std::pair<std::string, std::string> logs[] = {
        {folder.path(), "ordinary file"}, {"/dev/zero", "ordinary file"}, {huge, "File too large"}};
    for (const auto& [log, reason] : logs) {
        const Ran ran = fenmark({"report", drawing, folder.at("o.html"), "--log", log});
        EXPECT_EQ(ran.code, kNotDone) << log;
        EXPECT_TRUE(contains(ran.err, log + ": ") && contains(ran.err, reason)) << ran.err;
        EXPECT_FALSE(test::fileExists(folder.at("o.html"))) << log;
    }
}

TEST_F(Documents, ReportTakesNoOtherFileForALogWithoutErrors) {
    std::string cut;
    sima::encodeCp932(cut, "-----\r\nErrX001 x\r\n00002行目 A01,1\r\n");
    for (const std::string& path : {drawing, file(kPoints, "b.sim"), file("", "empty.log"), file(cut, "cut.log")}) {
        const Ran ran = fenmark({"report", drawing, folder.at("o.html"), "--log", path});
        EXPECT_EQ(ran.code, kNotDone) << path;
        EXPECT_TRUE(contains(ran.err, path + ": is not the log of an import")) << ran.err;
        EXPECT_FALSE(test::fileExists(folder.at("o.html"))) << path;
    }
}

TEST_F(Documents, ReportTakesALogThatBeginsWithItsErrorsOrItsCount) {
    std::string log;
    sima::encodeCp932(log, "エラー無し\r\n");
    const std::string target = folder.at("o.csv");
    ASSERT_EQ(fenmark({"report", drawing, target, "--log", file(log, "none.log")}).code, kDone);
    log.clear();
    sima::encodeCp932(log, "ErrX001 x\r\n00002行目 A01,1\r\nエラー無し");
    ASSERT_EQ(fenmark({"report", drawing, target, "--log", file(log, "one.log")}).code, kDone);
    EXPECT_NE(contentOf(target).find("\r\nErrX001 x,"), std::string::npos);
}

TEST_F(Documents, PlotsBecomePagesOfAPdf) {
    const std::string target = folder.at("p.pdf");
    const Ran ran = fenmark({"plot", drawing, target, "--along", "中心線", "--scale", "1000", "--paper", "A4"});
    if (ran.err.find("this build writes no PDF") != std::string::npos) {
        GTEST_SKIP() << "built without librsvg";
    }
    ASSERT_EQ(ran.code, kDone) << ran.err;
    const std::string pdf = contentOf(target);
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    const std::size_t pages = countOf(pdf, "/Type /Page %");
    const std::string svg = folder.at("p.svg");
    ASSERT_EQ(fenmark({"plot", "-q", drawing, svg, "--along", "中心線", "--scale", "1000", "--paper", "A4"}).code,
              kDone);
    EXPECT_GT(pages, 4U);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(svg).parent_path())) {
        files += entry.path().extension() == ".svg" ? 1 : 0;
    }
    EXPECT_EQ(files, pages);
}

// Of as many digits as the last one has; none takes the place of the file that was imported.
TEST_F(Documents, PagesOfAPlotAreFilesWithTheirNumbers) {
    const auto plotted = [&] {
        return fenmark(
            {"plot", "-q", drawing, folder.at("p.svg"), "--along", "中心線", "--scale", "250", "--paper", "A4"});
    };
    ASSERT_EQ(plotted().code, kDone);
    std::vector<std::string> pages;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        if (entry.path().extension() == ".svg") {
            pages.push_back(entry.path().filename().string());
        }
    }
    std::sort(pages.begin(), pages.end());
    const std::size_t count = pages.size();
    ASSERT_TRUE(count >= 10 && count < 99) << count;
    const auto nameOf = [](std::size_t page) { return (page < 10 ? "p-0" : "p-") + std::to_string(page) + ".svg"; };
    for (std::size_t i = 1; i <= count; ++i) {
        EXPECT_EQ(pages[i - 1], nameOf(i));
    }
    for (const std::size_t page : {std::size_t{1}, std::size_t{2}, count, count + 1}) {
        const std::string link = folder.at(nameOf(page));
        std::filesystem::remove(link);
        std::filesystem::create_symlink(folder.at("road.sim"), link);
        const Ran ran = plotted();
        EXPECT_EQ(ran.code == kDone, page > count) << page << ran.err;
        EXPECT_EQ(contains(ran.err, "was imported into the drawing"), page <= count) << page << ran.err;
        std::filesystem::remove(link);
    }
}

TEST_F(Documents, NothingIsWrittenOverALinkThatLeadsNowhere) {
    for (const char* name : {"l.dxf", "l.xml", "l.csv", "l.sim", "p.svg", "p.pdf", "r.html", "r.csv", "s.csv"}) {
        const std::string target = folder.at(name);
        std::filesystem::create_symlink(folder.at("nowhere"), target);
        const Ran ran = name[0] == 'l'   ? fenmark({"export", drawing, target})
                        : name[0] == 'p' ? fenmark({"plot", drawing, target})
                        : name[0] == 'r' ? fenmark({"report", drawing, target})
                                         : fenmark({"stakes", drawing, "中心線", "--every", "100", "--out", target});
        EXPECT_EQ(ran.code, kNotDone) << name;
        EXPECT_NE(ran.err.find("is a link to"), std::string::npos) << name << ran.err;
        EXPECT_TRUE(std::filesystem::is_symlink(target)) << name;
        EXPECT_FALSE(std::filesystem::exists(folder.at("nowhere"))) << name;
    }
}

TEST_F(Documents, ADrawingThatDoesNotFitAtTheScaleIsTold) {
    const Ran ran = fenmark({"plot", drawing, folder.at("p.svg"), "--scale", "100", "--paper", "A4"});
    EXPECT_EQ(ran.code, kNotDone);
    EXPECT_NE(ran.err.find("does not fit on A4 at 1:100"), std::string::npos) << ran.err;
    EXPECT_FALSE(std::filesystem::exists(folder.at("p.svg")));
}

TEST_F(Documents, SectionsShowTheResults) {
    const std::string target = folder.at("s.svg");
    ASSERT_EQ(fenmark({"plot", "-q", drawing, target, "--profile", "中心線"}).code, kDone);
    const std::string profile = contentOf(target);
    for (const char* wanted :
         {"縦断図　中心線", ">45.549<", ">120.000<", ">No.6<", ">R=150.000 L=85.000<", "横 1:2500"}) {
        EXPECT_NE(profile.find(wanted), std::string::npos) << wanted;
    }
    ASSERT_EQ(fenmark({"plot", "-q", drawing, target, "--cross-sections", "中心線"}).code, kDone);
    const std::string sections = contentOf(folder.at("s-1.svg"));
    for (const char* wanted : {"横断図　中心線", ">GH=45.500<", ">-12.000<", ">47.020<"}) {
        EXPECT_NE(sections.find(wanted), std::string::npos) << wanted;
    }
    const Ran none = fenmark({"plot", drawing, target, "--profile", "旧道"});
    EXPECT_EQ(none.code, kNotDone);
    EXPECT_NE(none.err.find("no longitudinal results"), std::string::npos);
    EXPECT_EQ(fenmark({"plot", drawing, target, "--profile", "中心線", "--along", "中心線"}).code, kWrongUsage);
}

TEST_F(Documents, ProfileOfLandXmlNeedsThatFormat) {
    const std::string target = folder.at("j.xml");
    ASSERT_EQ(fenmark({"export", "-q", drawing, target, "--profile", "j-landxml"}).code, kDone);
    EXPECT_NE(contentOf(target).find("MlitLandXmlVer.1.7"), std::string::npos);
    EXPECT_EQ(fenmark({"export", drawing, folder.at("j.dxf"), "--profile", "j-landxml"}).code, kWrongUsage);
}

} // namespace
} // namespace fenmark::cli
