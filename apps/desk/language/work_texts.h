// What the sections, the paper and the backgrounds say, in Japanese and English.
#pragma once

#include "desk/language/texts.h"

#include <QString>

#include <cstdint>

namespace fenmark::desk {

enum class WorkText : std::uint16_t {
    SectionMenu,
    ProfilePanel,
    CrossPanel,
    Exaggeration,
    ExaggerationFit,
    ExaggerationTimes,
    PrintShort,
    PreviousSection,
    NextSection,
    NoProfile,
    NoSections,
    ChooseAlignment,
    Ground,
    Planned,
    Distance,
    Stake,
    Curve,
    CentreHeight,
    PointedProfile,
    PointedSection,
    PaperMenu,
    PaperTitle,
    PaperKind,
    PaperPlan,
    PaperAlong,
    PaperProfile,
    PaperCross,
    PaperLots,
    PaperStakes,
    PaperPoints,
    PaperAlignments,
    PaperOf,
    PaperSize,
    PaperOrientation,
    OrientationAuto,
    OrientationWide,
    OrientationUpright,
    PaperScale,
    ScaleAuto,
    PaperExtent,
    ExtentAll,
    ExtentView,
    ExtentSelection,
    PaperTexts,
    TextHeading,
    TextProject,
    TextDate,
    TextAuthor,
    TextCompany,
    TextSheet,
    TextRemark,
    PagePrevious,
    PageNext,
    PageOf,
    PaperSavePdf,
    PaperSaveSvg,
    PaperPrint,
    PaperClose,
    PaperSaved,
    PaperNoNumber,
    PaperTooLarge,
    StakePitch,
    StakeOffsets,
    BackgroundMenu,
    BackgroundAdd,
    BackgroundAddFolder,
    BackgroundRemoveAll,
    BackgroundShow,
    BackgroundStrength,
    BackgroundFilter,
    BackgroundAdded,
    BackgroundFailed,
    BackgroundNeedsZone,
    BackgroundMissing,
};
inline constexpr WorkText kLastWorkText = WorkText::BackgroundMissing;

QString workText(const Texts& texts, WorkText text);

} // namespace fenmark::desk
