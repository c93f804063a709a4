// The two passes over a file: the full read and the preview.
#include "sima/reader/sima_reader.h"

#include "sima/reader/file_pass.h"
#include "sima/reader/section_readers.h"
#include "sima/records/sections.h"
#include "sima/text/number.h"
#include "sima/text/path.h"
#include "sima/validators/validators.h"

#include <array>

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
        file.passOver(PassedKind::Comment);
        break;
    case recordCode("C00"):
        file.passOver(PassedKind::OutsideAnySection);
        break;
    default:
        file.passOver(PassedKind::UnknownCode);
        break;
    }
}

struct SectionReader {
    Section section;
    void (*read)(FilePass& file);
    void (*preview)(FilePass& file);
};
constexpr std::array<SectionReader, kSections.size()> kReaders = {{
    {Section::Coordinates, readCoordinateSection, previewCoordinateSection},
    {Section::Lots, readLotSection, previewLotSection},
    {Section::Route, readRoute, previewRoute},
    {Section::Longitudinal, readLongitudinalSection, previewLongitudinalSection},
    {Section::CrossSection, readCrossSection, previewCrossSection},
}};
static_assert(inOrderOfSections(kReaders));

// Of the section that the record opens; null if it opens none.
const SectionReader* readerFor(RecordCode code) {
    const SectionEntry* const opened = sectionOpenedBy(code);
    return opened == nullptr ? nullptr : &kReaders[static_cast<std::size_t>(opened->section)];
}

void readTopLevel(FilePass& file) {
    while (file.next()) {
        if (const SectionReader* const reader = readerFor(file.code())) {
            reader->read(file);
        } else if (file.code() == recordCode("G00")) {
            readVersion(file);
        } else {
            passOverAtTopLevel(file);
        }
    }
}

// Validates nothing, logs nothing, draws nothing: counts what the file holds.
void previewTopLevel(FilePass& file) {
    while (file.next()) {
        if (const SectionReader* const reader = readerFor(file.code())) {
            reader->preview(file);
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
