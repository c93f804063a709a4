<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>desk</name>
    <message>
        <source>&amp;File</source>
        <comment>FileMenu</comment>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <comment>EditMenu</comment>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <comment>ViewMenu</comment>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <comment>SettingsMenu</comment>
        <translation>設定(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>HelpMenu</comment>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <comment>New</comment>
        <translation>新規(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <comment>Open</comment>
        <translation>開く(&amp;O)...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <comment>OpenRecent</comment>
        <translation>最近使ったファイル(&amp;R)</translation>
    </message>
    <message>
        <source>Clear List</source>
        <comment>ClearRecent</comment>
        <translation>一覧を消去</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <comment>Save</comment>
        <translation>上書き保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <comment>SaveAs</comment>
        <translation>名前を付けて保存(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <comment>Export</comment>
        <translation>書き出し(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <comment>Quit</comment>
        <translation>終了(&amp;X)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <comment>Undo</comment>
        <translation>元に戻す(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <comment>UndoStep</comment>
        <translation>元に戻す(&amp;U): %1</translation>
    </message>
    <message>
        <source>&amp;Deselect</source>
        <comment>ClearSelection</comment>
        <translation>選択を解除(&amp;D)</translation>
    </message>
    <message>
        <source>Add &amp;Layer...</source>
        <comment>AddLayer</comment>
        <translation>画層を追加(&amp;L)...</translation>
    </message>
    <message>
        <source>&amp;Import SIMA File...</source>
        <comment>Import</comment>
        <translation>SIMAファイル読み込み(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Fit All</source>
        <comment>Fit</comment>
        <translation>全体表示(&amp;F)</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <comment>FitSelection</comment>
        <translation>選択を表示(&amp;S)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <comment>ZoomIn</comment>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <comment>ZoomOut</comment>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>Zoom &amp;Window</source>
        <comment>ZoomWindow</comment>
        <translation>窓ズーム(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Labels</source>
        <comment>ShowLabels</comment>
        <translation>名称・要素値(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Stations</source>
        <comment>ShowStations</comment>
        <translation>測点(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Grid</source>
        <comment>ShowGrid</comment>
        <translation>座標格子(&amp;G)</translation>
    </message>
    <message>
        <source>Next &amp;Pane</source>
        <comment>NextPane</comment>
        <translation>次のパネルへ(&amp;P)</translation>
    </message>
    <message>
        <source>Plane Rectangular &amp;Zone</source>
        <comment>Zone</comment>
        <translation>平面直角座標系(&amp;Z)</translation>
    </message>
    <message>
        <source>Not Set</source>
        <comment>NoZone</comment>
        <translation>指定なし</translation>
    </message>
    <message>
        <source>Zone %1</source>
        <comment>ZoneNumber</comment>
        <translation>%1系</translation>
    </message>
    <message>
        <source>Positive &amp;Radius</source>
        <comment>PositiveRadius</comment>
        <translation>正の半径の向き(&amp;R)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>RadiusAuto</comment>
        <translation>自動</translation>
    </message>
    <message>
        <source>Turns Left</source>
        <comment>RadiusLeft</comment>
        <translation>左曲がり</translation>
    </message>
    <message>
        <source>Turns Right</source>
        <comment>RadiusRight</comment>
        <translation>右曲がり</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <comment>LanguageMenu</comment>
        <translation>言語(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;About Fenmark Desk</source>
        <comment>About</comment>
        <translation>Fenmark Deskについて(&amp;A)</translation>
    </message>
    <message>
        <source>Brings SIMA survey files into drawings.</source>
        <comment>AboutText</comment>
        <translation>SIMAファイルを読み込み、図面に表示します。</translation>
    </message>
    <message>
        <source>&amp;Keyboard</source>
        <comment>Keys</comment>
        <translation>キー操作(&amp;K)</translation>
    </message>
    <message>
        <source>Plan
Click: select the object; once more: the next one at that place
Drag: pan
Space and a move of the mouse: pan
Wheel: zoom at the pointer
Shift+drag: zoom to a window
Ctrl+click: add the object to the selection, or take it out
Ctrl+drag: select what lies in the box; to the left also what reaches into it
Right click: menu of the object, the row or the layer
Arrows: pan
+ / - / Page Up / Page Down: zoom
F / Home: show everything
Tab / Shift+Tab / N / P: select the next or the previous object in view
Enter: show the properties of the object
Ctrl+A: select all that is shown
Esc: clear the selection
Measuring
Enter / double click: finish
Backspace: take the last place back
Esc: clear; once more: end
Sections
Left / Right: move along
+ / -: zoom along the section
F / Home: show everything
N / P / Page Down / Page Up: next or previous point or section
Panels
Enter on a line of the log: show its object and its line of the SIMA file
Up / Down / Enter in the search: choose and show what was found
Up / Down / Tab in the command line: commands typed before, and completion
F2 / Delete in the layers: rename, delete an empty one
Ctrl+C in a table: copy the rows for a spreadsheet</source>
        <comment>KeysText</comment>
        <translation>平面図
クリック: 図形を選択（同じ場所でもう一度クリックすると次の図形）
ドラッグ: 画面移動
Space+マウス移動: 画面移動
ホイール: カーソル位置で拡大・縮小
Shift+ドラッグ: 範囲を拡大
Ctrl+クリック: 図形の追加選択・選択解除
Ctrl+ドラッグ: 枠の中の図形を選択（右から左は一部を含むものも）
右クリック: 図形・行・画層のメニュー
矢印: 画面移動
+ / - / Page Up / Page Down: 拡大・縮小
F / Home: 全体表示
Tab / Shift+Tab / N / P: 表示範囲の次・前の図形を選択
Enter: 選択した図形のプロパティへ
Ctrl+A: 表示中の図形をすべて選択
Esc: 選択を解除
計測
Enter / ダブルクリック: 計測を終わる
Backspace: 最後の点を取り消す
Esc: 消去（もう一度で計測を終了）
断面図
← / →: 移動
+ / -: 拡大・縮小
F / Home: 全体表示
N / P / Page Down / Page Up: 次・前の点または断面
パネル
ログの行でEnter: その行の図形とSIMAファイルの行を表示
検索で ↑ / ↓ / Enter: 見つかったものを選んで表示
コマンド行で ↑ / ↓ / Tab: 入力履歴と補完
画層で F2 / Delete: 画層名の変更・空の画層の削除
表で Ctrl+C: 表計算用にコピー</translation>
    </message>
    <message>
        <source>Alignments</source>
        <comment>SitesPanel</comment>
        <translation>線形</translation>
    </message>
    <message>
        <source>Layers</source>
        <comment>LayersPanel</comment>
        <translation>画層</translation>
    </message>
    <message>
        <source>Properties</source>
        <comment>PropertiesPanel</comment>
        <translation>プロパティ</translation>
    </message>
    <message>
        <source>Command</source>
        <comment>CommandPanel</comment>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Import Log</source>
        <comment>LogPanel</comment>
        <translation>読み込みログ</translation>
    </message>
    <message>
        <source>Untitled</source>
        <comment>Untitled</comment>
        <translation>無題</translation>
    </message>
    <message>
        <source>Command:</source>
        <comment>CommandPrompt</comment>
        <translation>コマンド:</translation>
    </message>
    <message>
        <source>Type Fenmark and press Enter</source>
        <comment>CommandHint</comment>
        <translation>Fenmark と入力してEnter</translation>
    </message>
    <message>
        <source>Name</source>
        <comment>ColumnName</comment>
        <translation>名称</translation>
    </message>
    <message>
        <source>Length</source>
        <comment>ColumnLength</comment>
        <translation>延長</translation>
    </message>
    <message>
        <source>Radius/A</source>
        <comment>ColumnRadius</comment>
        <translation>半径/A</translation>
    </message>
    <message>
        <source>Station</source>
        <comment>ColumnStation</comment>
        <translation>追加距離</translation>
    </message>
    <message>
        <source>Property</source>
        <comment>ColumnProperty</comment>
        <translation>項目</translation>
    </message>
    <message>
        <source>Value</source>
        <comment>ColumnValue</comment>
        <translation>値</translation>
    </message>
    <message>
        <source>Site</source>
        <comment>Site</comment>
        <translation>サイト</translation>
    </message>
    <message>
        <source>Alignment</source>
        <comment>Alignment</comment>
        <translation>線形</translation>
    </message>
    <message>
        <source>Straight</source>
        <comment>Straight</comment>
        <translation>直線</translation>
    </message>
    <message>
        <source>Arc</source>
        <comment>Arc</comment>
        <translation>円弧</translation>
    </message>
    <message>
        <source>Clothoid</source>
        <comment>Clothoid</comment>
        <translation>クロソイド</translation>
    </message>
    <message>
        <source>Point</source>
        <comment>Point</comment>
        <translation>点</translation>
    </message>
    <message>
        <source>Polyline</source>
        <comment>Polyline</comment>
        <translation>ポリライン</translation>
    </message>
    <message>
        <source>Closed Polyline</source>
        <comment>ClosedPolyline</comment>
        <translation>閉じたポリライン</translation>
    </message>
    <message>
        <source>Object ID</source>
        <comment>Identifier</comment>
        <translation>図形番号</translation>
    </message>
    <message>
        <source>Layer</source>
        <comment>Layer</comment>
        <translation>画層</translation>
    </message>
    <message>
        <source>X (north)</source>
        <comment>CoordinateX</comment>
        <translation>X (北)</translation>
    </message>
    <message>
        <source>Y (east)</source>
        <comment>CoordinateY</comment>
        <translation>Y (東)</translation>
    </message>
    <message>
        <source>Height</source>
        <comment>Height</comment>
        <translation>標高</translation>
    </message>
    <message>
        <source>Vertices</source>
        <comment>Vertices</comment>
        <translation>頂点数</translation>
    </message>
    <message>
        <source>Length</source>
        <comment>Length</comment>
        <translation>延長</translation>
    </message>
    <message>
        <source>Perimeter</source>
        <comment>Perimeter</comment>
        <translation>周長</translation>
    </message>
    <message>
        <source>Area</source>
        <comment>Area</comment>
        <translation>面積</translation>
    </message>
    <message>
        <source>Object Data</source>
        <comment>Table</comment>
        <translation>オブジェクトデータ</translation>
    </message>
    <message>
        <source>No</source>
        <comment>RowNo</comment>
        <translation>No</translation>
    </message>
    <message>
        <source>Name</source>
        <comment>RowName</comment>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>RowType</comment>
        <translation>Type</translation>
    </message>
    <message>
        <source>FileName</source>
        <comment>RowFile</comment>
        <translation>FileName</translation>
    </message>
    <message>
        <source>(none)</source>
        <comment>NoRow</comment>
        <translation>(なし)</translation>
    </message>
    <message>
        <source>Description</source>
        <comment>Description</comment>
        <translation>説明</translation>
    </message>
    <message>
        <source>Start Station</source>
        <comment>StartStation</comment>
        <translation>始点追加距離</translation>
    </message>
    <message>
        <source>End Station</source>
        <comment>EndStation</comment>
        <translation>終点追加距離</translation>
    </message>
    <message>
        <source>Elements</source>
        <comment>Elements</comment>
        <translation>要素数</translation>
    </message>
    <message>
        <source>Element</source>
        <comment>Element</comment>
        <translation>要素</translation>
    </message>
    <message>
        <source>Radius</source>
        <comment>Radius</comment>
        <translation>半径</translation>
    </message>
    <message>
        <source>Start Radius</source>
        <comment>StartRadius</comment>
        <translation>始点半径</translation>
    </message>
    <message>
        <source>End Radius</source>
        <comment>EndRadius</comment>
        <translation>終点半径</translation>
    </message>
    <message>
        <source>∞</source>
        <comment>Infinite</comment>
        <translation>∞</translation>
    </message>
    <message>
        <source>Parameter A</source>
        <comment>Parameter</comment>
        <translation>パラメータ A</translation>
    </message>
    <message>
        <source>Turns</source>
        <comment>Turns</comment>
        <translation>曲がり</translation>
    </message>
    <message>
        <source>Left</source>
        <comment>Left</comment>
        <translation>左</translation>
    </message>
    <message>
        <source>Right</source>
        <comment>Right</comment>
        <translation>右</translation>
    </message>
    <message>
        <source>Start</source>
        <comment>StartPoint</comment>
        <translation>始点</translation>
    </message>
    <message>
        <source>End</source>
        <comment>EndPoint</comment>
        <translation>終点</translation>
    </message>
    <message>
        <source>Centre</source>
        <comment>Centre</comment>
        <translation>中心</translation>
    </message>
    <message>
        <source>PI</source>
        <comment>PointOfIntersection</comment>
        <translation>交点 (IP)</translation>
    </message>
    <message>
        <source>Start Azimuth</source>
        <comment>StartDirection</comment>
        <translation>始点方向角</translation>
    </message>
    <message>
        <source>Drawing</source>
        <comment>Drawing</comment>
        <translation>図面</translation>
    </message>
    <message>
        <source>Points</source>
        <comment>Points</comment>
        <translation>点の数</translation>
    </message>
    <message>
        <source>Polylines</source>
        <comment>Polylines</comment>
        <translation>ポリライン数</translation>
    </message>
    <message>
        <source>Alignments</source>
        <comment>Alignments</comment>
        <translation>線形数</translation>
    </message>
    <message>
        <source>Layers</source>
        <comment>Layers</comment>
        <translation>画層数</translation>
    </message>
    <message>
        <source>Sites</source>
        <comment>Sites</comment>
        <translation>サイト数</translation>
    </message>
    <message>
        <source>Zone</source>
        <comment>ZoneShort</comment>
        <translation>座標系</translation>
    </message>
    <message>
        <source>Extent X (north)</source>
        <comment>ExtentNorth</comment>
        <translation>範囲 X (北)</translation>
    </message>
    <message>
        <source>Extent Y (east)</source>
        <comment>ExtentEast</comment>
        <translation>範囲 Y (東)</translation>
    </message>
    <message>
        <source>Drag a SIMA file (.sim) or
a drawing (.gpkg) here</source>
        <comment>DropHint</comment>
        <translation>SIMAファイル (.sim) または図面 (.gpkg) を
ここへドラッグしてください</translation>
    </message>
    <message>
        <source>Ctrl+I: import a SIMA file   Ctrl+O: open a drawing</source>
        <comment>DropHintKeys</comment>
        <translation>Ctrl+I: SIMAファイル読み込み   Ctrl+O: 図面を開く</translation>
    </message>
    <message>
        <source>Save the changes to “%1”?</source>
        <comment>SaveChanges</comment>
        <translation>「%1」への変更を保存しますか?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <comment>SaveButton</comment>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Do Not Save</source>
        <comment>DiscardButton</comment>
        <translation>保存しない(&amp;D)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <comment>CancelButton</comment>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>OK</source>
        <comment>OkButton</comment>
        <translation>OK</translation>
    </message>
    <message>
        <source>Open Drawing</source>
        <comment>OpenTitle</comment>
        <translation>図面を開く</translation>
    </message>
    <message>
        <source>Save Drawing</source>
        <comment>SaveTitle</comment>
        <translation>図面の保存</translation>
    </message>
    <message>
        <source>Export Drawing</source>
        <comment>ExportTitle</comment>
        <translation>図面の書き出し</translation>
    </message>
    <message>
        <source>Drawings (*.gpkg)</source>
        <comment>DrawingFilter</comment>
        <translation>図面 (*.gpkg)</translation>
    </message>
    <message>
        <source>%1: the extension must be one of %2</source>
        <comment>UnknownExport</comment>
        <translation>%1: 拡張子は %2 のいずれかにしてください</translation>
    </message>
    <message>
        <source>%1: longitude and latitude need the plane rectangular zone; choose it in the menu Settings</source>
        <comment>ExportNeedsZone</comment>
        <translation>%1: 経緯度で書き出すには平面直角座標系の系番号が必要です。［設定］メニューで系を選んでください</translation>
    </message>
    <message>
        <source>%1 was imported into this drawing and is not overwritten; choose another name</source>
        <comment>TargetIsSource</comment>
        <translation>%1: 図面に読み込んだファイルです。上書きしません。別の名前を指定してください</translation>
    </message>
    <message>
        <source>%1 is the log of an import and is not overwritten; choose another name</source>
        <comment>TargetIsLog</comment>
        <translation>%1: 読み込みのログです。上書きしません。別の名前を指定してください</translation>
    </message>
    <message>
        <source>Exported to %1</source>
        <comment>Exported</comment>
        <translation>%1 に書き出しました</translation>
    </message>
    <message>
        <source>Opened %1</source>
        <comment>Opened</comment>
        <translation>%1 を開きました</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <comment>Saved</comment>
        <translation>%1 に保存しました</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <comment>Undone</comment>
        <translation>元に戻しました: %1</translation>
    </message>
    <message>
        <source>Added %1 entities and %2 alignments</source>
        <comment>Added</comment>
        <translation>図形%1個、線形%2本を追加しました</translation>
    </message>
    <message>
        <source>Nothing to undo</source>
        <comment>NothingToUndo</comment>
        <translation>元に戻す操作がありません</translation>
    </message>
    <message>
        <source>Import</source>
        <comment>StepImport</comment>
        <translation>読み込み</translation>
    </message>
    <message>
        <source>Add Layer</source>
        <comment>StepLayer</comment>
        <translation>画層の追加</translation>
    </message>
    <message>
        <source>Change of Zone</source>
        <comment>StepZone</comment>
        <translation>座標系の変更</translation>
    </message>
    <message>
        <source>Layer name:</source>
        <comment>LayerName</comment>
        <translation>画層名:</translation>
    </message>
    <message>
        <source>There is a layer named “%1” already</source>
        <comment>LayerTaken</comment>
        <translation>画層「%1」は既にあります</translation>
    </message>
    <message>
        <source>No log</source>
        <comment>NoLog</comment>
        <translation>ログはありません</translation>
    </message>
    <message>
        <source>(cut here; all of it is in %1)</source>
        <comment>LogTooLong</comment>
        <translation>(以下省略: 全文は %1)</translation>
    </message>
    <message>
        <source>%1: no such command</source>
        <comment>CommandUnknown</comment>
        <translation>%1: コマンドがありません</translation>
    </message>
    <message>
        <source>A command is running</source>
        <comment>CommandRunning</comment>
        <translation>コマンドの実行中です</translation>
    </message>
    <message>
        <source>Commands: %1</source>
        <comment>CommandHelp</comment>
        <translation>使えるコマンド: %1</translation>
    </message>
    <message>
        <source>The module cannot be loaded: %1</source>
        <comment>CannotLoadModule</comment>
        <translation>モジュールを読み込めません: %1</translation>
    </message>
    <message>
        <source>%1: neither a .sim nor a .gpkg file</source>
        <comment>UnknownFile</comment>
        <translation>%1: .sim または .gpkg のファイルではありません</translation>
    </message>
    <message>
        <source>X %1   Y %2</source>
        <comment>StatusPosition</comment>
        <translation>X %1   Y %2</translation>
    </message>
    <message>
        <source>%1  %2 (%3)  %4</source>
        <comment>StatusStation</comment>
        <translation>%1  %2 (%3)  %4</translation>
    </message>
    <message>
        <source>left %1</source>
        <comment>OffsetLeft</comment>
        <translation>左 %1</translation>
    </message>
    <message>
        <source>right %1</source>
        <comment>OffsetRight</comment>
        <translation>右 %1</translation>
    </message>
    <message>
        <source>%1 points  %2 polylines  %3 alignments</source>
        <comment>StatusCounts</comment>
        <translation>点 %1  ポリライン %2  線形 %3</translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>PlanName</comment>
        <translation>平面図</translation>
    </message>
    <message>
        <source>Fit</source>
        <comment>FitShort</comment>
        <translation>全体表示</translation>
    </message>
    <message>
        <source>Window</source>
        <comment>WindowShort</comment>
        <translation>窓ズーム</translation>
    </message>
    <message>
        <source>Import</source>
        <comment>ImportShort</comment>
        <translation>読み込み</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <comment>Toolbar</comment>
        <translation>ツールバー</translation>
    </message>
    <message>
        <source>Show All La&amp;yers</source>
        <comment>ShowAll</comment>
        <translation>画層をすべて表示</translation>
    </message>
    <message>
        <source>&amp;Hide All Layers</source>
        <comment>HideAll</comment>
        <translation>画層をすべて隠す</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <comment>Redo</comment>
        <translation>やり直し(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <comment>RedoStep</comment>
        <translation>やり直し(&amp;R): %1</translation>
    </message>
    <message>
        <source>Redone: %1</source>
        <comment>Redone</comment>
        <translation>やり直しました: %1</translation>
    </message>
    <message>
        <source>Nothing to redo</source>
        <comment>NothingToRedo</comment>
        <translation>やり直す操作がありません</translation>
    </message>
    <message>
        <source>Legend</source>
        <comment>LegendPanel</comment>
        <translation>凡例</translation>
    </message>
    <message>
        <source>Line of the SIMA File</source>
        <comment>SourcePanel</comment>
        <translation>SIMAファイルの行</translation>
    </message>
    <message>
        <source>The SIMA file with line %1 cannot be found</source>
        <comment>SourceMissing</comment>
        <translation>%1行目のSIMAファイルが見つかりません</translation>
    </message>
    <message>
        <source>Coordinate point</source>
        <comment>KindCoordinate</comment>
        <translation>座標点</translation>
    </message>
    <message>
        <source>Longitudinal result</source>
        <comment>KindLongitudinal</comment>
        <translation>縦断成果の点</translation>
    </message>
    <message>
        <source>Cross-section result</source>
        <comment>KindCrossSection</comment>
        <translation>横断成果の点</translation>
    </message>
    <message>
        <source>Other point</source>
        <comment>KindOtherPoint</comment>
        <translation>その他の点</translation>
    </message>
    <message>
        <source>Lot</source>
        <comment>KindLot</comment>
        <translation>画地</translation>
    </message>
    <message>
        <source>IP line</source>
        <comment>KindIpLine</comment>
        <translation>IP線</translation>
    </message>
    <message>
        <source>Width-stake line</source>
        <comment>KindStakes</comment>
        <translation>幅杭線</translation>
    </message>
    <message>
        <source>Continuous line</source>
        <comment>KindContinuous</comment>
        <translation>連続線</translation>
    </message>
    <message>
        <source>Other line</source>
        <comment>KindOtherLine</comment>
        <translation>その他の線</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>KindCount</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Show &amp;Only This Layer</source>
        <comment>ShowOnlyLayer</comment>
        <translation>この画層だけ表示(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Hide This Layer</source>
        <comment>HideThisLayer</comment>
        <translation>この画層を隠す(&amp;H)</translation>
    </message>
    <message>
        <source>Show Only This &amp;Kind</source>
        <comment>ShowOnlyKind</comment>
        <translation>この種類だけ表示(&amp;K)</translation>
    </message>
    <message>
        <source>Show &amp;All Kinds</source>
        <comment>ShowAllKinds</comment>
        <translation>すべての種類を表示(&amp;A)</translation>
    </message>
    <message>
        <source>Select &amp;All of This Kind</source>
        <comment>SelectKind</comment>
        <translation>同じ種類をすべて選択(&amp;A)</translation>
    </message>
    <message>
        <source>Select &amp;All Shown</source>
        <comment>SelectAll</comment>
        <translation>表示中の図形をすべて選択(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <comment>CopyRow</comment>
        <translation>コピー(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Properties</source>
        <comment>ShowProperties</comment>
        <translation>プロパティ(&amp;P)</translation>
    </message>
    <message>
        <source>%1 objects selected</source>
        <comment>SeveralSelected</comment>
        <translation>%1個の図形を選択</translation>
    </message>
    <message>
        <source>Selected Objects</source>
        <comment>TablePanel</comment>
        <translation>選択図形の一覧</translation>
    </message>
    <message>
        <source>Filter</source>
        <comment>TableFilter</comment>
        <translation>絞り込み</translation>
    </message>
    <message>
        <source>%1 rows</source>
        <comment>TableCount</comment>
        <translation>%1件</translation>
    </message>
    <message>
        <source>Kind</source>
        <comment>ColumnKind</comment>
        <translation>種類</translation>
    </message>
    <message>
        <source>No</source>
        <comment>ColumnNo</comment>
        <translation>番号</translation>
    </message>
    <message>
        <source>X</source>
        <comment>ColumnX</comment>
        <translation>X座標</translation>
    </message>
    <message>
        <source>Y</source>
        <comment>ColumnY</comment>
        <translation>Y座標</translation>
    </message>
    <message>
        <source>Height</source>
        <comment>ColumnHeight</comment>
        <translation>標高</translation>
    </message>
    <message>
        <source>Length or Area</source>
        <comment>ColumnSize</comment>
        <translation>延長・面積</translation>
    </message>
    <message>
        <source>Layer</source>
        <comment>ColumnLayer</comment>
        <translation>画層</translation>
    </message>
    <message>
        <source>File</source>
        <comment>ColumnFile</comment>
        <translation>ファイル</translation>
    </message>
    <message>
        <source>%1 names left out for want of room</source>
        <comment>NamesLeftOut</comment>
        <translation>重なるため省略した名称: %1</translation>
    </message>
    <message>
        <source>%1 objects have coordinates that cannot be shown, and are not in the plan</source>
        <comment>NotPlaced</comment>
        <translation>%1個の図形は座標が表示できない値のため、図に現れません</translation>
    </message>
    <message>
        <source>A drawing was left unsaved when the program ended last time (%1, %2).</source>
        <comment>RecoverQuestion</comment>
        <translation>前回、保存されずに終わった図面があります（%1、%2）。</translation>
    </message>
    <message>
        <source>Recover opens it as a drawing without a name.</source>
        <comment>RecoverInfo</comment>
        <translation>復元すると名称のない図面として開きます。</translation>
    </message>
    <message>
        <source>&amp;Recover</source>
        <comment>RecoverButton</comment>
        <translation>復元する(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <comment>RecoverLater</comment>
        <translation>後で(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <comment>RecoverDiscard</comment>
        <translation>破棄する(&amp;D)</translation>
    </message>
    <message>
        <source>Recovered the unsaved contents of %1</source>
        <comment>Recovered</comment>
        <translation>%1 の未保存の内容を復元しました</translation>
    </message>
    <message>
        <source>A drawing was left unsaved in %1. Whether its program is still running is not known, as %2 is no lock file; once that is removed, the drawing is offered.</source>
        <comment>RecoverLockOdd</comment>
        <translation>保存されずに終わった図面が %1 にあります。%2 がロックファイルではないため、使用中かどうか分かりません。それを削除すると、復元できるようになります。</translation>
    </message>
    <message>
        <source>Tab goes to the next object, Enter to its properties, F6 to the next pane</source>
        <comment>PlanDescription</comment>
        <translation>Tabで次の図形、Enterでプロパティ、F6で次のパネルへ</translation>
    </message>
    <message>
        <source>Beginning of the File</source>
        <comment>PreviewPanel</comment>
        <translation>ファイルの先頭</translation>
    </message>
    <message>
        <source>Encoding: %1</source>
        <comment>PreviewReadIn</comment>
        <translation>文字コード: %1</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <comment>PreviewUnreadable</comment>
        <translation>ファイルを読めません。</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <comment>PreviewEmpty</comment>
        <translation>ファイルは空です。</translation>
    </message>
    <message>
        <source>The first %1 lines hold no SIMA record (A00, D00, F00, H00, I00).</source>
        <comment>PreviewNoRecords</comment>
        <translation>先頭の%1行にSIMAのレコード（A00、D00、F00、H00、I00）がありません。</translation>
    </message>
    <message>
        <source>%1 has been imported into this drawing before, last at %2.</source>
        <comment>AgainQuestion</comment>
        <translation>%1 は、この図面に既に読み込まれています（最後は %2）。</translation>
    </message>
    <message>
        <source>Replace removes the objects of the earlier import, which cannot be undone.</source>
        <comment>AgainInfo</comment>
        <translation>「置き換える」は前に読み込んだ図形を削除します。その操作は元に戻せません。</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <comment>ReplaceButton</comment>
        <translation>置き換える(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <comment>AddButton</comment>
        <translation>追加する(&amp;A)</translation>
    </message>
    <message>
        <source>Removed the objects of the earlier import of %1</source>
        <comment>Replaced</comment>
        <translation>前に読み込んだ %1 の図形を削除しました</translation>
    </message>
    <message>
        <source>Lines passed over: %1 (%2)</source>
        <comment>PassedOver</comment>
        <translation>%1行を読み飛ばしました: %2</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <comment>DoubtfulRecord</comment>
        <translation>%1行目: %2</translation>
    </message>
    <message>
        <source>Line %1: %2; %3 more</source>
        <comment>DoubtfulRecords</comment>
        <translation>%1行目: %2。ほかに%3件</translation>
    </message>
    <message>
        <source>%1   %2   %3 errors</source>
        <comment>ImportRow</comment>
        <translation>%1　%2　エラー%3個</translation>
    </message>
    <message>
        <source>Imports</source>
        <comment>ImportsBox</comment>
        <translation>読み込みの履歴</translation>
    </message>
    <message>
        <source>%1 has changed since it was imported; lines and objects may not meet</source>
        <comment>FileChanged</comment>
        <translation>%1 は読み込み後に変更されています。行と図形が合わないことがあります</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <comment>Find</comment>
        <translation>検索(&amp;F)...</translation>
    </message>
    <message>
        <source>Find</source>
        <comment>FindPanel</comment>
        <translation>検索</translation>
    </message>
    <message>
        <source>Name or number of a point, lot or alignment</source>
        <comment>FindHint</comment>
        <translation>点・画地・線形の名称または番号</translation>
    </message>
    <message>
        <source>%1 found</source>
        <comment>FindCount</comment>
        <translation>%1件</translation>
    </message>
    <message>
        <source>%1 found, %2 shown</source>
        <comment>FindCountCut</comment>
        <translation>%1件中 %2件を表示</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <comment>FindNothing</comment>
        <translation>見つかりません</translation>
    </message>
    <message>
        <source>&amp;Next Error</source>
        <comment>NextError</comment>
        <translation>次のエラー(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Previous Error</source>
        <comment>PreviousError</comment>
        <translation>前のエラー(&amp;P)</translation>
    </message>
    <message>
        <source>No further error</source>
        <comment>NoMoreErrors</comment>
        <translation>この先にエラーはありません</translation>
    </message>
    <message>
        <source>The import lies partly out of view: fit all</source>
        <comment>NewOutOfView</comment>
        <translation>読み込んだ図形は画面の外にもあります。全体を表示</translation>
    </message>
    <message>
        <source>The import was broken off.</source>
        <comment>BrokenOff</comment>
        <translation>読み込みが途中で終わりました。</translation>
    </message>
    <message>
        <source>What was made until then, %1 objects, is in the drawing.</source>
        <comment>BrokenOffKept</comment>
        <translation>そこまでに作成した %1 個の図形は図面に残っています。</translation>
    </message>
    <message>
        <source>No object was made.</source>
        <comment>BrokenOffNothing</comment>
        <translation>図形は作成されていません。</translation>
    </message>
    <message>
        <source>Keep</source>
        <comment>KeepButton</comment>
        <translation>残す</translation>
    </message>
    <message>
        <source>Take Back</source>
        <comment>TakeBackButton</comment>
        <translation>取り消す</translation>
    </message>
    <message>
        <source>&amp;Encoding of SIMA Files</source>
        <comment>EncodingMenu</comment>
        <translation>SIMAファイルの文字コード(&amp;E)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>EncodingAuto</comment>
        <translation>自動判別</translation>
    </message>
    <message>
        <source>Code Page 932 (Shift_JIS)</source>
        <comment>EncodingCp932</comment>
        <translation>シフトJIS (コードページ932)</translation>
    </message>
    <message>
        <source>UTF-8</source>
        <comment>EncodingUtf8</comment>
        <translation>UTF-8</translation>
    </message>
    <message>
        <source>The file was read in %1</source>
        <comment>ReadIn</comment>
        <translation>文字コードを %1 として読み込みました</translation>
    </message>
    <message>
        <source>Tangents of &amp;Clothoids in Plan</source>
        <comment>PlanTangents</comment>
        <translation>クロソイドの接線交点を平面で求める(&amp;C)</translation>
    </message>
    <message>
        <source>importing again with Positive Radius set to Automatic may mend it</source>
        <comment>TryRadiusAuto</comment>
        <translation>設定の「正の半径の向き」を「自動」にして読み込み直すと直ることがあります</translation>
    </message>
    <message>
        <source>importing again with Positive Radius set to Turns Left may mend it</source>
        <comment>TryRadiusLeft</comment>
        <translation>設定の「正の半径の向き」を「左曲がり」にして読み込み直すと直ることがあります</translation>
    </message>
    <message>
        <source>importing again with Positive Radius set to Turns Right may mend it</source>
        <comment>TryRadiusRight</comment>
        <translation>設定の「正の半径の向き」を「右曲がり」にして読み込み直すと直ることがあります</translation>
    </message>
    <message>
        <source>importing again with Tangents of Clothoids in Plan may mend it</source>
        <comment>TryPlanTangents</comment>
        <translation>設定の「クロソイドの接線交点を平面で求める」を選んで読み込み直すと直ることがあります</translation>
    </message>
    <message>
        <source>&amp;Measure</source>
        <comment>MeasureMenu</comment>
        <translation>計測(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Distance and Bearing</source>
        <comment>MeasureDistance</comment>
        <translation>距離・方向角(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Area and Perimeter</source>
        <comment>MeasureArea</comment>
        <translation>面積・周長(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Radius and Station</source>
        <comment>MeasurePlace</comment>
        <translation>半径・追加距離(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;End Measuring</source>
        <comment>MeasureEnd</comment>
        <translation>計測を終了(&amp;E)</translation>
    </message>
    <message>
        <source>Distance</source>
        <comment>MeasureShort</comment>
        <translation>距離</translation>
    </message>
    <message>
        <source>Area</source>
        <comment>MeasureAreaShort</comment>
        <translation>面積</translation>
    </message>
    <message>
        <source>Station</source>
        <comment>MeasurePlaceShort</comment>
        <translation>追加距離</translation>
    </message>
    <message>
        <source>Measurement</source>
        <comment>MeasurePanel</comment>
        <translation>計測</translation>
    </message>
    <message>
        <source>Click places in the plan. Enter: finish  Backspace: one back  Esc: clear</source>
        <comment>MeasureHint</comment>
        <translation>平面図の点をクリックしてください。Enter: 終わる  BackSpace: 一点戻す  Esc: 消去</translation>
    </message>
    <message>
        <source>Point</source>
        <comment>MeasurePointName</comment>
        <translation>点名</translation>
    </message>
    <message>
        <source>Side</source>
        <comment>MeasureSide</comment>
        <translation>辺長</translation>
    </message>
    <message>
        <source>Azimuth</source>
        <comment>MeasureAzimuth</comment>
        <translation>方向角</translation>
    </message>
    <message>
        <source>Bearing</source>
        <comment>MeasureBearing</comment>
        <translation>象限角</translation>
    </message>
    <message>
        <source>Included Angle</source>
        <comment>MeasureIncluded</comment>
        <translation>夾角</translation>
    </message>
    <message>
        <source>ΔX, ΔY</source>
        <comment>MeasureDifference</comment>
        <translation>ΔX, ΔY</translation>
    </message>
    <message>
        <source>Cumulative</source>
        <comment>MeasureAlong</comment>
        <translation>累加距離</translation>
    </message>
    <message>
        <source>First to Last</source>
        <comment>MeasureDirect</comment>
        <translation>始点から終点</translation>
    </message>
    <message>
        <source>The sides cross: this is no area</source>
        <comment>MeasureCrossed</comment>
        <translation>辺が交差しています。面積は求められません</translation>
    </message>
    <message>
        <source>Stake</source>
        <comment>MeasureStake</comment>
        <translation>測点</translation>
    </message>
    <message>
        <source>Offset</source>
        <comment>MeasureOffset</comment>
        <translation>幅</translation>
    </message>
    <message>
        <source>Tangent Azimuth</source>
        <comment>MeasureTangent</comment>
        <translation>接線方向角</translation>
    </message>
    <message>
        <source>(no alignment)</source>
        <comment>MeasureNoAlignment</comment>
        <translation>(線形なし)</translation>
    </message>
    <message>
        <source>&amp;Snap</source>
        <comment>SnapMenu</comment>
        <translation>吸着(&amp;S)</translation>
    </message>
    <message>
        <source>Point</source>
        <comment>SnapPoint</comment>
        <translation>点</translation>
    </message>
    <message>
        <source>End</source>
        <comment>SnapEnd</comment>
        <translation>端点</translation>
    </message>
    <message>
        <source>Vertex</source>
        <comment>SnapVertex</comment>
        <translation>頂点</translation>
    </message>
    <message>
        <source>Crossing</source>
        <comment>SnapCrossing</comment>
        <translation>交点</translation>
    </message>
    <message>
        <source>Foot</source>
        <comment>SnapFoot</comment>
        <translation>垂線の足</translation>
    </message>
    <message>
        <source>On Line</source>
        <comment>SnapOnLine</comment>
        <translation>線上</translation>
    </message>
    <message>
        <source>&amp;Copy Table</source>
        <comment>CopyTable</comment>
        <translation>表をコピー(&amp;C)</translation>
    </message>
    <message>
        <source>Area Table</source>
        <comment>LotPanel</comment>
        <translation>求積表</translation>
    </message>
    <message>
        <source>Select a lot to see its area table</source>
        <comment>LotHint</comment>
        <translation>画地を選択すると座標求積表を表示します</translation>
    </message>
    <message>
        <source>Se&amp;ctions</source>
        <comment>SectionMenu</comment>
        <translation>縦横断(&amp;C)</translation>
    </message>
    <message>
        <source>Longitudinal Section</source>
        <comment>ProfilePanel</comment>
        <translation>縦断図</translation>
    </message>
    <message>
        <source>Cross-Sections</source>
        <comment>CrossPanel</comment>
        <translation>横断図</translation>
    </message>
    <message>
        <source>Height Scale</source>
        <comment>Exaggeration</comment>
        <translation>高さの倍率</translation>
    </message>
    <message>
        <source>Fit</source>
        <comment>ExaggerationFit</comment>
        <translation>自動</translation>
    </message>
    <message>
        <source>×%1</source>
        <comment>ExaggerationTimes</comment>
        <translation>%1倍</translation>
    </message>
    <message>
        <source>Print...</source>
        <comment>PrintShort</comment>
        <translation>印刷...</translation>
    </message>
    <message>
        <source>Previous Section</source>
        <comment>PreviousSection</comment>
        <translation>前の断面</translation>
    </message>
    <message>
        <source>Next Section</source>
        <comment>NextSection</comment>
        <translation>次の断面</translation>
    </message>
    <message>
        <source>This alignment has no longitudinal results</source>
        <comment>NoProfile</comment>
        <translation>この線形には縦断成果がありません</translation>
    </message>
    <message>
        <source>This alignment has no cross-sections</source>
        <comment>NoSections</comment>
        <translation>この線形には横断成果がありません</translation>
    </message>
    <message>
        <source>Select an alignment, or a point of its sections</source>
        <comment>ChooseAlignment</comment>
        <translation>線形または縦横断成果の点を選択してください</translation>
    </message>
    <message>
        <source>Ground</source>
        <comment>Ground</comment>
        <translation>地盤高</translation>
    </message>
    <message>
        <source>Design</source>
        <comment>Planned</comment>
        <translation>計画高</translation>
    </message>
    <message>
        <source>Station</source>
        <comment>Distance</comment>
        <translation>追加距離</translation>
    </message>
    <message>
        <source>Stake</source>
        <comment>Stake</comment>
        <translation>測点</translation>
    </message>
    <message>
        <source>Curves</source>
        <comment>Curve</comment>
        <translation>曲線</translation>
    </message>
    <message>
        <source>Centre height %1</source>
        <comment>CentreHeight</comment>
        <translation>中心高 %1</translation>
    </message>
    <message>
        <source>%1  station %2  ground %3</source>
        <comment>PointedProfile</comment>
        <translation>%1  追加距離 %2  地盤高 %3</translation>
    </message>
    <message>
        <source>offset %1  height %2</source>
        <comment>PointedSection</comment>
        <translation>幅 %1  標高 %2</translation>
    </message>
    <message>
        <source>&amp;Print and PDF...</source>
        <comment>PaperMenu</comment>
        <translation>印刷・PDF(&amp;P)...</translation>
    </message>
    <message>
        <source>Print and PDF</source>
        <comment>PaperTitle</comment>
        <translation>印刷・PDF</translation>
    </message>
    <message>
        <source>Kind</source>
        <comment>PaperKind</comment>
        <translation>種類</translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>PaperPlan</comment>
        <translation>平面図</translation>
    </message>
    <message>
        <source>Plan in sheets along an alignment</source>
        <comment>PaperAlong</comment>
        <translation>平面図（線形に沿った割付）</translation>
    </message>
    <message>
        <source>Longitudinal section</source>
        <comment>PaperProfile</comment>
        <translation>縦断図</translation>
    </message>
    <message>
        <source>Cross-sections</source>
        <comment>PaperCross</comment>
        <translation>横断図</translation>
    </message>
    <message>
        <source>Area tables of lots</source>
        <comment>PaperLots</comment>
        <translation>座標求積表</translation>
    </message>
    <message>
        <source>Stake list</source>
        <comment>PaperStakes</comment>
        <translation>測設（杭打ち）座標一覧</translation>
    </message>
    <message>
        <source>Coordinate list</source>
        <comment>PaperPoints</comment>
        <translation>座標一覧</translation>
    </message>
    <message>
        <source>Tables of alignments</source>
        <comment>PaperAlignments</comment>
        <translation>線形計算書</translation>
    </message>
    <message>
        <source>Alignment</source>
        <comment>PaperOf</comment>
        <translation>線形</translation>
    </message>
    <message>
        <source>Paper</source>
        <comment>PaperSize</comment>
        <translation>用紙</translation>
    </message>
    <message>
        <source>Orientation</source>
        <comment>PaperOrientation</comment>
        <translation>向き</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>OrientationAuto</comment>
        <translation>自動</translation>
    </message>
    <message>
        <source>Landscape</source>
        <comment>OrientationWide</comment>
        <translation>横</translation>
    </message>
    <message>
        <source>Portrait</source>
        <comment>OrientationUpright</comment>
        <translation>縦</translation>
    </message>
    <message>
        <source>Scale</source>
        <comment>PaperScale</comment>
        <translation>縮尺</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>ScaleAuto</comment>
        <translation>自動</translation>
    </message>
    <message>
        <source>Extent</source>
        <comment>PaperExtent</comment>
        <translation>範囲</translation>
    </message>
    <message>
        <source>Whole drawing</source>
        <comment>ExtentAll</comment>
        <translation>図面全体</translation>
    </message>
    <message>
        <source>What the view shows</source>
        <comment>ExtentView</comment>
        <translation>画面の範囲</translation>
    </message>
    <message>
        <source>Selected object</source>
        <comment>ExtentSelection</comment>
        <translation>選択した図形</translation>
    </message>
    <message>
        <source>Title block (kept in the drawing)</source>
        <comment>PaperTexts</comment>
        <translation>表題欄（図面に保存）</translation>
    </message>
    <message>
        <source>Title</source>
        <comment>TextHeading</comment>
        <translation>図面名</translation>
    </message>
    <message>
        <source>Project</source>
        <comment>TextProject</comment>
        <translation>業務名</translation>
    </message>
    <message>
        <source>Date</source>
        <comment>TextDate</comment>
        <translation>年月日</translation>
    </message>
    <message>
        <source>Author</source>
        <comment>TextAuthor</comment>
        <translation>作成者</translation>
    </message>
    <message>
        <source>Company</source>
        <comment>TextCompany</comment>
        <translation>会社名</translation>
    </message>
    <message>
        <source>Sheet</source>
        <comment>TextSheet</comment>
        <translation>図面番号</translation>
    </message>
    <message>
        <source>Remark</source>
        <comment>TextRemark</comment>
        <translation>備考</translation>
    </message>
    <message>
        <source>Previous Page</source>
        <comment>PagePrevious</comment>
        <translation>前のページ</translation>
    </message>
    <message>
        <source>Next Page</source>
        <comment>PageNext</comment>
        <translation>次のページ</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <comment>PageOf</comment>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>&amp;Save PDF...</source>
        <comment>PaperSavePdf</comment>
        <translation>PDF保存(&amp;S)...</translation>
    </message>
    <message>
        <source>Save S&amp;VG...</source>
        <comment>PaperSaveSvg</comment>
        <translation>SVG保存(&amp;V)...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <comment>PaperPrint</comment>
        <translation>印刷(&amp;P)...</translation>
    </message>
    <message>
        <source>Close</source>
        <comment>PaperClose</comment>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <comment>PaperSaved</comment>
        <translation>%1 に保存しました</translation>
    </message>
    <message>
        <source>%1: “%2” is no such number</source>
        <comment>PaperNoNumber</comment>
        <translation>%1: 「%2」は正しい数値ではありません</translation>
    </message>
    <message>
        <source>The printer's paper is %1, the sheet is %2. Print it smaller?</source>
        <comment>PaperTooLarge</comment>
        <translation>プリンターの用紙は %1 ですが、図面は %2 です。縮小して印刷しますか?</translation>
    </message>
    <message>
        <source>Stakes every (m)</source>
        <comment>StakePitch</comment>
        <translation>杭の間隔 (m)</translation>
    </message>
    <message>
        <source>Offsets (m)</source>
        <comment>StakeOffsets</comment>
        <translation>幅 (m)</translation>
    </message>
    <message>
        <source>&amp;Background</source>
        <comment>BackgroundMenu</comment>
        <translation>背景(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Add File...</source>
        <comment>BackgroundAdd</comment>
        <translation>ファイルを追加(&amp;A)...</translation>
    </message>
    <message>
        <source>Add &amp;Folder of Tiles...</source>
        <comment>BackgroundAddFolder</comment>
        <translation>タイルのフォルダーを追加(&amp;F)...</translation>
    </message>
    <message>
        <source>&amp;Remove All</source>
        <comment>BackgroundRemoveAll</comment>
        <translation>すべて外す(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Show Background</source>
        <comment>BackgroundShow</comment>
        <translation>背景を表示(&amp;S)</translation>
    </message>
    <message>
        <source>Strength %1%</source>
        <comment>BackgroundStrength</comment>
        <translation>濃さ %1%</translation>
    </message>
    <message>
        <source>Backgrounds (*.gpkg *.dxf *.geojson *.json *.mbtiles)</source>
        <comment>BackgroundFilter</comment>
        <translation>背景 (*.gpkg *.dxf *.geojson *.json *.mbtiles)</translation>
    </message>
    <message>
        <source>Background: added %1 (%2 points, %3 lines)</source>
        <comment>BackgroundAdded</comment>
        <translation>背景に %1 を追加しました（点 %2、線 %3）</translation>
    </message>
    <message>
        <source>%1: no background (%2)</source>
        <comment>BackgroundFailed</comment>
        <translation>%1: 背景にできません（%2）</translation>
    </message>
    <message>
        <source>the plane rectangular zone is needed; choose it in the menu Settings</source>
        <comment>BackgroundNeedsZone</comment>
        <translation>平面直角座標系の系番号が必要です。［設定］メニューで系を選んでください</translation>
    </message>
    <message>
        <source>A file of the background is missing: %1</source>
        <comment>BackgroundMissing</comment>
        <translation>背景のファイルが見つかりません: %1</translation>
    </message>
    <message>
        <source>Layer &amp;Colour...</source>
        <comment>LayerColour</comment>
        <translation>画層の色(&amp;C)...</translation>
    </message>
    <message>
        <source>Colours by &amp;Kind</source>
        <comment>NoLayerColour</comment>
        <translation>種類ごとの色に戻す(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Rename Layer...</source>
        <comment>RenameLayer</comment>
        <translation>画層名を変更(&amp;R)...</translation>
    </message>
    <message>
        <source>&amp;Delete Empty Layer</source>
        <comment>RemoveLayer</comment>
        <translation>空の画層を削除(&amp;D)</translation>
    </message>
    <message>
        <source>%1 objects</source>
        <comment>LayerObjects</comment>
        <translation>図形 %1 個</translation>
    </message>
    <message>
        <source>“%1” holds %2 objects and cannot be deleted</source>
        <comment>LayerHolds</comment>
        <translation>画層「%1」には図形が %2 個あるため、削除できません</translation>
    </message>
    <message>
        <source>“%1” is kept as it is: new objects come onto it</source>
        <comment>LayerStays</comment>
        <translation>画層「%1」は変更・削除できません（新しい図形が入る画層です）</translation>
    </message>
    <message>
        <source>Rename Layer</source>
        <comment>StepLayerName</comment>
        <translation>画層名の変更</translation>
    </message>
    <message>
        <source>Layer Colour</source>
        <comment>StepLayerColour</comment>
        <translation>画層の色</translation>
    </message>
    <message>
        <source>Delete Layer</source>
        <comment>StepLayerGone</comment>
        <translation>画層の削除</translation>
    </message>
    <message>
        <source>Pre&amp;vious Pane</source>
        <comment>PreviousPane</comment>
        <translation>前のパネルへ(&amp;V)</translation>
    </message>
    <message>
        <source>Command L&amp;ine</source>
        <comment>ToCommandLine</comment>
        <translation>コマンド行へ(&amp;I)</translation>
    </message>
    <message>
        <source>Key</source>
        <comment>ColumnKey</comment>
        <translation>キー</translation>
    </message>
    <message>
        <source>What It Does</source>
        <comment>ColumnAct</comment>
        <translation>はたらき</translation>
    </message>
    <message>
        <source>%1 lines and areas under others are not drawn</source>
        <comment>LinesLeftOut</comment>
        <translation>重なった線・面 %1 個の表示を省略</translation>
    </message>
    <message>
        <source>Unsaved work is not kept for a restart: %1</source>
        <comment>RecoverNotKept</comment>
        <translation>未保存の内容を再起動に備えて控えることができません: %1</translation>
    </message>
</context>
</TS>
