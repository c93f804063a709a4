// The lines of the result dialog, in order, each under its condition.
#include "command/dialogs.h"

namespace fenmark::command {

std::vector<std::string> resultLines(const ImportResult& result) {
    std::vector<std::string> lines;
    auto add = [&lines](std::int32_t count, const char* before, const char* after) {
        if (count > 0) {
            lines.push_back(before + std::to_string(count) + after);
        }
    };
    if (result.errorCount == 0) {
        lines.emplace_back("エラー無し");
    }
    add(result.errorCount, "", "個のエラー");
    add(result.coordinatePoints, "座標データから", "個のポイントを作成");
    add(result.lots, "画地データから", "個のポリラインを作成");
    if (result.alignments > 0) {
        for (const std::string& name : result.alignmentNames) {
            lines.push_back("平面線形【" + name + "】を作成");
        }
    }
    // Routes of type 2, 3 and 7 are alignments, named above; their counts never show.
    add(result.routesCreated[0], "路線成果-IP線から", "個のポリラインを作成");
    add(result.routesCreated[3], "路線成果-幅杭線左から", "個のポリラインを作成");
    add(result.routesCreated[4], "路線成果-幅杭線右から", "個のポリラインを作成");
    add(result.routesCreated[5], "路線成果-連続線（直線のみ）から", "個のポリラインを作成");
    add(result.longitudinalPoints, "縦断成果から", "個のポイントを作成");
    add(result.crossSectionPoints, "横断成果から", "個のポイントを作成");
    return lines;
}

} // namespace fenmark::command
