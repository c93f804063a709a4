"""What the algorithms say, in English and Japanese."""
from qgis.PyQt.QtCore import QLocale, QSettings

JAPANESE = {
    "Import SIMA file": "SIMAファイルの読み込み",
    "Stakes of an alignment": "線形の測点杭",
    "Stations and offsets of points": "点の追加距離と離れ",
    "Export drawing": "図面の書き出し",
    "Report": "計算書",
    "SIMA file": "SIMAファイル",
    "Drawing": "図面",
    "Plane rectangular zone": "平面直角座標系",
    "not set": "指定なし",
    "Encoding": "文字コード",
    "Alignment": "線形",
    "Every (metres)": "間隔(m)",
    "Offsets (metres, right positive)": "離れ(m、右が正)",
    "Main points too": "主要点も含める",
    "Stakes": "測点杭",
    "Points": "点",
    "Stations": "追加距離",
    "File to write (.dxf .xml .sim .geojson .kml .csv)": "書き出すファイル (.dxf .xml .sim .geojson .kml .csv)",
    "File to write (.html .csv)": "書き出すファイル (.html .csv)",
    "Load the layers": "レイヤを読み込む",
    "Result": "結果",
}


def tr(text):
    """The text in the language of QGIS: Japanese, or English."""
    locale = QSettings().value("locale/userLocale") or QLocale.system().name()
    return JAPANESE.get(text, text) if str(locale).startswith("ja") else text
