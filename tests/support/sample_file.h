// What a writer makes, held to the byte to a file beside the tests.
#pragma once

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace fenmark::test {

// The first line that differs from tests/AREA/samples/FILE is shown. With FENMARK_RENEW_SAMPLES=1 in the environment the
// file is written anew, for a change on purpose.
inline void expectSampleOf(const std::string& area, const std::string& file, const std::string& written) {
    const std::string path = std::string(FENMARK_SOURCE_DIR) + "/tests/" + area + "/samples/" + file;
    if (std::getenv("FENMARK_RENEW_SAMPLES") != nullptr) {
        std::ofstream(path, std::ios::binary) << written;
    }
    const std::string wanted = readFile(path);
    ASSERT_FALSE(wanted.empty()) << path;
    std::istringstream wantedLines(wanted);
    std::istringstream lines(written);
    std::string wantedLine;
    std::string line;
    for (int number = 1; std::getline(wantedLines, wantedLine); ++number) {
        ASSERT_TRUE(std::getline(lines, line)) << file << " ends before line " << number;
        ASSERT_EQ(line, wantedLine) << file << ":" << number;
    }
    EXPECT_EQ(written, wanted);
}

} // namespace fenmark::test

namespace fenmark::exchange {

inline void expectSample(const std::string& file, const std::string& written) {
    test::expectSampleOf("exchange", file, written);
}

} // namespace fenmark::exchange
