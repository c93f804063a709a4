// The imports of the drawing to choose from.
#include "desk/window/imports_box.h"

#include "desk/plan/plan_text.h"

#include <QDateTime>
#include <QLocale>

namespace fenmark::desk {

ImportsBox::ImportsBox(const Texts& texts, QWidget* parent) : QComboBox(parent), texts_(texts) {
    setObjectName(QStringLiteral("imports"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(this, &QComboBox::activated, this, &ImportsBox::chosen);
}

void ImportsBox::fill(const drawing::Drawing& drawing) {
    clear();
    for (std::size_t i = drawing.imports().size(); i-- > 0;) {
        const drawing::Import& import = drawing.imports()[i];
        const QDateTime time = QDateTime::fromString(QString::fromStdString(import.time), Qt::ISODate).toLocalTime();
        addItem(texts_(Text::ImportRow)
                    .arg(shownName(import.fileName), time.toString(QStringLiteral("yyyy-MM-dd HH:mm")),
                         QString::number(import.counts.errors)));
        setItemData(count() - 1, fromUtf8(import.path), Qt::ToolTipRole);
    }
    setCurrentIndex(count() > 0 ? 0 : -1);
    setVisible(count() > 1);
}

const drawing::Import* ImportsBox::import(const drawing::Drawing& drawing) const {
    const auto& imports = drawing.imports();
    if (currentIndex() < 0 || static_cast<std::size_t>(currentIndex()) >= imports.size()) {
        return nullptr;
    }
    return &imports[imports.size() - 1 - static_cast<std::size_t>(currentIndex())];
}

} // namespace fenmark::desk
