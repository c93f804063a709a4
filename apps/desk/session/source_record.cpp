// The lines of a SIMA file that a log speaks of.
#include "desk/session/source_record.h"

#include "sima/text/cp932.h"
#include "sima/text/number.h"
#include "sima/text/path.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace fenmark::desk {

namespace {

constexpr std::string_view kLogEnd = "_Input.log";
constexpr std::size_t kLongestLine = 1000; // bytes of a line that are shown
constexpr std::size_t kFewestDigits = 5;   // of the numbers in a log
constexpr std::size_t kMostDigits = 12;

std::string lowered(std::string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

bool opensSection(std::string_view code) {
    constexpr std::array<std::string_view, 5> kCodes = {"A00", "D00", "F00", "H00", "I00"};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

bool closesSection(std::string_view code) {
    return code.size() == 3 && code.ends_with("99") && std::string_view("ADFHI").find(code[0]) != std::string::npos;
}

std::string decoded(std::string_view bytes) {
    std::string text;
    sima::decodeCp932(text, bytes.substr(0, kLongestLine));
    return text;
}

} // namespace

std::optional<std::int64_t> recordNumberIn(std::string_view line) {
    const auto end = std::find_if_not(line.begin(), line.end(), sima::isDigit);
    const auto digits = static_cast<std::size_t>(end - line.begin());
    if (digits < kFewestDigits || digits > kMostDigits) {
        return std::nullopt;
    }
    const std::string_view behind = line.substr(digits);
    if (!behind.starts_with(' ') && !behind.starts_with("行目")) {
        return std::nullopt;
    }
    return std::stoll(std::string(line.substr(0, digits)));
}

std::string sourceOfLog(const std::string& logPath) {
    const std::filesystem::path log = sima::pathOf(logPath);
    std::string name = log.filename().string();
    if (!name.ends_with(kLogEnd)) {
        return {};
    }
    name.resize(name.size() - kLogEnd.size());
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(log.parent_path(), error)) {
        if (entry.path().stem().string() == name && lowered(entry.path().extension().string()) == ".sim" &&
            entry.is_regular_file(error)) {
            return entry.path().string();
        }
    }
    return {};
}

std::optional<SourceExcerpt> readSource(const std::string& path, std::int64_t number, std::int64_t around) {
    std::ifstream file(sima::pathOf(path), std::ios::binary);
    SourceExcerpt excerpt;
    excerpt.first = std::max<std::int64_t>(1, number - around);
    std::string line;
    std::string section;
    std::string crossSection;
    for (std::int64_t at = 1; at <= number + around && std::getline(file, line); ++at) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        const std::string_view code = sima::trim(std::string_view(line).substr(0, line.find(',')));
        if (at <= number && opensSection(code)) {
            section = line;
            crossSection.clear();
        } else if (at <= number && code == "I01") {
            crossSection = line;
        }
        if (at >= excerpt.first) {
            excerpt.lines.push_back(decoded(line));
        }
        if (at == number) {
            excerpt.record = {number, decoded(line), decoded(section), decoded(crossSection)};
        }
        if (at < number && closesSection(code)) {
            section.clear();
            crossSection.clear();
        }
    }
    if (excerpt.record.number == 0) {
        return std::nullopt;
    }
    return excerpt;
}

} // namespace fenmark::desk
