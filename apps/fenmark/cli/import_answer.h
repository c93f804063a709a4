// What fenmark import writes on standard output of one file: lines for people, JSON for programs.
#pragma once

#include "cli/messages.h"
#include "command/dialogs.h"

#include <iosfwd>
#include <string>

#include <nlohmann/json.hpp>

namespace fenmark::cli {

void printResult(std::ostream& out, const command::ImportResult& result, bool withName);

// What is known of a file from its beginning; no drawing: empty.
nlohmann::ordered_json jsonOf(const std::string& file, const std::string& drawing);
// An import that was done.
void addResult(nlohmann::ordered_json& json, const command::ImportResult& result, const std::string& log);
// The records that were refused and the notes, in the words of standard error.
void addReport(nlohmann::ordered_json& json, const FileReport& report);

} // namespace fenmark::cli
