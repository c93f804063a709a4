// Which word is meant by one that was mistyped.
#include "cli/suggestion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fenmark::cli {
namespace {

// What was typed, the word that there is, and whether that is meant.
TEST(Suggestion, TakesTwoSlipsAndLessThanHalfOfTheWord) {
    const std::string longest(64, 'w');
    const struct {
        std::string typed;
        std::string word;
        bool meant;
    } kCases[] = {
        {"longitudinal", "longitudinal", true},
        {"longitudina", "longitudinal", true},    // one character less
        {"longitudin", "longitudinal", true},     // two
        {"longitudi", "longitudinal", false},     // three
        {"longitudinals", "longitudinal", true},  // one more
        {"longitudinalss", "longitudinal", true}, // two
        {"longitudinalsss", "longitudinal", false},
        {"longitodinal", "longitudinal", true}, // one changed
        {"lomgitodinal", "longitudinal", true},
        {"lomgitodimal", "longitudinal", false},
        {"olngitudinal", "longitudinal", true}, // two exchanged are one slip
        {"olngitudinla", "longitudinal", true},
        {"olngitduinla", "longitudinal", false},
        {"nolgitudinal", "longitudinal", true}, // one taken out and put in again
        {"longitudinal, ", "longitudinal", true},
        {"ongitudinals", "longitudinal", true}, // one less in front and one more behind
        {"", "ip", false},                      // half of a word may not be made up
        {"i", "ip", false},
        {"ipp", "ip", false},
        {"lo", "lot", true},
        {"l", "lot", false},
        {"lo", "lots", false},
        {"lot", "lots", true},
        {"loots", "lots", true},
        {"境界", "境界線", true}, // characters, not bytes
        {"境", "境界線", false},
        {"境線界点", "境界線点", true},
        {"線境界点", "境界線点", false},
        {"\x95", "境", false},
        {longest, longest.substr(1) + "x", true},
        {longest + "w", longest, false}, // nothing longer is a slip
        {longest, longest + "w", false},
    };
    for (const auto& [typed, word, meant] : kCases) {
        const std::vector<std::string> words = {word};
        EXPECT_EQ(nearestWord(typed, words), meant ? word : "") << typed << " for " << word;
    }
}

TEST(Suggestion, TakesTheNearestAndTheFirstOfEquals) {
    const std::vector<std::string> words = {"points", "joints", "paints", "prints"};
    EXPECT_EQ(nearestWord("oints", words), "points");
    EXPECT_EQ(nearestWord("paint", words), "paints");
    EXPECT_EQ(nearestWord("pxints", words), "points");
    EXPECT_EQ(nearestWord("jaints", words), "joints");
}

} // namespace
} // namespace fenmark::cli
