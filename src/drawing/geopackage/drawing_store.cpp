// A drawing on disk: opening, saving, and what can go wrong.
#include "drawing/geopackage/drawing_store.h"

#include "drawing/geopackage/drawing_reader.h"
#include "drawing/geopackage/drawing_writer.h"
#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/schema.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "platform/files.h"

#include <new>
#include <random>

namespace fenmark::drawing {

std::string storeMessage(StoreError error, const std::string& path, const std::string& detail) {
    const auto told = [&](const char* text) {
        return path + ": " + text + (detail.empty() ? "" : " (" + detail + ")");
    };
    switch (error) {
    case StoreError::None:
        return {};
    case StoreError::NotFound:
        return path + ": there is no such drawing";
    case StoreError::NoFolder:
        return path + ": cannot be made: its folder does not exist";
    case StoreError::NotAFile:
        return path + ": is not a file";
    case StoreError::NotADrawing:
        return path + ": is not a drawing";
    case StoreError::NotOurs:
        return told("is a database, but not a drawing of this program");
    case StoreError::NotReadable:
        return told("cannot be read");
    case StoreError::NotWritable:
        return told("cannot be written");
    case StoreError::DiskFull:
        return path + ": the disk is full; the drawing on disk is as it was";
    case StoreError::Locked:
        return path + ": is held by another program";
    case StoreError::Damaged:
        return told("is damaged");
    case StoreError::ChangedOutside:
        return path + ": was changed by another program since it was opened";
    case StoreError::AppearedMeanwhile:
        return path + ": was made by another program meanwhile; it is left as that program made it";
    case StoreError::DanglingLink:
        return told("is a link that leads to nothing");
    case StoreError::Unreachable:
        return told("cannot be looked up");
    case StoreError::Reshaped:
        return told("was changed by another program and cannot be used as it is");
    case StoreError::Failed:
        break;
    }
    return told("could not be read or written");
}

namespace {

StoreResult failed(StoreError error, const std::string& path, const std::string& detail = {}) {
    return {error, storeMessage(error, path, detail)};
}

// Two saves never bear the same one.
std::string newStamp() {
    std::random_device random;
    return std::to_string(random()) + "-" + std::to_string(random());
}

void throwIf(const std::error_code& error) {
    if (error) {
        const StoreError meaning = platform::isDiskFull(error) ? StoreError::DiskFull
                                   : platform::isHeld(error)   ? StoreError::Locked
                                   : platform::isDenied(error) ? StoreError::NotWritable
                                                               : StoreError::Failed;
        throw StoreFailure{meaning, platform::reasonOf(error)};
    }
}

// Runs what may throw inside the store.
template <typename Action>
StoreResult guarded(const std::string& path, Action action) {
    try {
        action();
        return {};
    } catch (const StoreFailure& failure) {
        return failed(failure.error, path, failure.detail);
    } catch (const std::bad_alloc&) {
        return failed(StoreError::Failed, path, "out of memory");
    }
}

// A program that crashed while it wrote leaves a journal; the first to lock the file for writing restores the file from
// it. A journal that still lies there then belongs to nobody. Where this cannot be done, reading tells whether it
// had to be.
void restoreAfterCrash(const std::string& path) {
    try {
        Connection connection(path, Connection::Mode::ReadWrite);
        connection.execute("BEGIN EXCLUSIVE");
        removeJournal(path);
        connection.execute("ROLLBACK");
    } catch (const StoreFailure&) {
    }
}

} // namespace

DrawingStore::DrawingStore() = default;
DrawingStore::~DrawingStore() = default;

StoreResult DrawingStore::openOrBegin(const std::string& path, Drawing& drawing, Load load) {
    const platform::PathState state = platform::lookUp(path);
    if (state.kind != platform::PathKind::Missing) {
        return open(path, drawing, load);
    }
    if (const PathCheck check = checkReplaceable(path); !check) {
        return failed(check.error, path, check.detail);
    }
    path_ = path;
    begun_ = true;
    notes_.clear();
    return {};
}

StoreResult DrawingStore::open(const std::string& path, Drawing& drawing, Load load) {
    if (const PathCheck check = checkReadable(path); !check) {
        return failed(check.error, path, check.detail);
    }
    return guarded(path, [&] {
        try {
            if (hasJournal(path)) {
                restoreAfterCrash(path);
            }
            // Nobody writes a log that is not there: then the file itself is all, and needs no lock file beside it.
            const bool alone = usesWriteAheadLog(path) && !hasWriteAheadLog(path);
            Connection connection(path, alone ? Connection::Mode::ReadAlone : Connection::Mode::Read);
            DrawingReader reader(connection);
            drawing = reader.read(load);
            savedId_ = reader.head().lastId;
            stamp_ = reader.head().stamp;
            notes_ = reader.notes();
            newIdentifiers_ = reader.newIdentifiers();
            highestId_ = drawing.lastId();
        } catch (StoreFailure& failure) {
            if (failure.error == StoreError::NotWritable) {
                failure.error = StoreError::NotReadable;
                if (hasJournal(path)) {
                    failure.detail = "a save was broken off; open it once where it can be written";
                }
            }
            throw;
        }
        path_ = path;
        begun_ = false;
    });
}

bool DrawingStore::hasChanges(const Drawing& drawing) const {
    return path_.empty() || begun_ || DrawingWriter::hasChanges(drawing);
}

StoreResult DrawingStore::save(const std::string& path, Drawing& drawing, const WriteProgress& progress) {
    if (path != path_) {
        return create(path, drawing, progress, false);
    }
    if (begun_) {
        return create(path, drawing, progress, true);
    }
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Missing) {
        return create(path, drawing, progress, true);
    }
    return append(path, drawing, progress);
}

namespace {

// Everything in a file that takes its name when every byte is on the disk.
void writeWhole(platform::TemporaryFile& file, const std::string& path, const Drawing& drawing,
                const WriteProgress& progress, const std::string& stamp) {
    throwIf(file.make(path));
    {
        Connection connection(file.path(), Connection::Mode::Create);
        {
            const ShadowTablesOpen open(connection); // else a journal cannot be done without
            connection.execute(sql::kPrepareNewFile);
        }
        connection.execute("BEGIN");
        connection.execute(sql::kSchema);
        DrawingWriter(connection, drawing, DrawingWriter::From::Nothing, progress).write({}, stamp);
        connection.execute("COMMIT");
    }
    throwIf(file.complete());
}

} // namespace

StoreResult DrawingStore::writeCopy(const std::string& path, const Drawing& drawing) {
    return guarded(path, [&] {
        platform::TemporaryFile file;
        writeWhole(file, path, drawing, {}, newStamp());
        throwIf(file.putInPlace());
    });
}

// Made under another name in the same folder; it takes its name when every byte is on the disk.
StoreResult DrawingStore::create(const std::string& path, Drawing& drawing, const WriteProgress& progress,
                                 bool mustBeNew) {
    if (!drawing.entitiesLoaded()) {
        return failed(StoreError::Failed, path, "the drawing was opened without its points and polylines");
    }
    if (const PathCheck check = checkReplaceable(path); !check) {
        return failed(check.error, path, check.detail);
    }
    const std::string stamp = newStamp();
    const StoreResult result = guarded(path, [&] {
        platform::TemporaryFile file;
        writeWhole(file, path, drawing, progress, stamp);
        if (!mustBeNew) {
            HeldDrawing held(file.target()); // nobody appends to the file that goes
            if (!platform::kOpenFilesCanBeReplaced) {
                held.letGo(); // it was seen that nobody holds it; who comes in between is in the file's way
            }
            throwIf(file.putInPlace());
            return;
        }
        if (platform::lookUp(file.target()).kind == platform::PathKind::Missing) {
            const HeldDrawing none(file.target()); // removes a journal that was left alone
        }
        const std::error_code error = file.putInPlace(platform::AtTarget::Refuse);
        if (error == std::errc::file_exists) {
            throw StoreFailure{StoreError::AppearedMeanwhile, {}};
        }
        throwIf(error);
    });
    if (result) {
        path_ = path;
        begun_ = false;
        stamp_ = stamp;
        notes_.clear();
        newIdentifiers_.clear();
        savedId_ = highestId_ = drawing.lastId();
        DrawingWriter::markSaved(drawing);
    }
    return result;
}

StoreResult DrawingStore::append(const std::string& path, Drawing& drawing, const WriteProgress& progress) {
    if (const PathCheck check = checkReadable(path); !check) {
        return failed(check.error, path, check.detail);
    }
    if (!hasChanges(drawing)) {
        return {};
    }
    if (const PathCheck check = checkWritable(path); !check) {
        return failed(check.error, path, check.detail);
    }
    const std::string stamp = newStamp();
    const StoreResult result = guarded(path, [&] {
        Connection connection(path, Connection::Mode::ReadWrite);
        connection.execute(sql::kPrepareOldFile);
        connection.execute("BEGIN IMMEDIATE");
        try {
            // Our rows would take the identifiers of features that a GIS added meanwhile.
            const DrawingHead head = DrawingReader::readHead(connection);
            if (connection.hasMoved() || head.stamp != stamp_ || head.lastId != savedId_ ||
                DrawingReader::readHighestId(connection) > highestId_) {
                throw StoreFailure{StoreError::ChangedOutside, {}};
            }
            DrawingWriter(connection, drawing, DrawingWriter::From::Saved, progress).write(newIdentifiers_, stamp);
            connection.execute("COMMIT");
        } catch (...) {
            sqlite3_exec(connection.get(), "ROLLBACK", nullptr, nullptr, nullptr); // may have been rolled back already
            throw;
        }
    });
    // A commit that could not end leaves its journal: what that restores is restored now.
    if (!result && result.error != StoreError::Locked && hasJournal(path)) {
        restoreAfterCrash(path);
    }
    if (result) {
        stamp_ = stamp;
        newIdentifiers_.clear();
        savedId_ = highestId_ = drawing.lastId();
        DrawingWriter::markSaved(drawing);
    }
    return result;
}

} // namespace fenmark::drawing
