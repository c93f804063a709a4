// The import log.
#include "sima/log/sima_log.h"

#include "platform/files.h"
#include "sima/records/import_options.h"
#include "sima/text/cp932.h"
#include "sima/text/path.h"
#include "sima/text/utf8.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <utility>

namespace fenmark::sima {

namespace {

constexpr std::string_view kBanner = "----- Brindlow　Version1.0 -----\n";
constexpr std::string_view kErrorRule = "ERROR --------------------------------------------------------";
constexpr std::string_view kClosingRule = "--------------------------------------------------------------";

// Whether it is a file that no link leads to.
bool isFileOfOneName(const std::string& path) {
    std::error_code error;
    const std::filesystem::path file = pathOf(path);
    return std::filesystem::is_regular_file(std::filesystem::symlink_status(file, error)) &&
           std::filesystem::hard_link_count(file, error) == 1;
}

} // namespace

// Gathers encoded lines and writes them in large pieces.
class LogFile {
  public:
    // A failure names the log by the name that it is to bear.
    LogFile(const std::string& path, std::ios::openmode mode, std::string name) : name_(std::move(name)) {
        errno = 0;
        file_.open(pathOf(path), mode | std::ios::out | std::ios::binary);
        check();
    }

    // The text and a line feed; every line feed becomes CR LF, those inside the text too.
    void writeLine(std::string_view text) {
        encodeCp932Lines(buffer_, text);
        buffer_ += "\r\n";
        if (buffer_.size() >= kPiece) {
            flush();
        }
    }
    void writeLines(const ProcessLines& lines) {
        lines.encode(buffer_, kPiece, [this] { flush(); });
    }

    void close() {
        flush();
        file_.close();
        check();
    }

  private:
    static constexpr std::size_t kPiece = std::size_t{1} << 18;

    void flush() {
        file_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        buffer_.clear();
        check();
    }
    void check() {
        if (file_.fail()) {
            throw LogFailure(errno != 0 ? errno : EIO, std::generic_category(), name_);
        }
    }

    std::string name_;
    std::ofstream file_;
    std::string buffer_;
};

void SimaLog::coordinateBegin(std::int32_t line) {
    lines_.append(LineKind::CoordinateBegin, line);
}

void SimaLog::lotBegin(std::int32_t line) {
    lines_.append(LineKind::LotBegin, line);
}

void SimaLog::lotEnd(std::int32_t line, bool ok, std::int32_t pointCount, bool hasTriangleData) {
    lines_.append(LineKind::LotEnd, line);
    if (!ok) {
        lines_.append(LineKind::LotFailed);
    } else if (hasTriangleData) {
        lines_.append(LineKind::LotPointsWithTriangles, pointCount);
        lines_.append(LineKind::LotTriangles);
    } else {
        lines_.append(LineKind::LotPoints, pointCount);
    }
}

void SimaLog::routeBegin(std::int32_t line) {
    lines_.append(LineKind::RouteBegin, line);
}

void SimaLog::routeEnd(std::int32_t line, bool ok, std::int32_t routeType, std::int32_t count, std::string_view name) {
    lines_.append(LineKind::RouteEnd, line);
    if (!ok) {
        lines_.append(becomesAlignment(routeType) ? LineKind::RouteAlignmentFailed : LineKind::RoutePolylineFailed);
    } else if (becomesAlignment(routeType)) {
        lines_.append(LineKind::RouteAlignment, 0, name);
        lines_.append(LineKind::RouteElements, count);
    } else {
        lines_.append(LineKind::RoutePoints, count);
    }
}

void SimaLog::version(std::int32_t line, std::string_view text) {
    lines_.append(LineKind::Version, line, text);
}

void SimaLog::longitudinalBegin(std::int32_t line, std::string_view alignmentName) {
    lines_.append(LineKind::LongitudinalBegin, line);
    appendAlignment(LineKind::LongitudinalAlignment, alignmentName);
}

void SimaLog::longitudinalEnd(std::int32_t line, bool ok, std::int32_t pointCount) {
    lines_.append(LineKind::LongitudinalEnd, line);
    appendResult(ok, pointCount, LineKind::LongitudinalFailed);
}

void SimaLog::crossSectionBegin(std::int32_t line, std::string_view alignmentName) {
    lines_.append(LineKind::CrossSectionBegin, line);
    appendAlignment(LineKind::CrossSectionAlignment, alignmentName);
}

void SimaLog::crossSectionItem(std::int32_t line, std::string_view sectionName) {
    lines_.append(LineKind::CrossSectionItem, line, sectionName);
}

void SimaLog::crossSectionPoints(std::int32_t count) {
    lines_.append(LineKind::CrossSectionPoints, count);
}

void SimaLog::crossSectionEnd(std::int32_t line, bool ok, std::int32_t pointCount) {
    lines_.append(LineKind::CrossSectionEnd, line);
    appendResult(ok, pointCount, LineKind::CrossSectionFailed);
}

void SimaLog::finished(std::int32_t line) {
    lines_.append(LineKind::Finished, line);
}

// The line without a name begins with ERROR and is no error block: it does not count.
void SimaLog::appendAlignment(LineKind kind, std::string_view alignmentName) {
    if (alignmentName.empty()) {
        lines_.append(LineKind::NoAlignment);
    } else {
        lines_.append(kind, 0, alignmentName);
    }
}

void SimaLog::appendResult(bool ok, std::int32_t pointCount, LineKind failed) {
    lines_.append(ok ? LineKind::ResultPoints : LineKind::ResultPointsFailed, pointCount);
    if (!ok) {
        lines_.append(failed);
    }
}

void SimaLog::errorBlock(std::string_view firstText, std::string_view secondText) {
    errors_.appendLiteral(kErrorRule);
    errors_.append(firstText);
    errors_.append(secondText);
    errors_.appendLiteral(kClosingRule);
    ++errorCount_;
}

void SimaLog::setFileName(std::string_view path) {
    fileName_ = withoutLastCharacters(path, 4);
    fileName_ += "_Input.log";
    isBesideInput_ = true;
}

void SimaLog::setFile(std::string_view path) {
    fileName_ = path;
    isBesideInput_ = false;
}

void SimaLog::appendErrors(LogFile& file) const {
    for (std::size_t i = 0; i < errors_.size(); ++i) {
        file.writeLine(errors_[i]);
    }
}

std::error_code SimaLog::replace(const std::function<void(LogFile& file)>& write) const {
    platform::TemporaryFile temporary;
    if (const std::error_code error = temporary.make(fileName_, platform::AtLink::Replace)) {
        return error;
    }
    LogFile file(temporary.path(), std::ios::trunc, fileName_);
    write(file);
    file.close();
    return temporary.putInPlace();
}

void SimaLog::writeAnew(const std::function<void(LogFile& file)>& write) const {
    if (isBesideInput_) {
        const std::error_code error = replace(write);
        if (!error) {
            return;
        }
        // A folder may refuse new files and names, and the log in it may be written all the same.
        if (!platform::isDenied(error) || !isFileOfOneName(fileName_)) {
            throw LogFailure(error, fileName_);
        }
    }
    LogFile file(fileName_, std::ios::trunc, fileName_);
    write(file);
    file.close();
}

void SimaLog::writeAll() const {
    writeAnew([this](LogFile& file) {
        file.writeLine(kBanner);
        file.writeLines(lines_);
        appendErrors(file);
    });
}

void SimaLog::writeErrorsOnly() const {
    writeAnew([this](LogFile& file) { appendErrors(file); });
}

void SimaLog::appendLines(const std::vector<std::string>& lines) const {
    LogFile file(fileName_, std::ios::app, fileName_);
    for (const std::string& line : lines) {
        file.writeLine(line);
    }
    file.close();
}

void SimaLog::clear() {
    lines_.clear();
    errors_.clear();
}

std::string baseNameOf(std::string_view path) {
    const std::string_view name = path.substr(fileNameStart(path));
    return std::string(name.substr(0, name.rfind('.')));
}

} // namespace fenmark::sima
