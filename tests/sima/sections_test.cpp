// The table of sections, and the import kinds.
#include "sima/records/import_options.h"
#include "sima/records/sections.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace fenmark::sima {
namespace {

TEST(Sections, EachOpensAndEndsWithItsLetter) {
    for (const SectionEntry& entry : kSections) {
        EXPECT_EQ(entry.opening.front(), entry.end.front());
        EXPECT_EQ(entry.opening.substr(1), "00");
        EXPECT_EQ(entry.end.substr(1), "99");
        EXPECT_EQ(sectionOpenedBy(recordCode(entry.opening)), &entry);
        EXPECT_EQ(sectionEndedBy(recordCode(entry.end)), &entry);
        EXPECT_EQ(sectionOpenedBy(recordCode(entry.end)), nullptr);
        EXPECT_EQ(sectionEndedBy(recordCode(entry.opening)), nullptr);
        EXPECT_EQ(&entryOf(entry.section), &entry);
    }
    for (const std::string_view code : {"", "A01", "B00", "E99", "G00", "Z00", "a00", "A00 ", "A0"}) {
        EXPECT_EQ(sectionOpenedBy(recordCode(code)), nullptr) << code;
        EXPECT_EQ(sectionEndedBy(recordCode(code)), nullptr) << code;
    }
}

TEST(Sections, ATableThatLacksASectionIsNoticed) {
    EXPECT_TRUE(inOrderOfSections(kSections));
    const std::array<SectionEntry, 2> few = {kSections[0], kSections[1]};
    EXPECT_FALSE(inOrderOfSections(few));
    std::array<SectionEntry, kSections.size()> mixed = kSections;
    std::swap(mixed[0], mixed[1]);
    EXPECT_FALSE(inOrderOfSections(mixed));
}

TEST(ImportKinds, HaveNamesAndLabelsOfTheirOwn) {
    const SimaImportOptions options;
    std::set<std::string_view> names;
    std::set<std::string> labels;
    for (const ImportKindEntry& entry : kImportKindTable) {
        EXPECT_TRUE(names.insert(entry.option).second) << entry.option;
        const std::string& label = options.labels[static_cast<std::size_t>(entry.kind)];
        EXPECT_FALSE(label.empty()) << entry.option;
        EXPECT_TRUE(labels.insert(label).second) << label;
    }
}

TEST(ImportKinds, RoutesOfThreeTypesBecomeAlignments) {
    std::set<std::int32_t> alignments;
    for (std::int32_t type = -1; type <= 9; ++type) {
        if (becomesAlignment(type)) {
            alignments.insert(type);
        }
    }
    EXPECT_EQ(alignments, (std::set<std::int32_t>{2, 3, 7}));
}

} // namespace
} // namespace fenmark::sima
