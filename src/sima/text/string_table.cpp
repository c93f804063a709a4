// The texts of the module by their numeric id: messages of the import and the labels of the import kinds.
#include "sima/text/string_table.h"

#include <array>

namespace fenmark::sima {

namespace {

struct Entry {
    int id;
    std::string_view text;
};

// kMessageBadRoute speaks of coordinate data and doubles a word, and the messages on numbers name a limit of five
// digits that nothing tests: the wording is the one in force.
constexpr std::array kEntries{
    Entry{kMessageTooManyFields, "無効なデータ行です。 この行を無視して、処理を続けます。(余分なデータ)"},
    Entry{kMessageTooFewFields, "無効なデータ行です。この行を無視して、処理を続けます。.(データが不足)"},
    Entry{kMessageBadCoordinates, "座標データが無効です。これを無視して、処理を続けます。"},
    Entry{kMessagePointNumber, "点番号が５桁以下の整数ではありません。"},
    Entry{kMessageDuplicatePoint, "同一の点番号があります。これを無視して、処理を続けます。."},
    Entry{kMessageX, "X座標が、実数ではありません。"},
    Entry{kMessageY, "Y座標が、実数ではありません。"},
    Entry{kMessageZ, "Z座標が、実数ではありません。"},
    Entry{kMessageAddedDistance, "追加距離が、実数ではありません。"},
    Entry{kMessageParameterA, "パラメータAが、実数ではありません。"},
    Entry{kMessageStartRadius, "始点半径が、実数ではありません。"},
    Entry{kMessageEndRadius, "終点半径が、実数ではありません。"},
    Entry{kMessageSideLength, "辺長が、実数値ではありません。"},
    Entry{kMessageAzimuth, "方向角が、実数ではありません。"},
    Entry{kMessageLotNumber, "画地番号が、５桁以下の整数ではありません。"},
    Entry{kMessageRouteNumber, "路線番号が、５桁以下の整数ではありません。"},
    Entry{kMessageGroupNumber, "グループ番号が、５桁以下の整数ではありません。"},
    Entry{kMessageStartDistance, "開始追加距離が、実数ではありません。"},
    Entry{kMessageResultRouteNumber, "路線番号が、５桁以下の整数ではありません。"},
    Entry{kMessageResultGroupNumber, "グループ番号が、５桁以下の整数ではありません。"},
    Entry{kMessageStakeHeadHeight, "杭頭高が、実数ではありません。"},
    Entry{kMessageDistance, "距離が、実数ではありません。"},
    Entry{kMessageGroundHeight, "地盤高が、実数ではありません。"},
    Entry{kMessageVersion, "バージョン番号が、整数ではありません。"},
    Entry{kMessageCoordinateSystem, "座標系の指定が間違っています。"},
    Entry{kMessageLotKind, "画地種別の指定が無効です。"},
    Entry{kMessageRouteKind, "路線種別の指定が無効です。"},
    Entry{kMessageStationKind, "測点種別の指定が無効です。"},
    Entry{kMessageBadLine, "線分に関するデータが無効です。これを無視して、処理を続けます。"},
    Entry{kMessageBadLot, "画地データが無効です。これを無視して、処理を続けます。"},
    Entry{kMessageBadRoute, "座標データが無効です。これを無視して、これを処理を続けます。"},
    Entry{kMessageBadLongitudinal, "縦断成果データが処理できません。これを無視して、処理を続けます。"},
    Entry{kMessageBadCrossSection, "横断成果データが処理できません。これを無視して、処理を続けます。"},
    Entry{kMessageRadius, "半径が、実数ではありません。"},
    Entry{kMessageWidth, "Width is non-numerical value."},
    Entry{kMessageStationPitch, "測点ピッチが、実数ではありません。"},
    Entry{kMessageIntermediatePitch, "中間ピッチが、実数ではありません。"},
    Entry{kMessageMissingPoint, "参照する座標が見つかりません。"},
    Entry{kMessageNoCurvesHere, "円弧とクロソイドが作成出来ません。これを無視して、処理を続けます。"},
    Entry{kLabelCoordinates, "座標データ "},
    Entry{kMessageLongitudinalOutside, "次の縦断成果を作成できませんでした。（線形範囲外の測点です）"},
    Entry{kLabelLots, "画地データ "},
    Entry{kLabelLongitudinal, "縦断成果データ "},
    Entry{kLabelCrossSections, "横断成果データ "},
    Entry{kLabelIpLine, "路線成果-IP線 "},
    Entry{kLabelMainLine, "路線成果-主要線  "},
    Entry{kLabelCentreLine, "路線成果-中心線 "},
    Entry{kLabelWideStakesLeft, "路線成果-幅杭線左 "},
    Entry{kLabelWideStakesRight, "路線成果-幅杭線右 "},
    Entry{kLabelContinuousStraight, "路線成果-連続線(直線のみ)　"},
    Entry{kLabelContinuousCurved, "路線成果-連続線(曲線含み) "},
    Entry{kLabelAll, "全て "},
    Entry{kMessageCrossSectionOutside, "次の横断成果を作成できませんでした。（線形範囲外の測点です）"},
    Entry{kMessagePointFormat, "次の座標データを作成できませんでした。（書式が無効です）"},
    Entry{kMessageLongitudinalFormat, "次の縦断成果を作成できませんでした。（書式が無効です）"},
};

} // namespace

std::string_view resourceText(int id) {
    for (const Entry& entry : kEntries) {
        if (entry.id == id) {
            return entry.text;
        }
    }
    return {};
}

} // namespace fenmark::sima
