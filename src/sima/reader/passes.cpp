// The two passes over a file: the full read and the preview.
#include "sima/reader/sima_reader.h"

#include "sima/reader/file_pass.h"
#include "sima/reader/section_readers.h"
#include "sima/text/number.h"
#include "sima/text/path.h"
#include "sima/validators/validators.h"

namespace fenmark::sima {

namespace {

// The path less its extension and its folders.
std::string baseNameOfFile(std::string_view file) {
    const std::string text = textOfPath(file);
    std::string_view path = text;
    const std::size_t point = path.rfind('.');
    if (point != std::string_view::npos && point > 0) {
        path = path.substr(0, point);
    }
    return std::string(path.substr(fileNameStart(path)));
}

void readVersion(FilePass& file) {
    const Record record = file.record();
    if (validateG00(file.log(), record) == 0) {
        file.log().version(record.line, trim(record.fields[1]));
    } else {
        file.updateErrorCount();
    }
}

// What stands outside the sections and is no opening record.
void passOverAtTopLevel(FilePass& file) {
    switch (file.code()) {
    case kNoCode:
        break;
    case recordCode("Z00"):
        file.passOver("comment");
        break;
    case recordCode("C00"):
        file.passOver("outside any section");
        break;
    default:
        file.passOver("unknown code at top level");
        break;
    }
}

void readTopLevel(FilePass& file) {
    while (file.next()) {
        switch (file.code()) {
        case recordCode("A00"):
            readCoordinateSection(file);
            break;
        case recordCode("D00"):
            readLotSection(file);
            break;
        case recordCode("F00"):
            readRoute(file);
            break;
        case recordCode("H00"):
            readLongitudinalSection(file);
            break;
        case recordCode("I00"):
            readCrossSection(file);
            break;
        case recordCode("G00"):
            readVersion(file);
            break;
        default:
            passOverAtTopLevel(file);
            break;
        }
    }
}

// Validates nothing, logs nothing, draws nothing: counts what the file holds.
void previewTopLevel(FilePass& file) {
    while (file.next()) {
        switch (file.code()) {
        case recordCode("A00"):
            previewCoordinateSection(file);
            break;
        case recordCode("D00"):
            previewLotSection(file);
            break;
        case recordCode("F00"):
            previewRoute(file);
            break;
        case recordCode("H00"):
            previewLongitudinalSection(file);
            break;
        case recordCode("I00"):
            previewCrossSection(file);
            break;
        default:
            break;
        }
    }
}

// Sets a pointer for as long as a pass lasts, however it ends.
class Lent {
  public:
    Lent(host::HostBoundary*& place, host::HostBoundary* value) : place_(place) { place_ = value; }
    ~Lent() { place_ = nullptr; }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

  private:
    host::HostBoundary*& place_;
};

} // namespace

std::int32_t SimaReader::runPass(std::string_view path, const ReadContext& context, bool full) {
    filePath = path;
    baseName = baseNameOfFile(path);
    reset();
    FilePass file(*this, context);
    if (!file.open(filePath)) {
        return -1;
    }
    const Lent host(passHost_.host, context.host);
    if (full) {
        readTopLevel(file);
    } else {
        previewTopLevel(file);
    }
    file.close();
    if (full) {
        log.finished(lineNumber);
    }
    return 0;
}

std::int32_t SimaReader::fullRead(std::string_view path, const ReadContext& context) {
    return runPass(path, context, true);
}

std::int32_t SimaReader::previewScan(std::string_view path, const ReadContext& context) {
    return runPass(path, context, false);
}

} // namespace fenmark::sima
