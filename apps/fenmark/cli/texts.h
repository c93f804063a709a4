// What the command line says of what it cannot do, by code: worded in the language of the messages. Notes on a file stand
// where they are made; the options' descriptions are in help_texts.h.
#pragma once

#include "values/language.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace fenmark::cli {

enum class Text : std::uint8_t {
    // The line as a whole
    HelpHint,
    DidYouMean,
    NoSuchOption,
    OptionBehindCommand,
    CommandsAre,
    NoCommand,
    UnknownCommand,
    DashesBehindCommand,
    NeedsValue,
    TakesNoValue,
    Required,
    TooManyArguments,
    BadValue,
    Excludes,
    GivenTwice,
    // Values of options
    EmptyName,
    NoKind,
    NoObjectKind,
    NoEncoding,
    NotMetres,
    NotAStation,
    DrawingIsAnotherFormat,
    FileIsDrawing,
    ShiftAboveZero,
    ForceNeedsAlignment,
    RectangleIsFourNumbers,
    ScaleOutOfRange,
    PitchTooSmall,
    EveryBelowZero,
    AtTakesStations,
    OffsetTooFar,
    NoTable,
    // Names and extensions
    ExtensionMustBe,
    Or,
    OtherCommandWrites,
    OptionOfFormat,
    WithZone,
    WithZoneOrPlane,
    NoLayer,
    NoLayerToImport,
    NoSite,
    NoAlignment,
    SeveralAlignments,
    OtherZone,
    None,
    AndMore,
    // Files
    CannotRead,
    CannotReadToEnd,
    IsFolder,
    IsNoOrdinaryFile,
    IsNoLog,
    IsNoSimFile,
    ReadingBrokenOff,
    ImportBrokenOff,
    CannotReadFurther,
    LogNotWritable,
    LogOverDrawing,
    LogOverLog,
    ItsFolder,
    DrawingAsItWas,
    NoDrawingMade,
    ImportIsIn,
    KeptIn,
    SitesNotListed,
    TargetIsSource,
    TargetIsLog,
    OutputNotWritable,
    MoreInLog,
    Writing,
    // Exceptions
    OutOfMemory,
    UnknownFailure,
    ShortRecord,
    LineTooLong,
    // Stations
    StationOutside,
    StationOfNothing,
    NoElements,
    EndlessElements,
};
inline constexpr Text kLastText = Text::EndlessElements;

// What stands for "{name}" in a text.
struct Figure {
    std::string_view name;
    std::string value;
};

[[nodiscard]] std::string said(Language language, Text text, std::initializer_list<Figure> figures = {});

} // namespace fenmark::cli
