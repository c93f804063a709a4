// Files, sinks and short forms for the tests of the reader.
#pragma once

#include "sima/reader/sima_reader.h"
#include "sima/text/cp932.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace fenmark::sima::test {

// Coordinates and stations of the tests have few digits, so that they are exact or nearly so.
constexpr double kMetres = 1e-12;

inline std::string cp932(std::string_view utf8) {
    std::string bytes;
    encodeCp932(bytes, utf8);
    return bytes;
}

using fenmark::test::readFile;
using fenmark::test::TemporaryFolder;

// Keeps what it is given.
class KeepingSink : public SectionSink {
  public:
    std::vector<std::string> calls; // in order
    std::vector<std::vector<SimaPoint>> pointSections;
    std::vector<LotData> lots;
    std::vector<SimaAlignment> routes;
    std::vector<HSeriesData> longitudinals;
    std::vector<IntersectionData> crossSections;
    std::uint64_t nextId = 0; // 0: routes are not created

    void createCoordinatePoints(SimaReader& reader, std::span<const SimaPoint> points) override {
        expectCounted(reader);
        calls.emplace_back("points");
        pointSections.emplace_back(points.begin(), points.end());
    }
    void createLotPolyline(SimaReader& reader, const LotData& lot) override {
        EXPECT_FALSE(reader.lots.empty()) << "a lot is stored before it is drawn";
        expectCounted(reader);
        calls.emplace_back("lot");
        lots.push_back(lot);
    }
    host::MdDbObjectId createRouteAlignment(SimaReader& reader, const SimaAlignment& route) override {
        expectCounted(reader);
        calls.emplace_back("alignment");
        routes.push_back(route);
        return nextId == 0 ? host::MdDbObjectId{} : host::MdDbObjectId{nextId++};
    }
    void createRoutePolyline(SimaReader& reader, const SimaAlignment& route) override {
        expectCounted(reader);
        calls.emplace_back("polyline");
        routes.push_back(route);
    }
    void createLongitudinalPoints(SimaReader& reader, const HSeriesData& section) override {
        expectCounted(reader);
        calls.emplace_back("longitudinal");
        longitudinals.push_back(section);
    }
    void createCrossSectionPoints(SimaReader& reader, const IntersectionData& section) override {
        expectCounted(reader);
        calls.emplace_back("cross section");
        crossSections.push_back(section);
    }

  private:
    static void expectCounted(const SimaReader& reader) {
        EXPECT_EQ(reader.errorCount, reader.log.errorCount()) << "errors count as soon as they are logged";
    }
};

using Lines = std::vector<std::string>;

template <typename List>
Lines texts(const List& list) {
    Lines result;
    for (std::size_t i = 0; i < list.size(); ++i) {
        result.emplace_back(list[i]);
    }
    return result;
}

// One pass over a text given as UTF-8 lines.
struct Pass {
    SimaReader reader;
    KeepingSink sink;
    std::int32_t result = -2;

    Lines processLines() const { return texts(reader.log.lines()); }
    // Both inner lines of each error block, joined by " | ".
    Lines errors() const {
        Lines result;
        const TextList& list = reader.log.errors();
        EXPECT_EQ(list.size() % 4, 0U);
        for (std::size_t i = 0; i + 3 < list.size(); i += 4) {
            result.push_back(std::string(list[i + 1]) + " | " + std::string(list[i + 2]));
        }
        return result;
    }
    // The identifier of each error, or the whole text where there is none.
    Lines errorCodes() const {
        Lines result;
        for (const std::string& error : errors()) {
            result.push_back(error.starts_with("Err") ? error.substr(0, error.find(' '))
                                                      : error.substr(0, error.find(" | ")));
        }
        return result;
    }
};

inline void tickAll(SimaReader& reader) {
    reader.options.flags.fill(true);
}

inline std::string joined(std::initializer_list<std::string_view> lines) {
    std::string text;
    for (const std::string_view line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

// The full pass with everything ticked.
inline Pass fullRead(std::string_view utf8, ReadContext context = {}, std::uint64_t firstId = 0) {
    Pass run;
    const TemporaryFolder folder;
    const std::string path = folder.write("test.sim", cp932(utf8));
    tickAll(run.reader);
    run.sink.nextId = firstId;
    context.sink = &run.sink;
    run.result = run.reader.fullRead(path, context);
    return run;
}
inline Pass fullRead(std::initializer_list<std::string_view> lines) {
    return fullRead(joined(lines));
}

inline Pass preview(std::initializer_list<std::string_view> lines) {
    Pass run;
    const TemporaryFolder folder;
    const std::string path = folder.write("test.sim", cp932(joined(lines)));
    ReadContext context;
    context.sink = &run.sink;
    run.result = run.reader.previewScan(path, context);
    EXPECT_TRUE(run.sink.calls.empty()) << "a preview draws nothing";
    EXPECT_TRUE(run.processLines().empty() && run.errors().empty()) << "a preview logs nothing";
    return run;
}

// Three points for lots and routes: 1 at (200, 100), 2 at (300, 100), 3 at (300, 400), height 5.
inline constexpr std::string_view kThreePoints = "A00,\r\n"
                                                 "A01,1,P1,100.0,200.0,,\r\n"
                                                 "A01,2,P2,100.0,300.0,,\r\n"
                                                 "A01,3,P3,400.0,300.0,5.0,\r\n"
                                                 "A99,\r\n";
inline Pass readAfterPoints(std::initializer_list<std::string_view> lines, ReadContext context = {},
                            std::uint64_t firstId = 0) {
    return fullRead(std::string(kThreePoints) + joined(lines), context, firstId);
}

} // namespace fenmark::sima::test
