// A drawing on disk: opening, saving, and what can go wrong.
#include "drawing/geopackage/drawing_store.h"

#include "drawing/geopackage/drawing_reader.h"
#include "drawing/geopackage/drawing_texts.h"
#include "drawing/geopackage/drawing_writer.h"
#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/schema.h"
#include "drawing/geopackage/soundness.h"
#include "drawing/geopackage/sqlite_handles.h"
#include "platform/files.h"
#include "platform/folder_turn.h"
#include "values/code_table.h"

#include <array>
#include <cstddef>
#include <new>
#include <optional>
#include <random>
#include <string_view>

namespace fenmark::drawing {

namespace {

struct FailureText {
    Failure failure;
    bool hasDetail; // stands behind it
    std::string_view english;
    std::string_view japanese;
};

constexpr std::array<FailureText, static_cast<std::size_t>(kLastFailure) + 1> kFailureTexts = {{
    {Failure::None, false, "nothing failed", "失敗はありません"},
    {Failure::NotFound, false, "there is no such drawing", "図面がありません"},
    {Failure::NoFolder, false, "cannot be made: its folder does not exist", "フォルダがないため作れません"},
    {Failure::NotAFile, false, "is not a file", "ファイルではありません"},
    {Failure::NotADrawing, false, "is not a drawing", "図面ではありません"},
    {Failure::NotOurs, true, "is a database, but not a drawing of this program",
     "データベースですが、このプログラムの図面ではありません"},
    {Failure::LaterFormat, false, "was made by a later version of this program",
     "このプログラムの新しい版で作られた図面です"},
    {Failure::NotReadable, true, "cannot be read", "読めません"},
    {Failure::NotWritable, true, "cannot be written", "書き込めません"},
    {Failure::DiskFull, false, "the disk is full; the drawing on disk is as it was",
     "ディスクの空きがありません。図面ファイルは元のままです"},
    {Failure::Locked, false, "is held by another program", "他のプログラムが使用しています"},
    {Failure::Damaged, true, "is damaged", "壊れています"},
    {Failure::ChangedOutside, false, "was changed by another program since it was opened",
     "開いた後に他のプログラムが変更しました"},
    {Failure::AppearedMeanwhile, false, "was made by another program meanwhile; it is left as that program made it",
     "その間に他のプログラムが作成しました。そのファイルは変更していません"},
    {Failure::DanglingLink, true, "is a link that leads to nothing", "リンク先がありません"},
    {Failure::Unreachable, true, "cannot be looked up", "調べられません"},
    {Failure::Reshaped, true, "was changed by another program and cannot be used as it is",
     "他のプログラムが変更したため、このままでは使えません"},
    {Failure::Failed, true, "could not be read or written", "読み書きできません"},
}};

static_assert(inCodeOrder(kFailureTexts, &FailureText::failure) && inBothLanguages(kFailureTexts),
              "every failure has its texts, in the order of the enumeration");

std::string failureLine(const std::string& path, std::string_view text, const std::string& detail) {
    std::string line = path + ": ";
    line.append(text);
    return detail.empty() ? line : line + " (" + detail + ")";
}

} // namespace

Worded storeMessage(Failure failure, const std::string& path, const Worded& detail) {
    if (failure == Failure::None) {
        return {};
    }
    const FailureText& text = kFailureTexts[static_cast<std::size_t>(failure)];
    const Worded shown = text.hasDetail ? detail : Worded();
    return {failureLine(path, text.english, shown.english), failureLine(path, text.japanese, shown.japanese)};
}

namespace {

Outcome failedAt(const std::string& path, Failure failure, const Worded& detail = {}) {
    return failed(storeMessage(failure, path, detail), failure);
}

// Two saves never bear the same one.
std::string newStamp() {
    std::random_device random;
    return std::to_string(random()) + "-" + std::to_string(random());
}

void throwIf(const std::error_code& error) {
    if (error) {
        const Failure meaning = platform::isDiskFull(error) ? Failure::DiskFull
                                : platform::isHeld(error)   ? Failure::Locked
                                : platform::isDenied(error) ? Failure::NotWritable
                                                            : Failure::Failed;
        throw StoreFailure{meaning, platform::wordedReason(error)};
    }
}

// Runs what may throw inside the store.
template <typename Action>
Outcome guarded(const std::string& path, Action action) {
    try {
        action();
        return {};
    } catch (const StoreFailure& failure) {
        return failedAt(path, failure.failure, failure.detail);
    } catch (const std::bad_alloc&) {
        return failedAt(path, Failure::Failed, {"out of memory", "メモリが足りません"});
    }
}

// SQLite's identifiers end at 2^63. A row that another program gave one near it leaves none for what comes, and one
// below 1 is none of ours: its rows would be taken for new ones. Empty where nothing is wrong.
Worded identifierFault(const Drawing& drawing) {
    constexpr std::uint64_t kLargestIdentifier = std::uint64_t{1} << 62;
    if (drawing.lastId() > kLargestIdentifier) {
        return {"an object has so large an identifier that no more can be given",
                "識別子が大きすぎる図形があり、これ以上付けられません"};
    }
    Worded fault;
    const auto look = [&](MdDbObjectId id, const Worded& what) {
        if (const auto number = static_cast<std::int64_t>(id.asUint64()); number < 1) {
            fault = {what.english + " has the identifier " + std::to_string(number),
                     what.japanese + "の識別子が " + std::to_string(number) + " です"};
        }
    };
    const auto lookAtAll = [&](const auto& items, const Worded& what) {
        for (const auto& item : items) {
            look(item.id, what);
        }
    };
    lookAtAll(drawing.layers(), {"a layer", "レイヤ"});
    lookAtAll(drawing.sites(), {"a site", "サイト"});
    lookAtAll(drawing.tables(), {"a table of object data", "オブジェクトデータの表"});
    lookAtAll(drawing.imports(), {"an import", "読み込み"});
    for (std::size_t i = 0; i < drawing.alignmentCount(); ++i) {
        look(drawing.alignment(i).id, {"an alignment", "線形"});
    }
    return fault;
}

void requireNone(const Worded& fault) {
    if (!fault.empty()) {
        throw StoreFailure{Failure::Damaged, fault};
    }
}

std::string folderBehindLinks(const std::string& path) {
    return platform::folderOf(platform::behindLinks(path));
}

// A program that crashed while it wrote leaves a journal; the first to lock the file for writing restores the file from
// it. A journal that still lies there then belongs to nobody. Where this cannot be done, reading tells whether it
// had to be.
void restoreAfterCrash(const std::string& path) {
    try {
        // Else the drawing could be replaced before it is locked.
        const platform::FolderTurn turn(folderBehindLinks(path));
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

Outcome DrawingStore::openOrBegin(const std::string& path, Drawing& drawing, Load load) {
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Unknown) { // asked again, the system might say that nothing is there
        return failedAt(path, Failure::Unreachable, platform::wordedReason(state.error));
    }
    if (state.kind != platform::PathKind::Missing) {
        return open(path, drawing, load);
    }
    if (Outcome usable = guarded(path, [&] { requireReplaceable(path); }); !usable) {
        return usable;
    }
    path_ = path;
    begun_ = true;
    notes_.clear();
    return {};
}

Outcome DrawingStore::open(const std::string& path, Drawing& drawing, Load load) {
    if (Outcome usable = guarded(path, [&] { requireReadable(path); }); !usable) {
        return usable;
    }
    return guarded(path, [&] {
        try {
            if (hasJournal(path)) {
                restoreAfterCrash(path);
            }
            Connection connection(path, modeToRead(path));
            DrawingReader reader(connection);
            drawing = reader.read(load);
            savedId_ = reader.head().lastId;
            stamp_ = reader.head().stamp;
            notes_ = reader.notes();
            newIdentifiers_ = reader.newIdentifiers();
            highestId_ = drawing.lastId();
            identifierFault_ = identifierFault(drawing);
        } catch (StoreFailure& failure) {
            if (failure.failure == Failure::NotWritable) {
                failure.failure = Failure::NotReadable;
                if (hasJournal(path)) {
                    failure.detail = {"a save was broken off; open it once where it can be written",
                                      "保存が中断されています。一度、書き込める場所で開いてください"};
                }
            }
            throw;
        }
        path_ = path;
        begun_ = false;
        sound_ = false;
    });
}

bool DrawingStore::hasChanges(const Drawing& drawing) const {
    return path_.empty() || begun_ || DrawingWriter::hasChanges(drawing);
}

Outcome DrawingStore::save(const std::string& path, Drawing& drawing, const WriteProgress& progress,
                           const TextChanges& texts) {
    if (path != path_) {
        return create(path, drawing, progress, texts.wanted, false);
    }
    if (begun_) {
        return create(path, drawing, progress, texts.wanted, true);
    }
    const platform::PathState state = platform::lookUp(path);
    if (state.kind == platform::PathKind::Missing) {
        return create(path, drawing, progress, texts.wanted, true);
    }
    return append(path, drawing, progress, texts);
}

namespace {

// Everything in a file that takes its name when every byte is on the disk.
void writeWhole(platform::TemporaryFile& file, const std::string& path, const Drawing& drawing,
                const WriteProgress& progress, const DrawingTexts& texts, const std::string& stamp) {
    requireNone(identifierFault(drawing));
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
        changeTextsIn(connection, {{}, texts});
        connection.execute("COMMIT");
    }
    throwIf(file.complete());
}

} // namespace

Outcome DrawingStore::writeCopy(const std::string& path, const Drawing& drawing, const DrawingTexts& texts) {
    return guarded(path, [&] {
        platform::TemporaryFile file;
        writeWhole(file, path, drawing, {}, texts, newStamp());
        throwIf(file.putInPlace());
    });
}

// Made under another name in the same folder; it takes its name when every byte is on the disk.
Outcome DrawingStore::create(const std::string& path, Drawing& drawing, const WriteProgress& progress,
                             const DrawingTexts& texts, bool mustBeNew) {
    if (!drawing.entitiesLoaded()) {
        return failedAt(path, Failure::Failed, "the drawing was opened without its points and polylines");
    }
    if (Outcome usable = guarded(path, [&] { requireReplaceable(path); }); !usable) {
        return usable;
    }
    const std::string stamp = newStamp();
    const Outcome result = guarded(path, [&] {
        platform::TemporaryFile file;
        writeWhole(file, path, drawing, progress, texts, stamp);
        const platform::FolderTurn turn(platform::folderOf(file.target()));
        if (!mustBeNew) {
            HeldDrawing held(file.target()); // nobody appends to the file that goes
            if (!platform::kOpenFilesCanBeReplaced) {
                held.letGo(); // it was seen that nobody holds it; who comes in between is in the file's way
            }
            throwIf(file.putInPlace());
            return;
        }
        if (platform::lookUp(file.target()).kind == platform::PathKind::Missing) {
            removeFilesBeside(file.target());
        }
        const std::error_code error = file.putInPlace(platform::AtTarget::Refuse);
        if (error == std::errc::file_exists) {
            throw StoreFailure{Failure::AppearedMeanwhile, {}};
        }
        throwIf(error);
    });
    if (result) {
        path_ = path;
        begun_ = false;
        identifierFault_ = {};
        stamp_ = stamp;
        sound_ = true;
        notes_.clear();
        newIdentifiers_.clear();
        savedId_ = highestId_ = drawing.lastId();
        DrawingWriter::markSaved(drawing);
    }
    return result;
}

Outcome DrawingStore::append(const std::string& path, Drawing& drawing, const WriteProgress& progress,
                             const TextChanges& texts) {
    if (Outcome usable = guarded(path, [&] { requireReadable(path); }); !usable) {
        return usable;
    }
    if (!hasChanges(drawing)) {
        // There is nothing but texts to write if the file still is what was opened or saved.
        const Outcome same = guarded(path, [&] {
            if (hasJournal(path)) {
                restoreAfterCrash(path);
            }
            Connection connection(path, modeToRead(path));
            if (DrawingReader::readHead(connection).stamp != stamp_) {
                throw StoreFailure{Failure::ChangedOutside, {}};
            }
        });
        return same && texts.before != texts.wanted ? changeTexts(path, texts) : same;
    }
    if (Outcome usable = guarded(path, [&] { requireWritable(path); }); !usable) {
        return usable;
    }
    const std::string stamp = newStamp();
    const Outcome result = guarded(path, [&] {
        requireNone(identifierFault_);
        requireNone(identifierFault(drawing));
        // Held until the drawing is locked, so that nobody replaces it in between.
        std::optional<platform::FolderTurn> turn(folderBehindLinks(path));
        Connection connection(path, Connection::Mode::ReadWrite);
        connection.execute(sql::kPrepareOldFile);
        connection.execute("BEGIN IMMEDIATE");
        turn.reset();
        try {
            // Our rows would take the identifiers of features that a GIS added meanwhile.
            const DrawingHead head = DrawingReader::readHead(connection);
            if (connection.hasMoved() || head.stamp != stamp_ || head.lastId != savedId_ ||
                DrawingReader::readHighestId(connection) > highestId_) {
                throw StoreFailure{Failure::ChangedOutside, {}};
            }
            if (!sound_) {
                requireSoundPages(connection);
            }
            DrawingWriter(connection, drawing, DrawingWriter::From::Saved, progress).write(newIdentifiers_, stamp);
            changeTextsIn(connection, texts);
            connection.execute("COMMIT");
        } catch (...) {
            sqlite3_exec(connection.get(), "ROLLBACK", nullptr, nullptr, nullptr); // may have been rolled back already
            throw;
        }
    });
    // A commit that could not end leaves its journal: what that restores is restored now.
    if (!result && result.failure != Failure::Locked && hasJournal(path)) {
        restoreAfterCrash(path);
    }
    if (result) {
        stamp_ = stamp;
        sound_ = true;
        newIdentifiers_.clear();
        savedId_ = highestId_ = drawing.lastId();
        DrawingWriter::markSaved(drawing);
    }
    return result;
}

} // namespace fenmark::drawing
