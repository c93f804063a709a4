// The lines of a SIMA file that a log speaks of.
#include "desk/session/source_record.h"

#include "platform/files.h"
#include "sima/records/sections.h"
#include "sima/text/cp932.h"
#include "sima/text/encoding_choice.h"
#include "sima/text/number.h"
#include "sima/text/path.h"
#include "values/ascii_case.h"

#include <QString>
#include <QStringDecoder>

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

bool opensSection(std::string_view code) {
    return sima::sectionOpenedBy(sima::recordCode(code)) != nullptr;
}

bool closesSection(std::string_view code) {
    return sima::sectionEndedBy(sima::recordCode(code)) != nullptr;
}

// The next line without its end; its bytes are those of the file. In UTF-16 an end of line has two bytes.
bool nextLine(std::istream& file, sima::Encoding encoding, std::string& line) {
    if (encoding != sima::Encoding::Utf16Le && encoding != sima::Encoding::Utf16Be) {
        if (!std::getline(file, line)) {
            return false;
        }
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        return true;
    }
    const bool lowFirst = encoding == sima::Encoding::Utf16Le;
    line.clear();
    bool any = false;
    for (std::array<char, 2> unit{}; file.read(unit.data(), unit.size());) {
        any = true;
        const char low = lowFirst ? unit[0] : unit[1];
        const char high = lowFirst ? unit[1] : unit[0];
        if (high == 0 && low == '\n') {
            break;
        }
        if (high != 0 || low != '\r') {
            line.append(unit.data(), unit.size());
        }
    }
    return any;
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
    if (!isNamedAsLog(name)) {
        return {};
    }
    name.resize(name.size() - kLogEnd.size());
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(log.parent_path(), error)) {
        if (entry.path().stem().string() == name && asciiLower(entry.path().extension().string()) == ".sim" &&
            entry.is_regular_file(error)) {
            return entry.path().string();
        }
    }
    return {};
}

bool isNamedAsLog(const std::string& path) {
    return path.ends_with(kLogEnd);
}

bool isOrdinaryFile(const std::string& path) {
    return platform::lookUp(path).kind == platform::PathKind::File;
}

sima::Encoding encodingOfFile(const std::string& path, std::string_view setting) {
    if (const auto named = sima::encodingNamed(setting)) {
        return *named;
    }
    if (!isOrdinaryFile(path)) {
        return sima::Encoding::Cp932;
    }
    return sima::chooseEncoding(path).encoding;
}

std::string decodedText(std::string_view bytes, sima::Encoding encoding) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    const auto size = static_cast<qsizetype>(bytes.size());
    switch (encoding) {
    case sima::Encoding::Utf8:
        bytes.remove_prefix(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())).toStdString();
    case sima::Encoding::Utf16Le:
    case sima::Encoding::Utf16Be: {
        QStringDecoder decoder(encoding == sima::Encoding::Utf16Le ? QStringConverter::Utf16LE
                                                                   : QStringConverter::Utf16BE);
        const QString text = decoder.decode(QByteArrayView(bytes.data(), size));
        return text.toStdString();
    }
    case sima::Encoding::Cp932:
        break;
    }
    std::string text;
    sima::decodeCp932(text, bytes);
    return text;
}

std::optional<SourceExcerpt> readSource(const std::string& path, std::int64_t number, std::int64_t around,
                                        std::string_view setting) {
    if (!isOrdinaryFile(path)) {
        return std::nullopt;
    }
    const sima::Encoding encoding = encodingOfFile(path, setting);
    const auto decoded = [&](std::string_view bytes) { return decodedText(bytes.substr(0, kLongestLine), encoding); };
    std::ifstream file(sima::pathOf(path), std::ios::binary);
    SourceExcerpt excerpt;
    excerpt.first = std::max<std::int64_t>(1, number - around);
    std::string line;
    std::string section;
    std::string crossSection;
    constexpr std::size_t kCodeBytes = 64; // blanks, a byte order mark and the code of a record
    for (std::int64_t at = 1; at <= number + around && nextLine(file, encoding, line); ++at) {
        const std::string head = decodedText(std::string_view(line).substr(0, kCodeBytes), encoding);
        const std::string_view code = sima::trim(std::string_view(head).substr(0, head.find(',')));
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
