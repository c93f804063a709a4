// The lines of the result dialog, in order, each under its condition.
#include "command/dialogs.h"
#include "sima/records/import_options.h"

#include <algorithm>
#include <array>

namespace fenmark::command {

namespace {

using sima::ImportKind;

struct KindLine {
    ImportKind kind;
    const char* before; // the count
    const char* after;
};

constexpr std::array kKindLines = {
    KindLine{ImportKind::Coordinates, "座標データから", "個のポイントを作成"},
    KindLine{ImportKind::Lots, "画地データから", "個のポリラインを作成"},
    KindLine{ImportKind::IpLine, "路線成果-IP線から", "個のポリラインを作成"},
    KindLine{ImportKind::LeftStakes, "路線成果-幅杭線左から", "個のポリラインを作成"},
    KindLine{ImportKind::RightStakes, "路線成果-幅杭線右から", "個のポリラインを作成"},
    KindLine{ImportKind::Continuous, "路線成果-連続線（直線のみ）から", "個のポリラインを作成"},
    KindLine{ImportKind::Longitudinal, "縦断成果から", "個のポイントを作成"},
    KindLine{ImportKind::CrossSections, "横断成果から", "個のポイントを作成"},
};

// Routes that become alignments are named one by one; their counts never show.
constexpr bool everyKindHasALine() {
    return std::all_of(sima::kImportKindTable.begin(), sima::kImportKindTable.end(), [](const auto& entry) {
        return entry.alignment || std::any_of(kKindLines.begin(), kKindLines.end(),
                                              [&](const KindLine& line) { return line.kind == entry.kind; });
    });
}
static_assert(everyKindHasALine());

std::int32_t countOf(const ImportResult& result, ImportKind kind) {
    switch (kind) {
    case ImportKind::Coordinates:
        return result.coordinatePoints;
    case ImportKind::Lots:
        return result.lots;
    case ImportKind::Longitudinal:
        return result.longitudinalPoints;
    case ImportKind::CrossSections:
        return result.crossSectionPoints;
    case ImportKind::IpLine:
    case ImportKind::MainLine:
    case ImportKind::CentreLine:
    case ImportKind::LeftStakes:
    case ImportKind::RightStakes:
    case ImportKind::Continuous:
    case ImportKind::ContinuousCurves:
        break;
    }
    const std::int32_t type = sima::kImportKindTable[static_cast<std::size_t>(kind)].routeType;
    return result.routesCreated[static_cast<std::size_t>(type - 1)];
}

} // namespace

std::vector<std::string> resultLines(const ImportResult& result) {
    std::vector<std::string> lines;
    auto add = [&lines](std::int32_t count, const char* before, const char* after) {
        if (count > 0) {
            lines.push_back(before + std::to_string(count) + after);
        }
    };
    if (result.errorCount == 0) {
        lines.emplace_back(kNoErrors);
    }
    add(result.errorCount, "", kErrorsCounted);
    for (const KindLine& line : kKindLines) {
        add(countOf(result, line.kind), line.before, line.after);
        if (line.kind == ImportKind::Lots && result.alignments > 0) {
            for (const std::string& name : result.alignmentNames) {
                lines.push_back("平面線形【" + name + "】を作成");
            }
        }
    }
    return lines;
}

} // namespace fenmark::command
