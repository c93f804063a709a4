// The header in C: the record has the same layout, and the example of the header does what it says.
#include "c_program.h"
#include "support_alignment.h"

#include <cstddef>

using namespace fenmark::alignment_test;

TEST(CInterface, TheRecordHasTheSameLayoutInCAndInCpp) {
    EXPECT_EQ(c_size_of_record(), sizeof(Calelm));
    EXPECT_EQ(c_size_of_record(), 120u);
    EXPECT_EQ(c_offset_of_last_field(), offsetof(Calelm, k3));
}

TEST(CInterface, TheExampleOfTheHeaderRuns) {
    CExample example{};
    ASSERT_EQ(run_c_example(&example), 0);
    EXPECT_EQ(example.length, 64.0);
    EXPECT_EQ(example.stakes, 7);
    EXPECT_GT(example.station, 25.0);
    EXPECT_LT(example.station, 45.0);
    EXPECT_LT(example.distance, 5.0);
}
