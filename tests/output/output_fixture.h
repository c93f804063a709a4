// A reader as the sections leave it, and a recorded drawing to draw into.
#pragma once

#include "host/recording/recording_host.h"
#include "output/drawing_output.h"
#include "sima/reader/sima_reader.h"
#include "support/route_elements.h"

#include <gtest/gtest.h>

#include <string>

namespace fenmark::test {

class Output : public testing::Test {
  protected:
    Output() {
        reader.filePath = "C:\\測量\\road.sim";
        reader.baseName = "road";
        reader.siteName = "サイト";
        reader.pointLayer = "測点";
        reader.lotLayer = "画地";
        reader.ipLayer = "IP";
        reader.wideStakeLayer = "幅杭";
        reader.continuousLayer = "連続";
        reader.options.flags.fill(true);
        host.civil.sites = {"サイト"};
    }

    void tick(sima::ImportKind kind, bool on) { reader.options.flags[static_cast<std::size_t>(kind)] = on; }

    // A route as the reader hands it over: behind the elements given stands the open one that the last point began.
    static sima::SimaAlignment routeOf(std::int32_t type, sima::Array<sima::EntityData> elements) {
        sima::SimaAlignment route;
        route.routeType = type;
        route.routeNumber = 7;
        route.routeName = "県道";
        route.alignmentName = "road-県道";
        sima::EntityData open;
        open.type = "S";
        if (!elements.empty()) {
            open.startX = elements.back().endX;
            open.startY = elements.back().endY;
            open.startZ = elements.back().endZ;
        }
        elements.push_back(open);
        route.entities = elements;
        return route;
    }

    // The chain of the alignment that was made last.
    const std::vector<host::RecordedElement>& chain() const { return host.civil.alignments.back().chain.elements(); }

    void expectRow(std::size_t index, std::string_view table, std::int32_t no, std::string_view name,
                   std::string_view type) const {
        ASSERT_LT(index, host.rows.rowCount());
        const host::RecordedRow row = host.rows.row(index);
        EXPECT_EQ(row.table, table);
        EXPECT_EQ(row.no, no);
        EXPECT_EQ(row.name, name);
        EXPECT_EQ(row.type, type);
        EXPECT_EQ(row.fileName, "road.sim");
    }

    sima::SimaReader reader;
    host::RecordingHost host;
    output::DrawingOutput output{host};
};

} // namespace fenmark::test
