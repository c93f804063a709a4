// The texts of the command line. A figure stands in braces.
#include "cli/texts.h"

#include "cli/wording.h"

#include <array>

namespace fenmark::cli {

namespace {

constexpr std::array<Wording<Text>, static_cast<std::size_t>(kLastText) + 1> kTextWordings = {{
    {Text::HelpHint, "使い方は 'fenmark --help' または 'fenmark COMMAND --help' で表示できます。",
     "Run 'fenmark --help' or 'fenmark COMMAND --help' for the commands and their options."},
    {Text::DidYouMean, "。「{word}」ではありませんか", "; did you mean '{word}'?"},
    {Text::NoSuchOption, "{command} に {option} というオプションはありません{meant}",
     "{command} has no option {option}{meant}"},
    {Text::OptionBehindCommand, "{option} は、このオプションを持つコマンド({commands})の後に書いてください",
     "{option} stands behind a command that has it ({commands})"},
    {Text::CommandsAre, "。コマンド: {commands}", "; the commands are {commands}"},
    {Text::NoCommand, "コマンドがありません", "no command is given"},
    {Text::UnknownCommand, "「{word}」というコマンドはありません", "there is no command '{word}'"},
    {Text::DashesBehindCommand, "-- は、コマンドの後に書いてください", "-- stands behind the command"},
    {Text::NeedsValue, "{option} には値が必要です: {values}", "{option} needs a value: {values}"},
    {Text::TakesNoValue, "{option} に値は指定できません", "{option} takes no value"},
    {Text::Required, "{name} がありません", "{name} is required"},
    {Text::TooManyArguments, "余分な引数があります: {arguments}", "too many arguments: {arguments}"},
    {Text::BadValue, "{option}: 値「{value}」は使えません。使える値: {values}",
     "{option}: cannot be '{value}'; it takes {values}"},
    {Text::Excludes, "{option} と {other} は同時に指定できません", "{option} excludes {other}"},
    {Text::GivenTwice, "{option} は1回だけ指定できます", "{option} may be given once only"},

    {Text::EmptyName, "{what} の名前が空です", "{what} is an empty name"},
    {Text::NoKind, "「{name}」というデータの種類はありません。種類: {kinds}{meant}",
     "no kind of data is named '{name}'; the kinds are {kinds}{meant}"},
    {Text::NoObjectKind, "「{name}」という図形の種類はありません。種類: {kinds}{meant}",
     "no kind of object is named '{name}'; the kinds are {kinds}{meant}"},
    {Text::NoEncoding,
     "--encoding: 「{name}」という文字コードはありません。auto、cp932、utf-8、utf-16から選んでください",
     "--encoding: no encoding is named '{name}'; take auto, cp932, utf-8 or utf-16"},
    {Text::NotMetres, "{what} がメートルの数値ではありません: 「{text}」",
     "{what} is not a number of metres: '{text}'"},
    {Text::NotAStation, "STATION がメートルの数値でも、No.6+0.5や1k234.5のような測点でもありません: 「{text}」",
     "STATION is neither a number of metres nor a station such as No.6+0.5 or 1k234.5: '{text}'"},
    {Text::DrawingIsAnotherFormat,
     "--drawing {drawing}: 図面はGeoPackage(*.gpkg)です。'fenmark import {file} --drawing {made}' の後に "
     "'fenmark {command} {made} {drawing}' を実行すると、このファイルを出力できます",
     "--drawing {drawing}: a drawing is a GeoPackage, *.gpkg; 'fenmark import {file} --drawing {made}' and then "
     "'fenmark {command} {made} {drawing}' write that file"},
    {Text::FileIsDrawing, "{file}: SIMAファイルではなく図面の名前です。読み込み先は --drawing {file} で指定します",
     "{file}: the name of a drawing, not of a SIMA file; --drawing {file} imports into it"},
    {Text::ShiftAboveZero, "--shift は0より大きい小数で指定してください: 「{text}」",
     "--shift must be above 0, in plain decimals: '{text}'"},
    {Text::ForceNeedsAlignment, "--force-alignment には --alignment NAME が必要です",
     "--force-alignment needs --alignment NAME"},
    {Text::RectangleIsFourNumbers, "--rectangle はコンマで区切った4つの数値 X,Y,X,Y です: 「{text}」",
     "--rectangle is four numbers with commas, X,Y,X,Y: '{text}'"},
    {Text::ScaleOutOfRange, "--scale は0.01から100000000までの数値です: 「{text}」",
     "--scale must be a number from 0.01 to 100000000: '{text}'"},
    {Text::PitchTooSmall, "--pitch は0.001以上です: 「{text}」", "--pitch must be at least 0.001: '{text}'"},
    {Text::EveryBelowZero, "--every は0以上です: 「{text}」", "--every must not be below 0: '{text}'"},
    {Text::AtTakesStations, "--at には120.5、No.6+0.5、1k234.5のような測点を指定してください: 「{text}」",
     "--at takes stations such as 120.5, No.6+0.5 or 1k234.5: '{text}'"},
    {Text::OffsetTooFar, "--offset は100000 m以内です: 「{text}」", "--offset must not be beyond 100000 m: '{text}'"},
    {Text::NoTable, "「{name}」という表はありません。表: {tables}{meant}",
     "no table is named '{name}'; the tables are {tables}{meant}"},

    {Text::ExtensionMustBe, "{path}: 使える拡張子: {extensions}{hint}",
     "{path}: the extension must be {extensions}{hint}"},
    {Text::Or, ", ", " or "},
    {Text::OtherCommandWrites, "。このファイルは 'fenmark {command}' で出力します",
     "; 'fenmark {command}' writes this one"},
    {Text::OptionOfFormat, "{path}: {option} は、拡張子が {extension} のファイルだけに使えます",
     "{path}: {option} is for files with the extension {extension} alone"},
    {Text::WithZone, "{message} (--zone 1..19)", "{message} (--zone 1..19)"},
    {Text::WithZoneOrPlane, "{message} (--zone 1..19 または --crs plane)", "{message} (--zone 1..19, or --crs plane)"},
    {Text::NoLayer, "{path}: 図面に「{name}」というレイヤはありません。レイヤ: {names}",
     "{path}: the drawing has no layer named '{name}'; its layers: {names}"},
    {Text::NoLayerToImport,
     "{path}: 図面に「{name}」というレイヤはありません。レイヤ: {names} (--create-layers を付けると作ります){meant}",
     "{path}: the drawing has no layer named '{name}'; its layers: {names} (--create-layers makes a new one){meant}"},
    {Text::NoSite, "{path}: 図面に「{name}」というサイトはありません。サイト: {names}{meant}",
     "{path}: the drawing has no site named '{name}'; its sites: {names}{meant}"},
    {Text::NoAlignment, "{path}: 図面に「{name}」という線形はありません。線形: {names}{meant}",
     "{path}: the drawing has no alignment named '{name}'; its alignments: {names}{meant}"},
    {Text::SeveralAlignments, "{path}: 「{name}」という線形が複数あります。識別子で指定してください: {names}",
     "{path}: several alignments are named '{name}'; name one by its identifier: {names}"},
    {Text::OtherZone, "{path}: 図面の座標は{zone}系で、{wanted}系ではありません",
     "{path}: its coordinates are in zone {zone}, not in zone {wanted}"},
    {Text::None, "なし", "none"},
    {Text::AndMore, "、ほか{count}件", " and {count} more"},

    {Text::CannotRead, "{path}: 読めません: {reason}", "{path}: cannot be read: {reason}"},
    {Text::CannotReadToEnd, "{path}: 最後まで読めません", "{path}: cannot be read to its end"},
    {Text::IsFolder, "{path}: SIMAファイルではなくフォルダです", "{path}: is a folder, not a SIMA file"},
    {Text::IsNoOrdinaryFile, "{path}: 通常のファイルではありません", "{path}: is not an ordinary file"},
    {Text::IsNoLog, "{path}: 読み込みのログではありません", "{path}: is not the log of an import"},
    {Text::IsNoSimFile, "{path}: SIMAファイルとして扱えません。名前の末尾は .sim です",
     "{path}: not taken for a SIMA file: its name must end in .sim"},
    {Text::ReadingBrokenOff, "{path}:{line}: 読み取りを中断しました: {reason}",
     "{path}:{line}: reading broken off: {reason}"},
    {Text::ImportBrokenOff, "{path}:{line}: 読み込みを中断しました: {reason}",
     "{path}:{line}: import broken off: {reason}"},
    {Text::CannotReadFurther, "{path}:{line}: 読み込みを中断しました: ファイルの続きを読めません: {reason}",
     "{path}:{line}: import broken off: the file cannot be read further: {reason}"},
    {Text::LogNotWritable, "{path}: ログに書き込めません: {reason}",
     "{path}: the log beside it cannot be written: {reason}"},
    {Text::LogOverDrawing, "{path}: ログ {log} が図面と同じファイルになります",
     "{path}: its log {log} would take the place of a drawing"},
    {Text::LogOverLog, "{path}: ログ {log} が、先に指定した {other} のログを置き換えるため、読み込みません",
     "{path}: not imported, since its log {log} would take the place of that of {other}, which comes before it"},
    {Text::ItsFolder, "フォルダ: {reason}", "its folder: {reason}"},
    {Text::DrawingAsItWas, "{message}。図面は元のままです", "{message}; the drawing is left as it was"},
    {Text::NoDrawingMade, "{message}。図面は作成していません", "{message}; no drawing is made"},
    {Text::ImportIsIn, "{message}。読み込んだ図形は {drawing} にあります", "{message}; the import is in {drawing}"},
    {Text::KeptIn, "{message}。それまでに作成した図形は {drawing} に残しました",
     "{message}; what was made before that is kept in {drawing}"},
    {Text::SitesNotListed, "{path}: 図面のサイトを取得できません", "{path}: the sites of the drawing cannot be listed"},
    {Text::TargetIsSource, "{path}: 図面に読み込んだファイルです。上書きしません。別の名前を指定してください",
     "{path}: was imported into the drawing and is not written over; give another name"},
    {Text::TargetIsLog, "{path}: 読み込みのログです。上書きしません。別の名前を指定してください",
     "{path}: is the log of an import and is not written over; give another name"},
    {Text::OutputNotWritable, "標準出力に書き込めません", "standard output cannot be written"},
    {Text::MoreInLog, "{path}: ほか{count}件はログにあります", "{path}: {count} more in the log"},
    {Text::Writing, "書き込み中", "writing"},

    {Text::OutOfMemory, "メモリが足りません", "out of memory"},
    {Text::UnknownFailure, "原因不明のエラーです", "unknown failure"},
    {Text::ShortRecord, "レコードの項目が、区分で必要な数より少なくなっています",
     "the record is too short for the fields that its section takes"},
    {Text::LineTooLong, "行が{size} MiBを超えています。SIMAファイルの行ではありません",
     "the line is longer than {size} MiB, which no line of a SIMA file is"},

    {Text::StationOutside, "測点 {station} は線形「{name}」の範囲外です: {start} から {end} まで",
     "station {station} lies outside the alignment '{name}': it runs from {start} to {end}"},
    {Text::StationOfNothing, "測点 {station} は線形「{name}」の範囲外です: 線形に要素がありません",
     "station {station} lies outside the alignment '{name}': it has no elements"},
    {Text::NoElements, "線形「{name}」に要素がありません", "the alignment '{name}' has no elements"},
    {Text::EndlessElements, "線形「{name}」に座標や長さが大きすぎる要素があるため、測点を求められません",
     "the alignment '{name}' has elements beyond all bounds, so stations cannot be counted along it"},
}};

static_assert(inOrder(kTextWordings),
              "every code has its texts, in the order of the enumeration, with the same figures");

} // namespace

std::string said(Language language, Text text, std::initializer_list<Figure> figures) {
    return filled(kTextWordings[static_cast<std::size_t>(text)], language, figures);
}

} // namespace fenmark::cli
