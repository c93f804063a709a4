// The import log: process lines and four-line error blocks, collected in memory and written out once.
#pragma once

#include "sima/log/process_lines.h"
#include "sima/log/text_list.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fenmark::sima {

// The log's file cannot be created or written.
class LogFailure : public std::system_error {
  public:
    using std::system_error::system_error;
};

class LogFile;

class SimaLog {
  public:
    void coordinateBegin(std::int32_t line);
    void lotBegin(std::int32_t line);
    void lotEnd(std::int32_t line, bool ok, std::int32_t pointCount, bool hasTriangleData);
    void routeBegin(std::int32_t line);
    void routeEnd(std::int32_t line, bool ok, std::int32_t routeType, std::int32_t count, std::string_view name);
    void version(std::int32_t line, std::string_view text);
    void longitudinalBegin(std::int32_t line, std::string_view alignmentName);
    void longitudinalEnd(std::int32_t line, bool ok, std::int32_t pointCount);
    void crossSectionBegin(std::int32_t line, std::string_view alignmentName);
    void crossSectionItem(std::int32_t line, std::string_view sectionName);
    void crossSectionPoints(std::int32_t count);
    void crossSectionEnd(std::int32_t line, bool ok, std::int32_t pointCount);
    void finished(std::int32_t line);

    // Adds the four lines of a block and raises the counter.
    void errorBlock(std::string_view firstText, std::string_view secondText);

    std::int32_t errorCount() const { return errorCount_; }
    const ProcessLines& lines() const { return lines_; }
    const TextList& errors() const { return errors_; }
    const std::string& fileName() const { return fileName_; }

    // The path less its last four characters, with "_Input.log" behind it.
    void setFileName(std::string_view path);
    // Another file in its place, of any name: for a program that moves the log beside its input later.
    void setFile(std::string_view path);

    // These three raise LogFailure if the file cannot be created or written. Beside its input the log takes the place
    // of what bore its name, a link too, and on a failure leaves it as it was. Where the folder does not allow that, a
    // log that is there is written over.
    void writeAll() const;
    void writeErrorsOnly() const;
    void appendLines(const std::vector<std::string>& lines) const;

    // Empties lines and errors; the counter stays.
    void clear();

  private:
    void appendAlignment(LineKind kind, std::string_view alignmentName);
    void appendResult(bool ok, std::int32_t pointCount, LineKind failed);
    void appendErrors(LogFile& file) const;
    std::error_code replace(const std::function<void(LogFile& file)>& write) const;
    void writeAnew(const std::function<void(LogFile& file)>& write) const;

    ProcessLines lines_;
    TextList errors_;
    std::string fileName_;
    bool isBesideInput_ = true;
    std::int32_t errorCount_ = 0;
};

// What stands between the last separator and the last "." of a path.
std::string baseNameOf(std::string_view path);

} // namespace fenmark::sima
