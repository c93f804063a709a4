// What the sections, the paper and the backgrounds say.
#include "desk/language/work_texts.h"

#include "desk/language/text_table.h"

#include <QCoreApplication>

#include <array>
#include <cstddef>

namespace fenmark::desk {

namespace {

using Entry = TextEntry<WorkText>;

constexpr std::array<Entry, static_cast<std::size_t>(kLastWorkText) + 1> kEntries{{
    Entry{WorkText::SectionMenu, QT_TRANSLATE_NOOP3("desk", "Se&ctions", "SectionMenu")},
    Entry{WorkText::ProfilePanel, QT_TRANSLATE_NOOP3("desk", "Longitudinal Section", "ProfilePanel")},
    Entry{WorkText::CrossPanel, QT_TRANSLATE_NOOP3("desk", "Cross-Sections", "CrossPanel")},
    Entry{WorkText::Exaggeration, QT_TRANSLATE_NOOP3("desk", "Height Scale", "Exaggeration")},
    Entry{WorkText::ExaggerationFit, QT_TRANSLATE_NOOP3("desk", "Fit", "ExaggerationFit")},
    Entry{WorkText::ExaggerationTimes, QT_TRANSLATE_NOOP3("desk", "×%1", "ExaggerationTimes")},
    Entry{WorkText::PrintShort, QT_TRANSLATE_NOOP3("desk", "Print...", "PrintShort")},
    Entry{WorkText::PreviousSection, QT_TRANSLATE_NOOP3("desk", "Previous Section", "PreviousSection")},
    Entry{WorkText::NextSection, QT_TRANSLATE_NOOP3("desk", "Next Section", "NextSection")},
    Entry{WorkText::NoProfile, QT_TRANSLATE_NOOP3("desk", "This alignment has no longitudinal results", "NoProfile")},
    Entry{WorkText::NoSections, QT_TRANSLATE_NOOP3("desk", "This alignment has no cross-sections", "NoSections")},
    Entry{WorkText::ChooseAlignment,
          QT_TRANSLATE_NOOP3("desk", "Select an alignment, or a point of its sections", "ChooseAlignment")},
    Entry{WorkText::Ground, QT_TRANSLATE_NOOP3("desk", "Ground", "Ground")},
    Entry{WorkText::Planned, QT_TRANSLATE_NOOP3("desk", "Design", "Planned")},
    Entry{WorkText::Distance, QT_TRANSLATE_NOOP3("desk", "Station", "Distance")},
    Entry{WorkText::Stake, QT_TRANSLATE_NOOP3("desk", "Stake", "Stake")},
    Entry{WorkText::Curve, QT_TRANSLATE_NOOP3("desk", "Curves", "Curve")},
    Entry{WorkText::CentreHeight, QT_TRANSLATE_NOOP3("desk", "Centre height %1", "CentreHeight")},
    Entry{WorkText::PointedProfile, QT_TRANSLATE_NOOP3("desk", "%1  station %2  ground %3", "PointedProfile")},
    Entry{WorkText::PointedSection, QT_TRANSLATE_NOOP3("desk", "offset %1  height %2", "PointedSection")},
    Entry{WorkText::PaperMenu, QT_TRANSLATE_NOOP3("desk", "&Print and PDF...", "PaperMenu")},
    Entry{WorkText::PaperTitle, QT_TRANSLATE_NOOP3("desk", "Print and PDF", "PaperTitle")},
    Entry{WorkText::PaperKind, QT_TRANSLATE_NOOP3("desk", "Kind", "PaperKind")},
    Entry{WorkText::PaperPlan, QT_TRANSLATE_NOOP3("desk", "Plan", "PaperPlan")},
    Entry{WorkText::PaperAlong, QT_TRANSLATE_NOOP3("desk", "Plan in sheets along an alignment", "PaperAlong")},
    Entry{WorkText::PaperProfile, QT_TRANSLATE_NOOP3("desk", "Longitudinal section", "PaperProfile")},
    Entry{WorkText::PaperCross, QT_TRANSLATE_NOOP3("desk", "Cross-sections", "PaperCross")},
    Entry{WorkText::PaperLots, QT_TRANSLATE_NOOP3("desk", "Area tables of lots", "PaperLots")},
    Entry{WorkText::PaperStakes, QT_TRANSLATE_NOOP3("desk", "Stake list", "PaperStakes")},
    Entry{WorkText::PaperPoints, QT_TRANSLATE_NOOP3("desk", "Coordinate list", "PaperPoints")},
    Entry{WorkText::PaperAlignments, QT_TRANSLATE_NOOP3("desk", "Tables of alignments", "PaperAlignments")},
    Entry{WorkText::PaperOf, QT_TRANSLATE_NOOP3("desk", "Alignment", "PaperOf")},
    Entry{WorkText::PaperSize, QT_TRANSLATE_NOOP3("desk", "Paper", "PaperSize")},
    Entry{WorkText::PaperOrientation, QT_TRANSLATE_NOOP3("desk", "Orientation", "PaperOrientation")},
    Entry{WorkText::OrientationAuto, QT_TRANSLATE_NOOP3("desk", "Automatic", "OrientationAuto")},
    Entry{WorkText::OrientationWide, QT_TRANSLATE_NOOP3("desk", "Landscape", "OrientationWide")},
    Entry{WorkText::OrientationUpright, QT_TRANSLATE_NOOP3("desk", "Portrait", "OrientationUpright")},
    Entry{WorkText::PaperScale, QT_TRANSLATE_NOOP3("desk", "Scale", "PaperScale")},
    Entry{WorkText::ScaleAuto, QT_TRANSLATE_NOOP3("desk", "Automatic", "ScaleAuto")},
    Entry{WorkText::PaperExtent, QT_TRANSLATE_NOOP3("desk", "Extent", "PaperExtent")},
    Entry{WorkText::ExtentAll, QT_TRANSLATE_NOOP3("desk", "Whole drawing", "ExtentAll")},
    Entry{WorkText::ExtentView, QT_TRANSLATE_NOOP3("desk", "What the view shows", "ExtentView")},
    Entry{WorkText::ExtentSelection, QT_TRANSLATE_NOOP3("desk", "Selected object", "ExtentSelection")},
    Entry{WorkText::PaperTexts, QT_TRANSLATE_NOOP3("desk", "Title block (kept in the drawing)", "PaperTexts")},
    Entry{WorkText::TextHeading, QT_TRANSLATE_NOOP3("desk", "Title", "TextHeading")},
    Entry{WorkText::TextProject, QT_TRANSLATE_NOOP3("desk", "Project", "TextProject")},
    Entry{WorkText::TextDate, QT_TRANSLATE_NOOP3("desk", "Date", "TextDate")},
    Entry{WorkText::TextAuthor, QT_TRANSLATE_NOOP3("desk", "Author", "TextAuthor")},
    Entry{WorkText::TextCompany, QT_TRANSLATE_NOOP3("desk", "Company", "TextCompany")},
    Entry{WorkText::TextSheet, QT_TRANSLATE_NOOP3("desk", "Sheet", "TextSheet")},
    Entry{WorkText::TextRemark, QT_TRANSLATE_NOOP3("desk", "Remark", "TextRemark")},
    Entry{WorkText::PagePrevious, QT_TRANSLATE_NOOP3("desk", "Previous Page", "PagePrevious")},
    Entry{WorkText::PageNext, QT_TRANSLATE_NOOP3("desk", "Next Page", "PageNext")},
    Entry{WorkText::PageOf, QT_TRANSLATE_NOOP3("desk", "%1 / %2", "PageOf")},
    Entry{WorkText::PaperSavePdf, QT_TRANSLATE_NOOP3("desk", "&Save PDF...", "PaperSavePdf")},
    Entry{WorkText::PaperSaveSvg, QT_TRANSLATE_NOOP3("desk", "Save S&VG...", "PaperSaveSvg")},
    Entry{WorkText::PaperPrint, QT_TRANSLATE_NOOP3("desk", "&Print...", "PaperPrint")},
    Entry{WorkText::PaperClose, QT_TRANSLATE_NOOP3("desk", "Close", "PaperClose")},
    Entry{WorkText::PaperSaved, QT_TRANSLATE_NOOP3("desk", "Saved %1", "PaperSaved")},
    Entry{WorkText::PaperNoNumber, QT_TRANSLATE_NOOP3("desk", "%1: “%2” is no such number", "PaperNoNumber")},
    Entry{WorkText::PaperTooLarge,
          QT_TRANSLATE_NOOP3("desk", "The printer's paper is %1, the sheet is %2. Print it smaller?", "PaperTooLarge")},
    Entry{WorkText::StakePitch, QT_TRANSLATE_NOOP3("desk", "Stakes every (m)", "StakePitch")},
    Entry{WorkText::StakeOffsets, QT_TRANSLATE_NOOP3("desk", "Offsets (m)", "StakeOffsets")},
    Entry{WorkText::BackgroundMenu, QT_TRANSLATE_NOOP3("desk", "&Background", "BackgroundMenu")},
    Entry{WorkText::BackgroundAdd, QT_TRANSLATE_NOOP3("desk", "&Add File...", "BackgroundAdd")},
    Entry{WorkText::BackgroundAddFolder, QT_TRANSLATE_NOOP3("desk", "Add &Folder of Tiles...", "BackgroundAddFolder")},
    Entry{WorkText::BackgroundRemoveAll, QT_TRANSLATE_NOOP3("desk", "&Remove All", "BackgroundRemoveAll")},
    Entry{WorkText::BackgroundShow, QT_TRANSLATE_NOOP3("desk", "&Show Background", "BackgroundShow")},
    Entry{WorkText::BackgroundStrength, QT_TRANSLATE_NOOP3("desk", "Strength %1%", "BackgroundStrength")},
    Entry{WorkText::BackgroundFilter,
          QT_TRANSLATE_NOOP3("desk", "Backgrounds (*.gpkg *.dxf *.geojson *.json *.mbtiles)", "BackgroundFilter")},
    Entry{WorkText::BackgroundAdded,
          QT_TRANSLATE_NOOP3("desk", "Background: added %1 (%2 points, %3 lines)", "BackgroundAdded")},
    Entry{WorkText::BackgroundFailed, QT_TRANSLATE_NOOP3("desk", "%1: no background (%2)", "BackgroundFailed")},
    Entry{WorkText::BackgroundNeedsZone,
          QT_TRANSLATE_NOOP3("desk", "the plane rectangular zone is needed; choose it in the menu Settings",
                             "BackgroundNeedsZone")},
    Entry{WorkText::BackgroundMissing,
          QT_TRANSLATE_NOOP3("desk", "A file of the background is missing: %1", "BackgroundMissing")},
}};

static_assert(inOrder(kEntries, kLastWorkText));

} // namespace

QString workText(const Texts& texts, WorkText text) {
    const TextSource& source = kEntries[static_cast<std::size_t>(text)].source;
    return texts.translated(source.english, source.name);
}

} // namespace fenmark::desk
