// Each solver says why it failed in words of its own.
#include "fenmark/alignment.h"

#include <string>

#include <gtest/gtest.h>

TEST(StatusText, EverySolverHasItsOwnTextForFailure) {
    const std::string general = ali_statusText("no such function", -1);
    for (const char* function : {"ali_RmakSS", "ali_AAmakSS", "ali_ARAmakSS", "ali_RmakSR", "ali_RmakRR", "ali_SmakRR",
                                 "ali_RAmakSR", "ali_ARmakRR", "ali_ARAmakRR", "ali_SAmakRR", "ali_ASAmakRR",
                                 "ali_ARAAmakSR", "chainWorker", "ali_Smak", "ali_SmakS", "ali_SmakR", "ali_SmakA"}) {
        EXPECT_NE(ali_statusText(function, -1), general) << function;
    }
}
