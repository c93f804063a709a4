// The rules of the import and settings dialogs that need no window.
#include "command/dialog_rules.h"

#include "sima/text/number.h"
#include "sima/text/path.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <new>
#include <system_error>

namespace fenmark::command {

using sima::ImportKind;

namespace {

constexpr std::size_t index(ImportKind kind) {
    return static_cast<std::size_t>(kind);
}

std::int32_t countIn(const sima::SimaReader& reader, const sima::ImportKindEntry& entry) {
    switch (entry.kind) {
    case ImportKind::Coordinates:
        return static_cast<std::int32_t>(reader.points.size());
    case ImportKind::Lots:
        return reader.lotCount();
    case ImportKind::Longitudinal:
        return reader.longitudinalPointCount();
    case ImportKind::CrossSections:
        return reader.crossSectionCount();
    case ImportKind::IpLine:
    case ImportKind::MainLine:
    case ImportKind::CentreLine:
    case ImportKind::LeftStakes:
    case ImportKind::RightStakes:
    case ImportKind::Continuous:
    case ImportKind::ContinuousCurves:
        break;
    }
    return reader.routesRead(entry.routeType);
}

} // namespace

std::string treeRowText(const sima::SimaImportOptions& options, ImportKind kind) {
    const std::string& label = options.labels[index(kind)];
    const std::int32_t count = options.counts[index(kind)];
    if (count < 1) {
        return label;
    }
    return label + " [" + std::to_string(count) + "]";
}

void countFromPreview(const sima::SimaReader& reader, sima::SimaImportOptions& options) {
    auto set = [&](ImportKind kind, std::int32_t count) {
        options.counts[index(kind)] = count;
        if (count > 0) {
            options.flags[index(kind)] = true;
        }
    };
    for (const sima::ImportKindEntry& entry : sima::kImportKindTable) {
        set(entry.kind, countIn(reader, entry));
    }
}

bool canImport(const sima::SimaImportOptions& options) {
    return options.totalCount() > 0 && options.anySelected();
}

bool mustChooseAlignment(const sima::SimaReader& preview, const sima::SimaImportOptions& options, bool before) {
    if (!options.flag(ImportKind::Longitudinal) && !options.flag(ImportKind::CrossSections)) {
        return before;
    }
    return before || (preview.usedRouteType2 && !options.flag(ImportKind::MainLine)) ||
           (preview.usedRouteType3 && !options.flag(ImportKind::CentreLine)) ||
           (preview.usedRouteType7 && !options.flag(ImportKind::ContinuousCurves));
}

bool isSimFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(sima::pathOf(path), error) || path.size() < 4) {
        return false;
    }
    std::string ending = path.substr(path.size() - 4);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); });
    return ending == ".SIM";
}

std::optional<std::int64_t> modificationTime(const std::string& path) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(sima::pathOf(path), error);
    if (error) {
        return std::nullopt;
    }
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count();
}

bool parseShiftDistance(std::string_view text, double& metres) {
    const std::string_view trimmed = sima::trim(text);
    std::string digits(trimmed);
    if (!(sima::toReal(digits) > 0.0)) {
        std::erase(digits, '-');
    }
    std::erase(digits, '.');
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return false;
    }
    if (std::count(trimmed.begin(), trimmed.end(), '.') > 1) {
        return false;
    }
    metres = sima::toReal(text);
    return metres > 0.0;
}

std::string brokenOffReason(const std::exception& error) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return "out of memory";
    }
    return error.what();
}

std::string brokenOffText(const sima::SimaReader& reader, const std::exception& error) {
    return reader.filePath + ":" + std::to_string(reader.lineNumber) + ": " + brokenOffReason(error);
}

} // namespace fenmark::command
