// A panel with one table and its totals.
#include "desk/window/sheet_panel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QVBoxLayout>

namespace fenmark::desk {

SheetPanel::SheetPanel(const Texts& texts, QWidget* parent)
    : QWidget(parent), texts_(texts), tools_(new QToolBar(this)), table_(new QTableWidget(this)),
      totals_(new QLabel(this)), copy_(new QAction(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(tools_);
    layout->addWidget(totals_);
    layout->addWidget(table_, 1);
    tools_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setTabKeyNavigation(false); // Tab leads on to the next control
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    table_->setWordWrap(false);
    totals_->setTextFormat(Qt::PlainText);
    totals_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    totals_->setWordWrap(true);
    setFocusProxy(table_);
    copy_->setShortcut(QKeySequence::Copy);
    copy_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy_, &QAction::triggered, this, [this] { copy(); });
    addAction(copy_);
    tools_->addAction(copy_);
    retranslate();
}

void SheetPanel::retranslate() {
    copy_->setText(texts_(Text::CopyTable));
    copy_->setIconText(withoutMnemonic(texts_(Text::CopyTable)));
}

void SheetPanel::show(const Sheet& sheet) {
    sheet_ = sheet;
    table_->setRowCount(0);
    table_->setColumnCount(static_cast<int>(sheet.columns.size()));
    table_->setHorizontalHeaderLabels(sheet.columns);
    table_->setRowCount(static_cast<int>(sheet.rows.size()));
    for (int row = 0; row < table_->rowCount(); ++row) {
        const QStringList& cells = sheet.rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < cells.size(); ++column) {
            auto* item = new QTableWidgetItem(cells[column]);
            item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
            table_->setItem(row, column, item);
        }
    }
    table_->resizeColumnsToContents();
    QStringList totals;
    for (const Sheet::Total& total : sheet.totals) {
        totals << (total.value.isEmpty() ? total.name : total.name + QStringLiteral(": ") + total.value);
    }
    QString line = sheet.title.isEmpty() ? QString() : withoutMnemonic(sheet.title) + QStringLiteral("    ");
    totals_->setText(line + totals.join(QStringLiteral("    ")));
    copy_->setEnabled(!sheet.rows.empty());
    if (table_->rowCount() > 0) {
        table_->scrollToBottom();
    }
}

void SheetPanel::showHint(const QString& hint) {
    show(Sheet{});
    table_->setColumnCount(0);
    totals_->setText(hint);
}

void SheetPanel::copy() {
    QGuiApplication::clipboard()->setText(sheet_.tabbed());
}

} // namespace fenmark::desk
