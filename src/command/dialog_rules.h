// The rules of the import and settings dialogs that need no window: the command line asks the same questions.
#pragma once

#include "sima/reader/sima_reader.h"
#include "sima/records/import_options.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace fenmark::command {

// The rows of the import dialog's tree under its root, in order. The position of a row is its meaning.
inline constexpr std::array<sima::ImportKind, sima::kImportKinds> kTreeRows{
    sima::ImportKind::Coordinates,  sima::ImportKind::Lots,          sima::ImportKind::IpLine,
    sima::ImportKind::MainLine,     sima::ImportKind::CentreLine,    sima::ImportKind::LeftStakes,
    sima::ImportKind::RightStakes,  sima::ImportKind::Continuous,    sima::ImportKind::ContinuousCurves,
    sima::ImportKind::Longitudinal, sima::ImportKind::CrossSections,
};

constexpr bool everyKindHasARow() {
    for (const sima::ImportKindEntry& entry : sima::kImportKindTable) {
        if (std::count(kTreeRows.begin(), kTreeRows.end(), entry.kind) != 1) {
            return false;
        }
    }
    return true;
}
static_assert(everyKindHasARow());

// "%s [%d]" of label and count where there is something to import, otherwise the bare label.
std::string treeRowText(const sima::SimaImportOptions& options, sima::ImportKind kind);

// Takes every counter from a previewed reader, and sets the flag where a count is above 0. A count of 0 leaves the
// flag as it stood.
void countFromPreview(const sima::SimaReader& reader, sima::SimaImportOptions& options);

// Whether the button that starts the import is enabled.
bool canImport(const sima::SimaImportOptions& options);

// Whether results need an alignment that this import does not create: a ticked longitudinal or cross-section kind
// refers to a route type that is not ticked. Otherwise the value is kept as it was.
bool mustChooseAlignment(const sima::SimaReader& preview, const sima::SimaImportOptions& options, bool before);

// Whether the file can be accessed and is named *.sim in any case.
bool isSimFile(const std::string& path);

// The file's time of last modification in nanoseconds; nothing if the file cannot be asked.
std::optional<std::int64_t> modificationTime(const std::string& path);

// The shift distance in metres that an input field holds; false if it is refused. The value is given out whenever
// the characters pass, also where it is then refused for not being above 0.
bool parseShiftDistance(std::string_view text, double& metres);

// Why an exception ended a pass, in words for the user.
std::string brokenOffReason(const std::exception& error);

// What a host says of a pass that an exception ended: path, number of the input line, and why.
std::string brokenOffText(const sima::SimaReader& reader, const std::exception& error);

} // namespace fenmark::command
