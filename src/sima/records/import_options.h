// What the user chose to import, with the counts that the preview found.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace fenmark::sima {

// The import kinds, in the order of the flags and counts. Route type t has the kind 3 + t.
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

constexpr std::size_t kImportKinds = 11;
constexpr std::size_t kImportLabels = 12; // the eleven kinds and the root of the dialog's tree

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
