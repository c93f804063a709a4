// What fenmark import writes of one file.
#include "cli/import_answer.h"

#include "command/import_command.h"
#include "sima/text/path.h"

#include <cstdint>
#include <ostream>
#include <string_view>
#include <utility>

namespace fenmark::cli {

namespace {

std::uint64_t numberOf(std::string_view line) {
    std::uint64_t number = 0;
    for (const char digit : line) {
        number = 10 * number + static_cast<std::uint64_t>(digit - '0');
    }
    return number;
}

} // namespace

void printResult(std::ostream& out, const command::ImportResult& result, bool withName) {
    if (withName) {
        out << result.filePath << ":\n";
    }
    for (const std::string& line : command::resultLines(result)) {
        out << line << '\n';
    }
    out.flush();
}

nlohmann::ordered_json jsonOf(const std::string& file, const std::string& drawing) {
    nlohmann::ordered_json json;
    json["file"] = sima::textOfPath(file);
    json["drawing"] = drawing.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(sima::textOfPath(drawing));
    return json;
}

void addResult(nlohmann::ordered_json& json, const command::ImportResult& result, const std::string& log) {
    json["log"] = sima::textOfPath(log);
    json["errors"] = result.errorCount;
    json["points"] = result.coordinatePoints;
    json["lots"] = result.lots;
    json["alignments"] = result.alignmentNames;
    json["routes"] = result.routesCreated;
    json["longitudinal"] = result.longitudinalPoints;
    json["cross_sections"] = result.crossSectionPoints;
}

void addReport(nlohmann::ordered_json& json, const FileReport& report) {
    nlohmann::ordered_json& records = json["error_records"] = nlohmann::ordered_json::array();
    for (const FileReport::Error& error : report.errors) {
        nlohmann::ordered_json record;
        record["line"] = numberOf(error.line);
        record["code"] = error.code;
        record["text"] = error.text;
        record["record"] = error.record;
        records.push_back(std::move(record));
    }
    nlohmann::ordered_json& notes = json["notes"] = nlohmann::ordered_json::array();
    for (const FileReport::Note& said : report.notes) {
        nlohmann::ordered_json note;
        note["code"] = said.code;
        note["text"] = said.text;
        if (!said.line.empty()) {
            note["line"] = numberOf(said.line);
        }
        notes.push_back(std::move(note));
    }
}

} // namespace fenmark::cli
