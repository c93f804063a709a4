// What the store asks about the files of a drawing before SQLite sees them.
#pragma once

#include "drawing/geopackage/drawing_store.h"
#include "drawing/geopackage/sqlite_handles.h"

#include <optional>
#include <string>

namespace fenmark::drawing {

// Each throws a StoreFailure where it does not hold: the path is a file that may be read;
void requireReadable(const std::string& path);
// the file and its folder may be written;
void requireWritable(const std::string& path);
// a file may be made there, or what is there is a file that may be replaced.
void requireReplaceable(const std::string& path);
// True if a journal lies beside the file, or if nobody can say.
bool hasJournal(const std::string& path);
void removeJournal(const std::string& path);
// How to open a file to read it in one go. Nobody writes a write-ahead log that the file's header asks for and that is not
// there: then the file itself is all, and needs no lock file beside it.
Connection::Mode modeToRead(const std::string& path);

// Removes the files of SQLite beside a path that bears no database: they belong to nobody, and would be played into the
// file that comes. In the folder's turn, or they may be those of a drawing that another program puts there just now.
void removeFilesBeside(const std::string& path);

// Holds a database that is about to be replaced, so that nobody can append to a file that goes, and leaves no journal
// that would be taken for one of the file that comes. Throws a StoreFailure if another program holds it or it cannot be
// read. A file that is no database, or a damaged one, is let alone.
class HeldDrawing {
  public:
    explicit HeldDrawing(const std::string& path);
    void letGo() { connection_.reset(); }

  private:
    std::optional<Connection> connection_;
};

} // namespace fenmark::drawing
