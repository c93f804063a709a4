// What the user chose to import, with the counts that the preview found.
#pragma once

#include "sima/text/string_table.h"
#include "values/code_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fenmark::sima {

// The import kinds, in the order of the flags and counts.
enum class ImportKind : std::int32_t {
    Coordinates = 0,
    Lots = 1,
    Longitudinal = 2,
    CrossSections = 3,
    IpLine = 4,
    MainLine = 5,
    CentreLine = 6,
    LeftStakes = 7,
    RightStakes = 8,
    Continuous = 9,
    ContinuousCurves = 10,
};

constexpr std::size_t kImportKinds = static_cast<std::size_t>(ImportKind::ContinuousCurves) + 1;
constexpr std::size_t kImportLabels = kImportKinds + 1; // the kinds and the root of the dialog's tree

// What the dialogs, the command line and the log know of a kind.
struct ImportKindEntry {
    ImportKind kind;
    std::string_view option; // on the command line
    int label;               // of the dialog's row, a number of the string table
    std::int32_t routeType;  // of the routes, 1 to 7; 0 for what is no route
    bool alignment;          // its routes become alignments, all others polylines
};

inline constexpr std::array<ImportKindEntry, kImportKinds> kImportKindTable = {{
    {ImportKind::Coordinates, "points", kLabelCoordinates, 0, false},
    {ImportKind::Lots, "lots", kLabelLots, 0, false},
    {ImportKind::Longitudinal, "longitudinal", kLabelLots + 1, 0, false},
    {ImportKind::CrossSections, "cross-sections", kLabelLots + 2, 0, false},
    {ImportKind::IpLine, "ip", kLabelLots + 3, 1, false},
    {ImportKind::MainLine, "main", kLabelLots + 4, 2, true},
    {ImportKind::CentreLine, "centre", kLabelLots + 5, 3, true},
    {ImportKind::LeftStakes, "left-stake", kLabelLots + 6, 4, false},
    {ImportKind::RightStakes, "right-stake", kLabelLots + 7, 5, false},
    {ImportKind::Continuous, "continuous", kLabelLots + 8, 6, false},
    {ImportKind::ContinuousCurves, "continuous-curves", kLabelLots + 9, 7, true},
}};

static_assert(inCodeOrder(kImportKindTable, &ImportKindEntry::kind));

// Whether routes of the type become alignments.
constexpr bool becomesAlignment(std::int32_t routeType) {
    for (const ImportKindEntry& entry : kImportKindTable) {
        if (entry.alignment && entry.routeType == routeType) {
            return true;
        }
    }
    return false;
}

struct SimaImportOptions {
    SimaImportOptions(); // all flags off, counts 0, labels from the string table

    std::array<bool, kImportKinds> flags{};
    std::array<std::string, kImportLabels> labels;
    std::array<std::int32_t, kImportLabels> counts{}; // the twelfth is never used

    std::int32_t totalCount() const; // sum of the first eleven counts
    bool anySelected() const;
    bool flag(ImportKind kind) const { return flags[static_cast<std::size_t>(kind)]; }
};

} // namespace fenmark::sima
