// The texts of object-data rows.
#include "host/boundary/object_data_writer.h"

#include <gtest/gtest.h>

namespace fenmark {
namespace {

TEST(RouteTypeLabels, StandForAllSevenTypesAndForNoOther) {
    EXPECT_EQ(host::routeTypeLabel(1), "IP線");
    EXPECT_EQ(host::routeTypeLabel(2), "Type 2");
    EXPECT_EQ(host::routeTypeLabel(3), "Type 3");
    EXPECT_EQ(host::routeTypeLabel(4), "幅杭線左");
    EXPECT_EQ(host::routeTypeLabel(5), "幅杭線右");
    EXPECT_EQ(host::routeTypeLabel(6), "連続線");
    EXPECT_EQ(host::routeTypeLabel(7), "Type 7");
    for (const std::int32_t type : {0, 8, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(host::routeTypeLabel(type), "") << type;
    }
}

TEST(FileNames, StandBehindTheLastSeparator) {
    EXPECT_EQ(host::fileNameOfPath("C:\\測量\\road.sim"), "road.sim");
    EXPECT_EQ(host::fileNameOfPath("road.sim"), "road.sim") << "a path without a separator is the name";
    EXPECT_EQ(host::fileNameOfPath("C:\\data\\"), "");
    EXPECT_EQ(host::fileNameOfPath(""), "");
#ifndef _WIN32
    EXPECT_EQ(host::fileNameOfPath("/survey/road.sim"), "road.sim");
    EXPECT_EQ(host::fileNameOfPath("/survey\\road.sim"), "road.sim");
#endif
}

} // namespace
} // namespace fenmark
