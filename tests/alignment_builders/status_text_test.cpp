// Every status that a builder can give has a text of its own.
#include <fenmark/alignment/conventions.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(StatusText, EveryBuilderTellsWhatItsFailureMeans) {
    const std::string general = ali_statusText(nullptr, -1);
    for (const char* const function :
         {"ali_makRAR",     "ali_makRAAR",   "ali_makSAR",     "ali_mak3R4A",      "ali_makAOR_P",    "setAOR_P",
          "alimake_rfAArf", "alimake_rfArf", "alimake_rfAsf",  "moveR_dl0_rfAArf", "moveR_dl0_rfArf", "moveR_dl0_rfAsf",
          "ARmakRR",        "chk_CSameAng",  "chk_on_tangent", "cplnrm",           "gc_poionl",       "ali_IPsetR",
          "ali_IPsetAA",    "ali_IPsetARA",  "ali_IPsetARARA", "ali_makrS_P",      "ali_makrR_P",     "ali_makrR_P_S",
          "ali_makrAS_P",   "ali_makrAR_P",  "ali_makrAAR_P",  "ali_maksR_P",      "ali_maksAR_P"}) {
        EXPECT_NE(ali_statusText(function, -1), general) << function;
        EXPECT_NE(ali_statusText(function, 65535), general) << function;
    }
}

TEST(StatusText, SpecialStatusesOfTheRefitsAndPointTestsAreTold) {
    EXPECT_NE(std::string(ali_statusText("alimake_rfAsf", -2)), ali_statusText(nullptr, -2));
    EXPECT_NE(std::string(ali_statusText("alimake_rfAsf", -3)), ali_statusText(nullptr, -3));
    EXPECT_NE(std::string(ali_statusText("chk_tangent", 3)), "unknown status");
    EXPECT_NE(std::string(ali_statusText("gc_intpSS", 1)), ali_statusText(nullptr, 1));
}

} // namespace
