// The texts of the module by their numeric id: messages of the import and the labels of the import kinds.
#include "sima/text/string_table.h"

#include <array>

namespace fenmark::sima {

namespace {

struct Entry {
    int id;
    std::string_view text;
};

// Id 131 speaks of coordinate data in a route and doubles a word, and the messages on numbers name a limit of five
// digits that nothing tests: the wording is the one in force.
constexpr std::array kEntries{
    Entry{101, "無効なデータ行です。 この行を無視して、処理を続けます。(余分なデータ)"},
    Entry{102, "無効なデータ行です。この行を無視して、処理を続けます。.(データが不足)"},
    Entry{103, "座標データが無効です。これを無視して、処理を続けます。"},
    Entry{104, "点番号が５桁以下の整数ではありません。"},
    Entry{105, "同一の点番号があります。これを無視して、処理を続けます。."},
    Entry{106, "X座標が、実数ではありません。"},
    Entry{107, "Y座標が、実数ではありません。"},
    Entry{108, "Z座標が、実数ではありません。"},
    Entry{109, "追加距離が、実数ではありません。"},
    Entry{110, "パラメータAが、実数ではありません。"},
    Entry{111, "始点半径が、実数ではありません。"},
    Entry{112, "終点半径が、実数ではありません。"},
    Entry{113, "辺長が、実数値ではありません。"},
    Entry{114, "方向角が、実数ではありません。"},
    Entry{115, "画地番号が、５桁以下の整数ではありません。"},
    Entry{116, "路線番号が、５桁以下の整数ではありません。"},
    Entry{117, "グループ番号が、５桁以下の整数ではありません。"},
    Entry{118, "開始追加距離が、実数ではありません。"},
    Entry{119, "路線番号が、５桁以下の整数ではありません。"},
    Entry{120, "グループ番号が、５桁以下の整数ではありません。"},
    Entry{121, "杭頭高が、実数ではありません。"},
    Entry{122, "距離が、実数ではありません。"},
    Entry{123, "地盤高が、実数ではありません。"},
    Entry{124, "バージョン番号が、整数ではありません。"},
    Entry{125, "座標系の指定が間違っています。"},
    Entry{126, "画地種別の指定が無効です。"},
    Entry{127, "路線種別の指定が無効です。"},
    Entry{128, "測点種別の指定が無効です。"},
    Entry{129, "線分に関するデータが無効です。これを無視して、処理を続けます。"},
    Entry{130, "画地データが無効です。これを無視して、処理を続けます。"},
    Entry{131, "座標データが無効です。これを無視して、これを処理を続けます。"},
    Entry{132, "縦断成果データが処理できません。これを無視して、処理を続けます。"},
    Entry{133, "横断成果データが処理できません。これを無視して、処理を続けます。"},
    Entry{134, "半径が、実数ではありません。"},
    Entry{135, "Width is non-numerical value."},
    Entry{136, "測点ピッチが、実数ではありません。"},
    Entry{137, "中間ピッチが、実数ではありません。"},
    Entry{138, "参照する座標が見つかりません。"},
    Entry{139, "円弧とクロソイドが作成出来ません。これを無視して、処理を続けます。"},
    Entry{140, "座標データ "},
    Entry{141, "次の縦断成果を作成できませんでした。（線形範囲外の測点です）"},
    Entry{142, "画地データ "},
    Entry{143, "縦断成果データ "},
    Entry{144, "横断成果データ "},
    Entry{145, "路線成果-IP線 "},
    Entry{146, "路線成果-主要線  "},
    Entry{147, "路線成果-中心線 "},
    Entry{148, "路線成果-幅杭線左 "},
    Entry{149, "路線成果-幅杭線右 "},
    Entry{150, "路線成果-連続線(直線のみ)　"},
    Entry{151, "路線成果-連続線(曲線含み) "},
    Entry{152, "全て "},
    Entry{153, "次の横断成果を作成できませんでした。（線形範囲外の測点です）"},
    Entry{154, "次の座標データを作成できませんでした。（書式が無効です）"},
    Entry{155, "次の縦断成果を作成できませんでした。（書式が無効です）"},
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
