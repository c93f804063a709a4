// The question for a file to write, of which the extension may be left out, and which files are not written over.
#pragma once

#include "desk/language/texts.h"
#include "drawing/imported_file.h"

#include <QFileInfo>
#include <QString>

#include <functional>
#include <optional>

namespace fenmark::desk {

// The path with the extension (".pdf") where it has none.
inline QString withExtension(const QString& path, const char* extension) {
    return QFileInfo(path).suffix().isEmpty() ? path + QLatin1String(extension) : path;
}

// Asks with a proposal, and completes the answer. Where what is added leads to a file, the question comes again with
// that name: nobody was asked yet whether that file may go. Empty if cancelled.
inline QString askTarget(const std::function<QString(const QString& proposal)>& ask, const QString& proposal,
                         const std::function<QString(const QString& path)>& completed) {
    QString path = ask(proposal);
    while (!path.isEmpty() && completed(path) != path) {
        path = completed(path);
        if (!QFileInfo::exists(path)) {
            break;
        }
        path = ask(path);
    }
    return path;
}

// Why nothing that is made of a drawing may replace that file; nothing where it may.
inline std::optional<Text> targetRefusal(const drawing::Drawing& drawing, const QString& path) {
    if (drawing::isImportedFile(drawing, path.toStdString())) {
        return Text::TargetIsSource;
    }
    return drawing::isImportLog(drawing, path.toStdString()) ? std::optional(Text::TargetIsLog) : std::nullopt;
}

} // namespace fenmark::desk
