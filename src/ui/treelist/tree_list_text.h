// The few texts of its own that the tree list shows, in Japanese or English by the user's locale.
#pragma once

#include <QLocale>
#include <QString>

namespace fenmark::ui::treelist {

[[nodiscard]] inline QString treeListText(const char* english, const char* japanese) {
    return QString::fromUtf8(QLocale().language() == QLocale::Japanese ? japanese : english);
}

} // namespace fenmark::ui::treelist
