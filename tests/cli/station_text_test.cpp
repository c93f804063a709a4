// Stations as surveyors write them.
#include "exchange/station_text.h"

#include "command_line.h"

namespace fenmark::cli {
namespace {

struct Written {
    const char* text;
    double metres;
};

class StationText : public ::testing::TestWithParam<Written> {};

TEST_P(StationText, IsReadInMetres) {
    EXPECT_EQ(exchange::parseStation(GetParam().text), GetParam().metres) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Metres, StationText,
                         ::testing::Values(Written{"0", 0.0}, Written{"120.5", 120.5}, Written{"+120.5", 120.5},
                                           Written{"-3.25", -3.25}, Written{".5", 0.5}, Written{"1e2", 100.0}));
INSTANTIATE_TEST_SUITE_P(Stakes, StationText,
                         ::testing::Values(Written{"No.0", 0.0}, Written{"No.6", 120.0}, Written{"No.6+0.5", 120.5},
                                           Written{"no6+12.345", 132.345}, Written{"NO.6-0.5", 119.5},
                                           Written{"No.-1+16.000", -4.0}));
INSTANTIATE_TEST_SUITE_P(Kilometres, StationText,
                         ::testing::Values(Written{"1k", 1000.0}, Written{"1k234.5", 1234.5},
                                           Written{"1K+234.5", 1234.5}, Written{"0k040", 40.0},
                                           Written{"12k-0.5", 11999.5}));

class NoStationText : public ::testing::TestWithParam<const char*> {};

TEST_P(NoStationText, IsNotGuessedAt) {
    EXPECT_FALSE(exchange::parseStation(GetParam())) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Texts, NoStationText,
                         ::testing::Values("", "+", "+-1", "20m", "nan", "inf", "0x10", " 1", "1 ", "N", "No", "No.",
                                           "No.x", "No.6+", "No.6+-1", "No.6.5", "No.6 1", "k", "k5", "1.5k", "-1k5",
                                           "1k+", "1k++5", "1k5m", "1k2k3", "0+120"));

TEST_F(CommandLine, StationTakesTheNamesOfStakesThatThePlanShows) {
    ASSERT_EQ(fenmark({"import", file(std::string(kPoints) + kRoute)}).code, kDone);
    const std::string drawing = folder.at("a.gpkg");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "No.3+2.5"}).out, "62.5 0\n");
    EXPECT_EQ(fenmark({"station", drawing, "CL", "0k062.5"}).out, "62.5 0\n");
    const Ran ran = fenmark({"station", drawing, "CL", "0+62.5"});
    EXPECT_EQ(ran.code, kWrongUsage);
    EXPECT_NE(ran.err.find("No.6+0.5 or 1k234.5"), std::string::npos) << ran.err;
}

} // namespace
} // namespace fenmark::cli
