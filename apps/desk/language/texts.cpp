// What the desktop program says, in Japanese and English.
#include "desk/language/texts.h"

#include "desk/language/text_table.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>

#include <array>
#include <cstddef>

// The compiled fenmark_desk_ja.ts, made by the build.
extern const unsigned char fenmarkDeskJapanese[];
extern const std::size_t fenmarkDeskJapaneseSize;

namespace fenmark::desk {

namespace {

using Entry = TextEntry<Text>;

constexpr std::array<Entry, static_cast<std::size_t>(kLastText) + 1> kEntries{{
    Entry{Text::FileMenu, QT_TRANSLATE_NOOP3("desk", "&File", "FileMenu")},
    Entry{Text::EditMenu, QT_TRANSLATE_NOOP3("desk", "&Edit", "EditMenu")},
    Entry{Text::ViewMenu, QT_TRANSLATE_NOOP3("desk", "&View", "ViewMenu")},
    Entry{Text::SettingsMenu, QT_TRANSLATE_NOOP3("desk", "&Settings", "SettingsMenu")},
    Entry{Text::HelpMenu, QT_TRANSLATE_NOOP3("desk", "&Help", "HelpMenu")},
    Entry{Text::New, QT_TRANSLATE_NOOP3("desk", "&New", "New")},
    Entry{Text::Open, QT_TRANSLATE_NOOP3("desk", "&Open...", "Open")},
    Entry{Text::OpenRecent, QT_TRANSLATE_NOOP3("desk", "Open &Recent", "OpenRecent")},
    Entry{Text::ClearRecent, QT_TRANSLATE_NOOP3("desk", "Clear List", "ClearRecent")},
    Entry{Text::Save, QT_TRANSLATE_NOOP3("desk", "&Save", "Save")},
    Entry{Text::SaveAs, QT_TRANSLATE_NOOP3("desk", "Save &As...", "SaveAs")},
    Entry{Text::Export, QT_TRANSLATE_NOOP3("desk", "&Export...", "Export")},
    Entry{Text::Quit, QT_TRANSLATE_NOOP3("desk", "&Quit", "Quit")},
    Entry{Text::Undo, QT_TRANSLATE_NOOP3("desk", "&Undo", "Undo")},
    Entry{Text::UndoStep, QT_TRANSLATE_NOOP3("desk", "&Undo %1", "UndoStep")},
    Entry{Text::ClearSelection, QT_TRANSLATE_NOOP3("desk", "&Deselect", "ClearSelection")},
    Entry{Text::AddLayer, QT_TRANSLATE_NOOP3("desk", "Add &Layer...", "AddLayer")},
    Entry{Text::Import, QT_TRANSLATE_NOOP3("desk", "&Import SIMA File...", "Import")},
    Entry{Text::Fit, QT_TRANSLATE_NOOP3("desk", "&Fit All", "Fit")},
    Entry{Text::FitSelection, QT_TRANSLATE_NOOP3("desk", "Fit &Selection", "FitSelection")},
    Entry{Text::ZoomIn, QT_TRANSLATE_NOOP3("desk", "Zoom &In", "ZoomIn")},
    Entry{Text::ZoomOut, QT_TRANSLATE_NOOP3("desk", "Zoom &Out", "ZoomOut")},
    Entry{Text::ZoomWindow, QT_TRANSLATE_NOOP3("desk", "Zoom &Window", "ZoomWindow")},
    Entry{Text::ShowLabels, QT_TRANSLATE_NOOP3("desk", "&Labels", "ShowLabels")},
    Entry{Text::ShowStations, QT_TRANSLATE_NOOP3("desk", "&Stations", "ShowStations")},
    Entry{Text::ShowGrid, QT_TRANSLATE_NOOP3("desk", "&Grid", "ShowGrid")},
    Entry{Text::NextPane, QT_TRANSLATE_NOOP3("desk", "Next &Pane", "NextPane")},
    Entry{Text::Zone, QT_TRANSLATE_NOOP3("desk", "Plane Rectangular &Zone", "Zone")},
    Entry{Text::NoZone, QT_TRANSLATE_NOOP3("desk", "Not Set", "NoZone")},
    Entry{Text::ZoneNumber, QT_TRANSLATE_NOOP3("desk", "Zone %1", "ZoneNumber")},
    Entry{Text::PositiveRadius, QT_TRANSLATE_NOOP3("desk", "Positive &Radius", "PositiveRadius")},
    Entry{Text::RadiusAuto, QT_TRANSLATE_NOOP3("desk", "Automatic", "RadiusAuto")},
    Entry{Text::RadiusLeft, QT_TRANSLATE_NOOP3("desk", "Turns Left", "RadiusLeft")},
    Entry{Text::RadiusRight, QT_TRANSLATE_NOOP3("desk", "Turns Right", "RadiusRight")},
    Entry{Text::LanguageMenu, QT_TRANSLATE_NOOP3("desk", "&Language", "LanguageMenu")},
    Entry{Text::About, QT_TRANSLATE_NOOP3("desk", "&About Fenmark Desk", "About")},
    Entry{Text::AboutText, QT_TRANSLATE_NOOP3("desk", "Brings SIMA survey files into drawings.", "AboutText")},
    Entry{Text::Keys, QT_TRANSLATE_NOOP3("desk", "&Keyboard", "Keys")},
    // Lines "keys: what"; a line without a colon heads those behind it.
    Entry{Text::KeysText,
          QT_TRANSLATE_NOOP3("desk",
                             "Plan\n"
                             "Click: select the object; once more: the next one at that place\n"
                             "Drag: pan\n"
                             "Space and a move of the mouse: pan\n"
                             "Wheel: zoom at the pointer\n"
                             "Shift+drag: zoom to a window\n"
                             "Ctrl+click: add the object to the selection, or take it out\n"
                             "Ctrl+drag: select what lies in the box; to the left also what reaches into it\n"
                             "Right click: menu of the object, the row or the layer\n"
                             "Arrows: pan\n"
                             "+ / - / Page Up / Page Down: zoom\n"
                             "F / Home: show everything\n"
                             "Tab / Shift+Tab / N / P: select the next or the previous object in view\n"
                             "Enter: show the properties of the object\n"
                             "Ctrl+A: select all that is shown\n"
                             "Esc: clear the selection\n"
                             "Measuring\n"
                             "Enter / double click: finish\n"
                             "Backspace: take the last place back\n"
                             "Esc: clear; once more: end\n"
                             "Sections\n"
                             "Left / Right: move along\n"
                             "+ / -: zoom along the section\n"
                             "F / Home: show everything\n"
                             "N / P / Page Down / Page Up: next or previous point or section\n"
                             "Panels\n"
                             "Enter on a line of the log: show its object and its line of the SIMA file\n"
                             "Up / Down / Enter in the search: choose and show what was found\n"
                             "Up / Down / Tab in the command line: commands typed before, and completion\n"
                             "F2 / Delete in the layers: rename, delete an empty one\n"
                             "Ctrl+C in a table: copy the rows for a spreadsheet",
                             "KeysText")},
    Entry{Text::SitesPanel, QT_TRANSLATE_NOOP3("desk", "Alignments", "SitesPanel")},
    Entry{Text::LayersPanel, QT_TRANSLATE_NOOP3("desk", "Layers", "LayersPanel")},
    Entry{Text::PropertiesPanel, QT_TRANSLATE_NOOP3("desk", "Properties", "PropertiesPanel")},
    Entry{Text::CommandPanel, QT_TRANSLATE_NOOP3("desk", "Command", "CommandPanel")},
    Entry{Text::LogPanel, QT_TRANSLATE_NOOP3("desk", "Import Log", "LogPanel")},
    Entry{Text::Untitled, QT_TRANSLATE_NOOP3("desk", "Untitled", "Untitled")},
    Entry{Text::CommandPrompt, QT_TRANSLATE_NOOP3("desk", "Command:", "CommandPrompt")},
    Entry{Text::CommandHint, QT_TRANSLATE_NOOP3("desk", "Type Fenmark and press Enter", "CommandHint")},
    Entry{Text::ColumnName, QT_TRANSLATE_NOOP3("desk", "Name", "ColumnName")},
    Entry{Text::ColumnLength, QT_TRANSLATE_NOOP3("desk", "Length", "ColumnLength")},
    Entry{Text::ColumnRadius, QT_TRANSLATE_NOOP3("desk", "Radius/A", "ColumnRadius")},
    Entry{Text::ColumnStation, QT_TRANSLATE_NOOP3("desk", "Station", "ColumnStation")},
    Entry{Text::ColumnProperty, QT_TRANSLATE_NOOP3("desk", "Property", "ColumnProperty")},
    Entry{Text::ColumnValue, QT_TRANSLATE_NOOP3("desk", "Value", "ColumnValue")},
    Entry{Text::Site, QT_TRANSLATE_NOOP3("desk", "Site", "Site")},
    Entry{Text::Alignment, QT_TRANSLATE_NOOP3("desk", "Alignment", "Alignment")},
    Entry{Text::Straight, QT_TRANSLATE_NOOP3("desk", "Straight", "Straight")},
    Entry{Text::Arc, QT_TRANSLATE_NOOP3("desk", "Arc", "Arc")},
    Entry{Text::Clothoid, QT_TRANSLATE_NOOP3("desk", "Clothoid", "Clothoid")},
    Entry{Text::Point, QT_TRANSLATE_NOOP3("desk", "Point", "Point")},
    Entry{Text::Polyline, QT_TRANSLATE_NOOP3("desk", "Polyline", "Polyline")},
    Entry{Text::ClosedPolyline, QT_TRANSLATE_NOOP3("desk", "Closed Polyline", "ClosedPolyline")},
    Entry{Text::Identifier, QT_TRANSLATE_NOOP3("desk", "Object ID", "Identifier")},
    Entry{Text::Layer, QT_TRANSLATE_NOOP3("desk", "Layer", "Layer")},
    Entry{Text::CoordinateX, QT_TRANSLATE_NOOP3("desk", "X (north)", "CoordinateX")},
    Entry{Text::CoordinateY, QT_TRANSLATE_NOOP3("desk", "Y (east)", "CoordinateY")},
    Entry{Text::Height, QT_TRANSLATE_NOOP3("desk", "Height", "Height")},
    Entry{Text::Vertices, QT_TRANSLATE_NOOP3("desk", "Vertices", "Vertices")},
    Entry{Text::Length, QT_TRANSLATE_NOOP3("desk", "Length", "Length")},
    Entry{Text::Perimeter, QT_TRANSLATE_NOOP3("desk", "Perimeter", "Perimeter")},
    Entry{Text::Area, QT_TRANSLATE_NOOP3("desk", "Area", "Area")},
    Entry{Text::Table, QT_TRANSLATE_NOOP3("desk", "Object Data", "Table")},
    Entry{Text::RowNo, QT_TRANSLATE_NOOP3("desk", "No", "RowNo")},
    Entry{Text::RowName, QT_TRANSLATE_NOOP3("desk", "Name", "RowName")},
    Entry{Text::RowType, QT_TRANSLATE_NOOP3("desk", "Type", "RowType")},
    Entry{Text::RowFile, QT_TRANSLATE_NOOP3("desk", "FileName", "RowFile")},
    Entry{Text::NoRow, QT_TRANSLATE_NOOP3("desk", "(none)", "NoRow")},
    Entry{Text::Description, QT_TRANSLATE_NOOP3("desk", "Description", "Description")},
    Entry{Text::StartStation, QT_TRANSLATE_NOOP3("desk", "Start Station", "StartStation")},
    Entry{Text::EndStation, QT_TRANSLATE_NOOP3("desk", "End Station", "EndStation")},
    Entry{Text::Elements, QT_TRANSLATE_NOOP3("desk", "Elements", "Elements")},
    Entry{Text::Element, QT_TRANSLATE_NOOP3("desk", "Element", "Element")},
    Entry{Text::Radius, QT_TRANSLATE_NOOP3("desk", "Radius", "Radius")},
    Entry{Text::StartRadius, QT_TRANSLATE_NOOP3("desk", "Start Radius", "StartRadius")},
    Entry{Text::EndRadius, QT_TRANSLATE_NOOP3("desk", "End Radius", "EndRadius")},
    Entry{Text::Infinite, QT_TRANSLATE_NOOP3("desk", "∞", "Infinite")},
    Entry{Text::Parameter, QT_TRANSLATE_NOOP3("desk", "Parameter A", "Parameter")},
    Entry{Text::Turns, QT_TRANSLATE_NOOP3("desk", "Turns", "Turns")},
    Entry{Text::Left, QT_TRANSLATE_NOOP3("desk", "Left", "Left")},
    Entry{Text::Right, QT_TRANSLATE_NOOP3("desk", "Right", "Right")},
    Entry{Text::StartPoint, QT_TRANSLATE_NOOP3("desk", "Start", "StartPoint")},
    Entry{Text::EndPoint, QT_TRANSLATE_NOOP3("desk", "End", "EndPoint")},
    Entry{Text::Centre, QT_TRANSLATE_NOOP3("desk", "Centre", "Centre")},
    Entry{Text::PointOfIntersection, QT_TRANSLATE_NOOP3("desk", "PI", "PointOfIntersection")},
    Entry{Text::StartDirection, QT_TRANSLATE_NOOP3("desk", "Start Azimuth", "StartDirection")},
    Entry{Text::Drawing, QT_TRANSLATE_NOOP3("desk", "Drawing", "Drawing")},
    Entry{Text::Points, QT_TRANSLATE_NOOP3("desk", "Points", "Points")},
    Entry{Text::Polylines, QT_TRANSLATE_NOOP3("desk", "Polylines", "Polylines")},
    Entry{Text::Alignments, QT_TRANSLATE_NOOP3("desk", "Alignments", "Alignments")},
    Entry{Text::Layers, QT_TRANSLATE_NOOP3("desk", "Layers", "Layers")},
    Entry{Text::Sites, QT_TRANSLATE_NOOP3("desk", "Sites", "Sites")},
    Entry{Text::ZoneShort, QT_TRANSLATE_NOOP3("desk", "Zone", "ZoneShort")},
    Entry{Text::ExtentNorth, QT_TRANSLATE_NOOP3("desk", "Extent X (north)", "ExtentNorth")},
    Entry{Text::ExtentEast, QT_TRANSLATE_NOOP3("desk", "Extent Y (east)", "ExtentEast")},
    Entry{Text::DropHint, QT_TRANSLATE_NOOP3("desk", "Drag a SIMA file (.sim) or\na drawing (.gpkg) here", "DropHint")},
    Entry{Text::DropHintKeys,
          QT_TRANSLATE_NOOP3("desk", "Ctrl+I: import a SIMA file   Ctrl+O: open a drawing", "DropHintKeys")},
    Entry{Text::SaveChanges, QT_TRANSLATE_NOOP3("desk", "Save the changes to “%1”?", "SaveChanges")},
    Entry{Text::SaveButton, QT_TRANSLATE_NOOP3("desk", "&Save", "SaveButton")},
    Entry{Text::DiscardButton, QT_TRANSLATE_NOOP3("desk", "&Do Not Save", "DiscardButton")},
    Entry{Text::CancelButton, QT_TRANSLATE_NOOP3("desk", "Cancel", "CancelButton")},
    Entry{Text::OkButton, QT_TRANSLATE_NOOP3("desk", "OK", "OkButton")},
    Entry{Text::OpenTitle, QT_TRANSLATE_NOOP3("desk", "Open Drawing", "OpenTitle")},
    Entry{Text::SaveTitle, QT_TRANSLATE_NOOP3("desk", "Save Drawing", "SaveTitle")},
    Entry{Text::ExportTitle, QT_TRANSLATE_NOOP3("desk", "Export Drawing", "ExportTitle")},
    Entry{Text::DrawingFilter, QT_TRANSLATE_NOOP3("desk", "Drawings (*.gpkg)", "DrawingFilter")},
    Entry{Text::UnknownExport, QT_TRANSLATE_NOOP3("desk", "%1: the extension must be one of %2", "UnknownExport")},
    Entry{Text::ExportNeedsZone,
          QT_TRANSLATE_NOOP3(
              "desk", "%1: longitude and latitude need the plane rectangular zone; choose it in the menu Settings",
              "ExportNeedsZone")},
    Entry{Text::TargetIsSource,
          QT_TRANSLATE_NOOP3("desk", "%1 was imported into this drawing and is not overwritten; choose another name",
                             "TargetIsSource")},
    Entry{Text::TargetIsLog,
          QT_TRANSLATE_NOOP3("desk", "%1 is the log of an import and is not overwritten; choose another name",
                             "TargetIsLog")},
    Entry{Text::Exported, QT_TRANSLATE_NOOP3("desk", "Exported to %1", "Exported")},
    Entry{Text::Opened, QT_TRANSLATE_NOOP3("desk", "Opened %1", "Opened")},
    Entry{Text::Saved, QT_TRANSLATE_NOOP3("desk", "Saved %1", "Saved")},
    Entry{Text::Undone, QT_TRANSLATE_NOOP3("desk", "Undone: %1", "Undone")},
    Entry{Text::Added, QT_TRANSLATE_NOOP3("desk", "Added %1 entities and %2 alignments", "Added")},
    Entry{Text::NothingToUndo, QT_TRANSLATE_NOOP3("desk", "Nothing to undo", "NothingToUndo")},
    Entry{Text::StepImport, QT_TRANSLATE_NOOP3("desk", "Import", "StepImport")},
    Entry{Text::StepLayer, QT_TRANSLATE_NOOP3("desk", "Add Layer", "StepLayer")},
    Entry{Text::StepZone, QT_TRANSLATE_NOOP3("desk", "Change of Zone", "StepZone")},
    Entry{Text::LayerName, QT_TRANSLATE_NOOP3("desk", "Layer name:", "LayerName")},
    Entry{Text::LayerTaken, QT_TRANSLATE_NOOP3("desk", "There is a layer named “%1” already", "LayerTaken")},
    Entry{Text::NoLog, QT_TRANSLATE_NOOP3("desk", "No log", "NoLog")},
    Entry{Text::LogTooLong, QT_TRANSLATE_NOOP3("desk", "(cut here; all of it is in %1)", "LogTooLong")},
    Entry{Text::CommandUnknown, QT_TRANSLATE_NOOP3("desk", "%1: no such command", "CommandUnknown")},
    Entry{Text::CommandRunning, QT_TRANSLATE_NOOP3("desk", "A command is running", "CommandRunning")},
    Entry{Text::CommandHelp, QT_TRANSLATE_NOOP3("desk", "Commands: %1", "CommandHelp")},
    Entry{Text::CannotLoadModule, QT_TRANSLATE_NOOP3("desk", "The module cannot be loaded: %1", "CannotLoadModule")},
    Entry{Text::UnknownFile, QT_TRANSLATE_NOOP3("desk", "%1: neither a .sim nor a .gpkg file", "UnknownFile")},
    Entry{Text::StatusPosition, QT_TRANSLATE_NOOP3("desk", "X %1   Y %2", "StatusPosition")},
    Entry{Text::StatusStation, QT_TRANSLATE_NOOP3("desk", "%1  %2 (%3)  %4", "StatusStation")},
    Entry{Text::OffsetLeft, QT_TRANSLATE_NOOP3("desk", "left %1", "OffsetLeft")},
    Entry{Text::OffsetRight, QT_TRANSLATE_NOOP3("desk", "right %1", "OffsetRight")},
    Entry{Text::StatusCounts, QT_TRANSLATE_NOOP3("desk", "%1 points  %2 polylines  %3 alignments", "StatusCounts")},
    Entry{Text::PlanName, QT_TRANSLATE_NOOP3("desk", "Plan", "PlanName")},
    Entry{Text::FitShort, QT_TRANSLATE_NOOP3("desk", "Fit", "FitShort")},
    Entry{Text::WindowShort, QT_TRANSLATE_NOOP3("desk", "Window", "WindowShort")},
    Entry{Text::ImportShort, QT_TRANSLATE_NOOP3("desk", "Import", "ImportShort")},
    Entry{Text::Toolbar, QT_TRANSLATE_NOOP3("desk", "Toolbar", "Toolbar")},
    Entry{Text::ShowAll, QT_TRANSLATE_NOOP3("desk", "Show All La&yers", "ShowAll")},
    Entry{Text::HideAll, QT_TRANSLATE_NOOP3("desk", "&Hide All Layers", "HideAll")},
    Entry{Text::Redo, QT_TRANSLATE_NOOP3("desk", "&Redo", "Redo")},
    Entry{Text::RedoStep, QT_TRANSLATE_NOOP3("desk", "&Redo %1", "RedoStep")},
    Entry{Text::Redone, QT_TRANSLATE_NOOP3("desk", "Redone: %1", "Redone")},
    Entry{Text::NothingToRedo, QT_TRANSLATE_NOOP3("desk", "Nothing to redo", "NothingToRedo")},
    Entry{Text::LegendPanel, QT_TRANSLATE_NOOP3("desk", "Legend", "LegendPanel")},
    Entry{Text::SourcePanel, QT_TRANSLATE_NOOP3("desk", "Line of the SIMA File", "SourcePanel")},
    Entry{Text::SourceMissing,
          QT_TRANSLATE_NOOP3("desk", "The SIMA file with line %1 cannot be found", "SourceMissing")},
    Entry{Text::KindCoordinate, QT_TRANSLATE_NOOP3("desk", "Coordinate point", "KindCoordinate")},
    Entry{Text::KindLongitudinal, QT_TRANSLATE_NOOP3("desk", "Longitudinal result", "KindLongitudinal")},
    Entry{Text::KindCrossSection, QT_TRANSLATE_NOOP3("desk", "Cross-section result", "KindCrossSection")},
    Entry{Text::KindOtherPoint, QT_TRANSLATE_NOOP3("desk", "Other point", "KindOtherPoint")},
    Entry{Text::KindLot, QT_TRANSLATE_NOOP3("desk", "Lot", "KindLot")},
    Entry{Text::KindIpLine, QT_TRANSLATE_NOOP3("desk", "IP line", "KindIpLine")},
    Entry{Text::KindStakes, QT_TRANSLATE_NOOP3("desk", "Width-stake line", "KindStakes")},
    Entry{Text::KindContinuous, QT_TRANSLATE_NOOP3("desk", "Continuous line", "KindContinuous")},
    Entry{Text::KindOtherLine, QT_TRANSLATE_NOOP3("desk", "Other line", "KindOtherLine")},
    Entry{Text::KindCount, QT_TRANSLATE_NOOP3("desk", "%1 (%2)", "KindCount")},
    Entry{Text::MeasureMenu, QT_TRANSLATE_NOOP3("desk", "&Measure", "MeasureMenu")},
    Entry{Text::MeasureDistance, QT_TRANSLATE_NOOP3("desk", "&Distance and Bearing", "MeasureDistance")},
    Entry{Text::MeasureArea, QT_TRANSLATE_NOOP3("desk", "&Area and Perimeter", "MeasureArea")},
    Entry{Text::MeasurePlace, QT_TRANSLATE_NOOP3("desk", "&Radius and Station", "MeasurePlace")},
    Entry{Text::MeasureEnd, QT_TRANSLATE_NOOP3("desk", "&End Measuring", "MeasureEnd")},
    Entry{Text::MeasureShort, QT_TRANSLATE_NOOP3("desk", "Distance", "MeasureShort")},
    Entry{Text::MeasureAreaShort, QT_TRANSLATE_NOOP3("desk", "Area", "MeasureAreaShort")},
    Entry{Text::MeasurePlaceShort, QT_TRANSLATE_NOOP3("desk", "Station", "MeasurePlaceShort")},
    Entry{Text::MeasurePanel, QT_TRANSLATE_NOOP3("desk", "Measurement", "MeasurePanel")},
    Entry{Text::MeasureHint,
          QT_TRANSLATE_NOOP3("desk", "Click places in the plan. Enter: finish  Backspace: one back  Esc: clear",
                             "MeasureHint")},
    Entry{Text::MeasurePointName, QT_TRANSLATE_NOOP3("desk", "Point", "MeasurePointName")},
    Entry{Text::MeasureSide, QT_TRANSLATE_NOOP3("desk", "Side", "MeasureSide")},
    Entry{Text::MeasureAzimuth, QT_TRANSLATE_NOOP3("desk", "Azimuth", "MeasureAzimuth")},
    Entry{Text::MeasureBearing, QT_TRANSLATE_NOOP3("desk", "Bearing", "MeasureBearing")},
    Entry{Text::MeasureIncluded, QT_TRANSLATE_NOOP3("desk", "Included Angle", "MeasureIncluded")},
    Entry{Text::MeasureDifference, QT_TRANSLATE_NOOP3("desk", "ΔX, ΔY", "MeasureDifference")},
    Entry{Text::MeasureAlong, QT_TRANSLATE_NOOP3("desk", "Cumulative", "MeasureAlong")},
    Entry{Text::MeasureDirect, QT_TRANSLATE_NOOP3("desk", "First to Last", "MeasureDirect")},
    Entry{Text::MeasureCrossed, QT_TRANSLATE_NOOP3("desk", "The sides cross: this is no area", "MeasureCrossed")},
    Entry{Text::MeasureStake, QT_TRANSLATE_NOOP3("desk", "Stake", "MeasureStake")},
    Entry{Text::MeasureOffset, QT_TRANSLATE_NOOP3("desk", "Offset", "MeasureOffset")},
    Entry{Text::MeasureTangent, QT_TRANSLATE_NOOP3("desk", "Tangent Azimuth", "MeasureTangent")},
    Entry{Text::MeasureNoAlignment, QT_TRANSLATE_NOOP3("desk", "(no alignment)", "MeasureNoAlignment")},
    Entry{Text::SnapMenu, QT_TRANSLATE_NOOP3("desk", "&Snap", "SnapMenu")},
    Entry{Text::SnapPoint, QT_TRANSLATE_NOOP3("desk", "Point", "SnapPoint")},
    Entry{Text::SnapEnd, QT_TRANSLATE_NOOP3("desk", "End", "SnapEnd")},
    Entry{Text::SnapVertex, QT_TRANSLATE_NOOP3("desk", "Vertex", "SnapVertex")},
    Entry{Text::SnapCrossing, QT_TRANSLATE_NOOP3("desk", "Crossing", "SnapCrossing")},
    Entry{Text::SnapFoot, QT_TRANSLATE_NOOP3("desk", "Foot", "SnapFoot")},
    Entry{Text::SnapOnLine, QT_TRANSLATE_NOOP3("desk", "On Line", "SnapOnLine")},
    Entry{Text::CopyTable, QT_TRANSLATE_NOOP3("desk", "&Copy Table", "CopyTable")},
    Entry{Text::LotPanel, QT_TRANSLATE_NOOP3("desk", "Area Table", "LotPanel")},
    Entry{Text::LotHint, QT_TRANSLATE_NOOP3("desk", "Select a lot to see its area table", "LotHint")},
    Entry{Text::ShowOnlyLayer, QT_TRANSLATE_NOOP3("desk", "Show &Only This Layer", "ShowOnlyLayer")},
    Entry{Text::HideThisLayer, QT_TRANSLATE_NOOP3("desk", "&Hide This Layer", "HideThisLayer")},
    Entry{Text::ShowOnlyKind, QT_TRANSLATE_NOOP3("desk", "Show Only This &Kind", "ShowOnlyKind")},
    Entry{Text::ShowAllKinds, QT_TRANSLATE_NOOP3("desk", "Show &All Kinds", "ShowAllKinds")},
    Entry{Text::SelectKind, QT_TRANSLATE_NOOP3("desk", "Select &All of This Kind", "SelectKind")},
    Entry{Text::SelectAll, QT_TRANSLATE_NOOP3("desk", "Select &All Shown", "SelectAll")},
    Entry{Text::CopyRow, QT_TRANSLATE_NOOP3("desk", "&Copy", "CopyRow")},
    Entry{Text::ShowProperties, QT_TRANSLATE_NOOP3("desk", "&Properties", "ShowProperties")},
    Entry{Text::SeveralSelected, QT_TRANSLATE_NOOP3("desk", "%1 objects selected", "SeveralSelected")},
    Entry{Text::TablePanel, QT_TRANSLATE_NOOP3("desk", "Selected Objects", "TablePanel")},
    Entry{Text::TableFilter, QT_TRANSLATE_NOOP3("desk", "Filter", "TableFilter")},
    Entry{Text::TableCount, QT_TRANSLATE_NOOP3("desk", "%1 rows", "TableCount")},
    Entry{Text::ColumnKind, QT_TRANSLATE_NOOP3("desk", "Kind", "ColumnKind")},
    Entry{Text::ColumnNo, QT_TRANSLATE_NOOP3("desk", "No", "ColumnNo")},
    Entry{Text::ColumnX, QT_TRANSLATE_NOOP3("desk", "X", "ColumnX")},
    Entry{Text::ColumnY, QT_TRANSLATE_NOOP3("desk", "Y", "ColumnY")},
    Entry{Text::ColumnHeight, QT_TRANSLATE_NOOP3("desk", "Height", "ColumnHeight")},
    Entry{Text::ColumnSize, QT_TRANSLATE_NOOP3("desk", "Length or Area", "ColumnSize")},
    Entry{Text::ColumnLayer, QT_TRANSLATE_NOOP3("desk", "Layer", "ColumnLayer")},
    Entry{Text::ColumnFile, QT_TRANSLATE_NOOP3("desk", "File", "ColumnFile")},
    Entry{Text::NamesLeftOut, QT_TRANSLATE_NOOP3("desk", "%1 names left out for want of room", "NamesLeftOut")},
    Entry{Text::NotPlaced,
          QT_TRANSLATE_NOOP3("desk", "%1 objects have coordinates that cannot be shown, and are not in the plan",
                             "NotPlaced")},
    Entry{Text::RecoverQuestion,
          QT_TRANSLATE_NOOP3("desk", "A drawing was left unsaved when the program ended last time (%1, %2).",
                             "RecoverQuestion")},
    Entry{Text::RecoverInfo,
          QT_TRANSLATE_NOOP3("desk", "Recover opens it as a drawing without a name.", "RecoverInfo")},
    Entry{Text::RecoverButton, QT_TRANSLATE_NOOP3("desk", "&Recover", "RecoverButton")},
    Entry{Text::RecoverLater, QT_TRANSLATE_NOOP3("desk", "&Later", "RecoverLater")},
    Entry{Text::RecoverDiscard, QT_TRANSLATE_NOOP3("desk", "&Discard", "RecoverDiscard")},
    Entry{Text::Recovered, QT_TRANSLATE_NOOP3("desk", "Recovered the unsaved contents of %1", "Recovered")},
    Entry{Text::RecoverLockOdd,
          QT_TRANSLATE_NOOP3("desk",
                             "A drawing was left unsaved in %1. Whether its program is still running is not known, as "
                             "%2 is no lock file; once that is removed, the drawing is offered.",
                             "RecoverLockOdd")},
    Entry{Text::PlanDescription,
          QT_TRANSLATE_NOOP3("desk", "Tab goes to the next object, Enter to its properties, F6 to the next pane",
                             "PlanDescription")},
    Entry{Text::PreviewPanel, QT_TRANSLATE_NOOP3("desk", "Beginning of the File", "PreviewPanel")},
    Entry{Text::PreviewReadIn, QT_TRANSLATE_NOOP3("desk", "Encoding: %1", "PreviewReadIn")},
    Entry{Text::PreviewUnreadable, QT_TRANSLATE_NOOP3("desk", "The file cannot be read.", "PreviewUnreadable")},
    Entry{Text::PreviewEmpty, QT_TRANSLATE_NOOP3("desk", "The file is empty.", "PreviewEmpty")},
    Entry{Text::PreviewNoRecords,
          QT_TRANSLATE_NOOP3("desk", "The first %1 lines hold no SIMA record (A00, D00, F00, H00, I00).",
                             "PreviewNoRecords")},
    Entry{Text::AgainQuestion,
          QT_TRANSLATE_NOOP3("desk", "%1 has been imported into this drawing before, last at %2.", "AgainQuestion")},
    Entry{Text::AgainInfo,
          QT_TRANSLATE_NOOP3("desk", "Replace removes the objects of the earlier import, which cannot be undone.",
                             "AgainInfo")},
    Entry{Text::ReplaceButton, QT_TRANSLATE_NOOP3("desk", "&Replace", "ReplaceButton")},
    Entry{Text::AddButton, QT_TRANSLATE_NOOP3("desk", "&Add", "AddButton")},
    Entry{Text::Replaced, QT_TRANSLATE_NOOP3("desk", "Removed the objects of the earlier import of %1", "Replaced")},
    Entry{Text::PassedOver, QT_TRANSLATE_NOOP3("desk", "Lines passed over: %1 (%2)", "PassedOver")},
    Entry{Text::DoubtfulRecord, QT_TRANSLATE_NOOP3("desk", "Line %1: %2", "DoubtfulRecord")},
    Entry{Text::DoubtfulRecords, QT_TRANSLATE_NOOP3("desk", "Line %1: %2; %3 more", "DoubtfulRecords")},
    Entry{Text::ImportRow, QT_TRANSLATE_NOOP3("desk", "%1   %2   %3 errors", "ImportRow")},
    Entry{Text::ImportsBox, QT_TRANSLATE_NOOP3("desk", "Imports", "ImportsBox")},
    Entry{Text::FileChanged,
          QT_TRANSLATE_NOOP3("desk", "%1 has changed since it was imported; lines and objects may not meet",
                             "FileChanged")},
    Entry{Text::Find, QT_TRANSLATE_NOOP3("desk", "&Find...", "Find")},
    Entry{Text::FindPanel, QT_TRANSLATE_NOOP3("desk", "Find", "FindPanel")},
    Entry{Text::FindHint, QT_TRANSLATE_NOOP3("desk", "Name or number of a point, lot or alignment", "FindHint")},
    Entry{Text::FindCount, QT_TRANSLATE_NOOP3("desk", "%1 found", "FindCount")},
    Entry{Text::FindCountCut, QT_TRANSLATE_NOOP3("desk", "%1 found, %2 shown", "FindCountCut")},
    Entry{Text::FindNothing, QT_TRANSLATE_NOOP3("desk", "Nothing found", "FindNothing")},
    Entry{Text::NextError, QT_TRANSLATE_NOOP3("desk", "&Next Error", "NextError")},
    Entry{Text::PreviousError, QT_TRANSLATE_NOOP3("desk", "&Previous Error", "PreviousError")},
    Entry{Text::NoMoreErrors, QT_TRANSLATE_NOOP3("desk", "No further error", "NoMoreErrors")},
    Entry{Text::NewOutOfView,
          QT_TRANSLATE_NOOP3("desk", "The import lies partly out of view: fit all", "NewOutOfView")},
    Entry{Text::BrokenOff, QT_TRANSLATE_NOOP3("desk", "The import was broken off.", "BrokenOff")},
    Entry{Text::BrokenOffKept,
          QT_TRANSLATE_NOOP3("desk", "What was made until then, %1 objects, is in the drawing.", "BrokenOffKept")},
    Entry{Text::BrokenOffNothing, QT_TRANSLATE_NOOP3("desk", "No object was made.", "BrokenOffNothing")},
    Entry{Text::KeepButton, QT_TRANSLATE_NOOP3("desk", "Keep", "KeepButton")},
    Entry{Text::TakeBackButton, QT_TRANSLATE_NOOP3("desk", "Take Back", "TakeBackButton")},
    Entry{Text::EncodingMenu, QT_TRANSLATE_NOOP3("desk", "&Encoding of SIMA Files", "EncodingMenu")},
    Entry{Text::EncodingAuto, QT_TRANSLATE_NOOP3("desk", "Automatic", "EncodingAuto")},
    Entry{Text::EncodingCp932, QT_TRANSLATE_NOOP3("desk", "Code Page 932 (Shift_JIS)", "EncodingCp932")},
    Entry{Text::EncodingUtf8, QT_TRANSLATE_NOOP3("desk", "UTF-8", "EncodingUtf8")},
    Entry{Text::ReadIn, QT_TRANSLATE_NOOP3("desk", "The file was read in %1", "ReadIn")},
    Entry{Text::PlanTangents, QT_TRANSLATE_NOOP3("desk", "Tangents of &Clothoids in Plan", "PlanTangents")},
    Entry{Text::TryRadiusAuto,
          QT_TRANSLATE_NOOP3("desk", "importing again with Positive Radius set to Automatic may mend it",
                             "TryRadiusAuto")},
    Entry{Text::TryRadiusLeft,
          QT_TRANSLATE_NOOP3("desk", "importing again with Positive Radius set to Turns Left may mend it",
                             "TryRadiusLeft")},
    Entry{Text::TryRadiusRight,
          QT_TRANSLATE_NOOP3("desk", "importing again with Positive Radius set to Turns Right may mend it",
                             "TryRadiusRight")},
    Entry{Text::TryPlanTangents,
          QT_TRANSLATE_NOOP3("desk", "importing again with Tangents of Clothoids in Plan may mend it",
                             "TryPlanTangents")},
    Entry{Text::LayerColour, QT_TRANSLATE_NOOP3("desk", "Layer &Colour...", "LayerColour")},
    Entry{Text::NoLayerColour, QT_TRANSLATE_NOOP3("desk", "Colours by &Kind", "NoLayerColour")},
    Entry{Text::RenameLayer, QT_TRANSLATE_NOOP3("desk", "&Rename Layer...", "RenameLayer")},
    Entry{Text::RemoveLayer, QT_TRANSLATE_NOOP3("desk", "&Delete Empty Layer", "RemoveLayer")},
    Entry{Text::LayerObjects, QT_TRANSLATE_NOOP3("desk", "%1 objects", "LayerObjects")},
    Entry{Text::LayerHolds, QT_TRANSLATE_NOOP3("desk", "“%1” holds %2 objects and cannot be deleted", "LayerHolds")},
    Entry{Text::LayerStays,
          QT_TRANSLATE_NOOP3("desk", "“%1” is kept as it is: new objects come onto it", "LayerStays")},
    Entry{Text::StepLayerName, QT_TRANSLATE_NOOP3("desk", "Rename Layer", "StepLayerName")},
    Entry{Text::StepLayerColour, QT_TRANSLATE_NOOP3("desk", "Layer Colour", "StepLayerColour")},
    Entry{Text::StepLayerGone, QT_TRANSLATE_NOOP3("desk", "Delete Layer", "StepLayerGone")},
    Entry{Text::PreviousPane, QT_TRANSLATE_NOOP3("desk", "Pre&vious Pane", "PreviousPane")},
    Entry{Text::ToCommandLine, QT_TRANSLATE_NOOP3("desk", "Command L&ine", "ToCommandLine")},
    Entry{Text::ColumnKey, QT_TRANSLATE_NOOP3("desk", "Key", "ColumnKey")},
    Entry{Text::ColumnAct, QT_TRANSLATE_NOOP3("desk", "What It Does", "ColumnAct")},
    Entry{Text::LinesLeftOut,
          QT_TRANSLATE_NOOP3("desk", "%1 lines and areas under others are not drawn", "LinesLeftOut")},
    Entry{Text::RecoverNotKept,
          QT_TRANSLATE_NOOP3("desk", "Unsaved work is not kept for a restart: %1", "RecoverNotKept")},
}};

static_assert(inOrder(kEntries, kLastText));

} // namespace

QString Texts::translated(const char* english, const char* name) const {
    static const QTranslator* const japanese = [] {
        auto* translator = new QTranslator; // for the life of the program
        static_cast<void>(translator->load(fenmarkDeskJapanese, static_cast<int>(fenmarkDeskJapaneseSize)));
        return translator;
    }();
    const QString translated = language_ == Language::Japanese ? japanese->translate("desk", english, name) : QString();
    return translated.isNull() ? QString::fromUtf8(english) : translated;
}

QString Texts::operator()(Text text) const {
    const TextSource& source = kEntries[static_cast<std::size_t>(text)].source;
    return translated(source.english, source.name);
}

QString withoutMnemonic(QString text) {
    static const QRegularExpression japanese(QStringLiteral("\\(&.\\)"));
    text.remove(japanese);
    text.remove(QLatin1Char('&'));
    return text.remove(QStringLiteral("..."));
}

Language languageOfLocale() {
    return QLocale::system().language() == QLocale::Japanese ? Language::Japanese : Language::English;
}

} // namespace fenmark::desk
