// The lines of fenmark import and fenmark preview.
#include "cli/argument_lines.h"
#include "cli/argument_values.h"
#include "cli/drawings.h"
#include "cli/help_texts.h"
#include "cli/messages.h"
#include "cli/suggestion.h"
#include "command/dialog_rules.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace fenmark::cli {

namespace {

using host::embedded::PositiveRadius;

constexpr const char* kEncodings = "auto|cp932|utf-8|utf-16";

std::size_t kindNamed(std::string_view name, Language language) {
    const auto& kinds = sima::kImportKindTable;
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [name](const auto& entry) { return entry.option == name; });
    if (found == kinds.end()) {
        const std::vector<std::string> known = optionsOf(kinds);
        refuse(
            language, Text::NoKind,
            {{"name", std::string(name)}, {"kinds", withBlanks(known)}, {"meant", suggestion(name, known, language)}});
    }
    return static_cast<std::size_t>(found->kind);
}

std::array<bool, sima::kImportKinds> wantedKinds(const ImportLine& line, Language language) {
    std::array<bool, sima::kImportKinds> wanted{};
    wanted.fill(line.only.empty());
    const auto set = [&](const std::vector<std::string>& lists, bool value) {
        for (const std::string& list : lists) {
            for (const std::string& name : listed(list)) {
                wanted[kindNamed(name, language)] = value;
            }
        }
    };
    set(line.only, true);
    set(line.skip, false);
    return wanted;
}

// A drawing is a GeoPackage, whatever it is called; a name of another format is a wish for an export.
void requireDrawingName(const std::string& drawing, const std::string& file, Language language) {
    const std::string command(commandThatWrites(drawing));
    if (command.empty()) {
        return;
    }
    refuse(language, Text::DrawingIsAnotherFormat,
           {{"drawing", drawing},
            {"file", file},
            {"made", drawing.substr(0, drawing.rfind('.')) + ".gpkg"},
            {"command", command}});
}

} // namespace

void declare(CLI::App& app, ImportLine& line, Language language) {
    const auto say = [language](Help text, std::initializer_list<Figure> figures = {}) {
        return said(language, text, figures);
    };
    CLI::App& command = *app.add_subcommand("import", say(Help::Import));
    ImportArguments& a = line.arguments;
    command.add_option("FILE", a.files, say(Help::ImportFile))->required()->type_name("");
    command.add_option("--drawing", a.drawing, say(Help::ImportDrawing))->type_name("DRAWING");
    command.add_option("--site", a.site, say(Help::Site))->type_name("NAME");
    command
        .add_option("--only", line.only,
                    say(Help::ImportOnly, {{"kinds", withBlanks(optionsOf(sima::kImportKindTable))}}))
        ->expected(1)
        ->allow_extra_args(false) // what follows is a file
        ->take_all()
        ->type_name("KIND,...");
    command.add_option("--skip", line.skip, say(Help::Skip))
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all()
        ->type_name("KIND,...");
    command.add_option("--point-layer", a.pointLayer, say(Help::PointLayer))->type_name("LAYER");
    command.add_option("--ip-layer", a.ipLayer, say(Help::IpLayer))->type_name("LAYER");
    command.add_option("--lot-layer", a.lotLayer, say(Help::LotLayer))->type_name("LAYER");
    command.add_option("--stake-layer", a.stakeLayer, say(Help::StakeLayer))->type_name("LAYER");
    command.add_option("--continuous-layer", a.continuousLayer, say(Help::ContinuousLayer))->type_name("LAYER");
    command.add_flag("--create-layers", a.createLayers, say(Help::CreateLayers));
    command.add_option("--shift", line.shift, say(Help::Shift))->type_name("METRES")->check(refusalOfEmpty);
    command.add_option("--alignment", a.alignment, say(Help::Alignment))->type_name("NAME");
    command.add_flag("--force-alignment", a.forceAlignment, say(Help::ForceAlignment));
    command.add_option("--zone", line.zone, say(Help::ImportZone))
        ->check(CLI::Range(1, 19).description(""))
        ->type_name("1..19");
    command.add_option("--encoding", line.encoding, say(Help::ImportEncoding))->type_name(kEncodings);
    command.add_option("--positive-radius", line.positiveRadius, say(Help::PositiveRadius))
        ->check(CLI::IsMember({"auto", "left", "right"}).description(""))
        ->type_name("auto|left|right");
    command.add_flag("--plan-tangents", a.planTangents, say(Help::PlanTangents));
    command.add_flag("--replace", a.replace, say(Help::Replace));
    command.add_flag("--keep-partial", a.keepPartial, say(Help::KeepPartial));
    command.add_flag("--strict", a.strict, say(Help::Strict));
    command.add_flag("--json", a.json, say(Help::ImportJson));
    command.add_flag("-q,--quiet", a.quiet, say(Help::Quiet));
    command.footer(say(Help::ImportFooter));
}

ImportArguments checked(ImportLine line, Language language) {
    ImportArguments& a = line.arguments;
    takeTyped(a.files);
    takeTyped(a.drawing);
    for (const std::string& file : a.files) {
        requireName(file, "FILE", language);
        if (endsIn(file, ".gpkg")) { // what a copy names last, an import names by its option
            refuse(language, Text::FileIsDrawing, {{"file", file}});
        }
    }
    requireName(a.drawing.value_or("-"), "--drawing", language);
    if (a.drawing) {
        requireDrawingName(*a.drawing, a.files.front(), language);
    }
    a.wanted = wantedKinds(line, language);
    if (!line.shift.empty()) {
        double metres = 0.0;
        if (!command::parseShiftDistance(line.shift, metres)) {
            refuse(language, Text::ShiftAboveZero, {{"text", line.shift}});
        }
        a.shift = metres;
    }
    if (a.forceAlignment && !a.alignment) {
        refuse(language, Text::ForceNeedsAlignment);
    }
    if (line.zone != 0) {
        a.zone = line.zone;
    }
    a.encoding = encodingNamed(line.encoding, language);
    a.positiveRadius = line.positiveRadius == "left"    ? PositiveRadius::Left
                       : line.positiveRadius == "right" ? PositiveRadius::Right
                                                        : PositiveRadius::Auto;
    return std::move(a);
}

void declare(CLI::App& app, PreviewLine& line, Language language) {
    const auto say = [language](Help text) { return said(language, text); };
    CLI::App& command = *app.add_subcommand("preview", say(Help::Preview));
    command.add_option("FILE", line.arguments.file, say(Help::PreviewFile))->required()->type_name("");
    command.add_option("--encoding", line.encoding, say(Help::PreviewEncoding))->type_name(kEncodings);
    command.add_flag("--json", line.arguments.json, say(Help::PreviewJson));
    command.add_flag("-q,--quiet", line.arguments.quiet, say(Help::Quiet));
    command.footer(say(Help::PreviewFooter));
}

PreviewArguments checked(PreviewLine line, Language language) {
    takeTyped(line.arguments.file);
    requireName(line.arguments.file, "FILE", language);
    line.arguments.encoding = encodingNamed(line.encoding, language);
    return std::move(line.arguments);
}

} // namespace fenmark::cli
