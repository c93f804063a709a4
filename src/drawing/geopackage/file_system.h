// What the store needs of the file system: questions about a path, and a file that takes its name when it is complete.
#pragma once

#include "drawing/geopackage/drawing_store.h"

#include <string>

namespace fenmark::drawing {

bool fileExists(const std::string& path);
// None if the path is a file that may be read.
StoreError checkReadable(const std::string& path);
// None if the file and its folder may be written.
StoreError checkWritable(const std::string& path);
// None if a file may be made there, or what is there is a file that may be replaced.
StoreError checkReplaceable(const std::string& path);
// What the system says of a file that checkWritable or checkReplaceable takes for NotWritable.
std::string whyNotWritable(const std::string& path);
// True if a journal lies beside the file.
bool hasJournal(const std::string& path);
void removeJournal(const std::string& path);
// True if the file's header asks for a write-ahead log.
bool usesWriteAheadLog(const std::string& path);
bool hasWriteAheadLog(const std::string& path);

// Removes what processes that were killed while they made this file left behind.
void removeLeftovers(const std::string& path);

// A name beside a file, of this process alone. The file there is removed at the end if it was not renamed.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }
    // Brings the file to the disk and renames it over the target. Throws a StoreFailure.
    void replace(const std::string& target) const;

  private:
    std::string path_;
};

} // namespace fenmark::drawing
