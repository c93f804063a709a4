// Texts that people keep with a drawing.
#include "drawing/geopackage/drawing_texts.h"

#include "drawing/geopackage/file_system.h"
#include "drawing/geopackage/sqlite_handles.h"

namespace fenmark::drawing {

namespace {

constexpr const char* kHasTexts = "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'fenmark_texts'"
                                  " AND substr(sql, 1, 13) = 'CREATE TABLE '";
constexpr const char* kCreateTexts = R"sql(
CREATE TABLE fenmark_texts (
    name TEXT PRIMARY KEY NOT NULL,
    value TEXT
);
INSERT OR IGNORE INTO gpkg_contents (table_name, data_type, identifier, description) VALUES
    ('fenmark_texts', 'attributes', 'fenmark_texts', 'Texts kept with the drawing: title block, backgrounds');
)sql";
constexpr const char* kReadTexts = "SELECT name, value FROM fenmark_texts ORDER BY name";
constexpr const char* kDeleteText = "DELETE FROM fenmark_texts WHERE name = ?1";
constexpr const char* kInsertText = "INSERT INTO fenmark_texts (name, value) VALUES (?1, ?2)";

bool hasTexts(Connection& connection) {
    Statement statement(connection, kHasTexts);
    return statement.step() && statement.integer(0) > 0;
}

DrawingTexts textsIn(Connection& connection) {
    DrawingTexts texts;
    Statement statement(connection, kReadTexts);
    while (statement.step()) {
        texts.emplace(statement.text(0), statement.text(1));
    }
    return texts;
}

// The value of that name; null if it has none.
const std::string* valueOf(const DrawingTexts& texts, const std::string& name) {
    const auto found = texts.find(name);
    return found == texts.end() ? nullptr : &found->second;
}

bool areEqual(const std::string* one, const std::string* other) {
    return one == nullptr || other == nullptr ? one == other : *one == *other;
}

} // namespace

DrawingTexts readTexts(const std::string& path) {
    DrawingTexts texts;
    try {
        Connection connection(path, modeToRead(path));
        if (hasTexts(connection)) {
            texts = textsIn(connection);
        }
    } catch (const StoreFailure&) {
        texts.clear(); // the drawing is shown without them
    }
    return texts;
}

Outcome changeTexts(const std::string& path, const TextChanges& changes) {
    try {
        Connection connection(path, Connection::Mode::ReadWrite);
        connection.execute("BEGIN IMMEDIATE");
        changeTextsIn(connection, changes);
        connection.execute("COMMIT");
        return {};
    } catch (const StoreFailure& failure) {
        return failed(storeMessage(failure.failure, path, failure.detail), failure.failure);
    }
}

void changeTextsIn(Connection& connection, const TextChanges& changes) {
    const auto& [before, wanted] = changes;
    if (before == wanted) {
        return;
    }
    if (!hasTexts(connection)) {
        if (wanted.empty()) {
            return;
        }
        connection.execute(kCreateTexts);
    }
    const DrawingTexts now = textsIn(connection);
    DrawingTexts all = before;
    all.insert(wanted.begin(), wanted.end());
    Statement remove(connection, kDeleteText);
    Statement insert(connection, kInsertText);
    for (const auto& text : all) {
        const std::string& name = text.first;
        const std::string* const old = valueOf(before, name);
        const std::string* const ours = valueOf(wanted, name);
        const std::string* const theirs = valueOf(now, name);
        if (areEqual(old, ours) || areEqual(theirs, ours)) {
            continue;
        }
        if (!areEqual(old, theirs)) {
            throw StoreFailure{Failure::ChangedOutside, {}};
        }
        remove.bind(1, std::string_view(name)).run();
        if (ours != nullptr) {
            insert.bind(1, std::string_view(name)).bind(2, std::string_view(*ours)).run();
        }
    }
}

} // namespace fenmark::drawing
