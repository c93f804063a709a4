// The help of F1.
#include "desk/window/keys_dialog.h"

#include "desk/window/main_window.h"
#include "desk/window/wrapped_rows.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace fenmark::desk {

namespace {

constexpr QSize kHelpSize(640, 600);
constexpr QSize kHelpFrame(8, 40); // of the window: borders and title bar

void addActionsOf(const QMenu& menu, std::vector<KeyHelp>& keys) {
    for (const QAction* action : menu.actions()) {
        if (action->menu() != nullptr) {
            addActionsOf(*action->menu(), keys);
        }
        QStringList names;
        for (const QKeySequence& shortcut : action->shortcuts()) {
            names << shortcut.toString(QKeySequence::NativeText);
        }
        if (!names.isEmpty()) {
            keys.push_back({names.join(QStringLiteral(" / ")), withoutMnemonic(action->text())});
        }
    }
}

} // namespace

std::vector<KeyHelp> keysOf(const MainWindow& window) {
    std::vector<KeyHelp> keys;
    const QString separator = QStringLiteral(": ");
    for (const QString& line : window.texts()(Text::KeysText).split(QLatin1Char('\n'))) {
        const qsizetype end = line.indexOf(separator);
        if (end < 0) {
            keys.push_back({{}, line});
        } else {
            keys.push_back({line.left(end), line.mid(end + separator.size())});
        }
    }
    for (const QAction* entry : window.menuBar()->actions()) {
        std::vector<KeyHelp> ofMenu;
        if (entry->menu() != nullptr) {
            addActionsOf(*entry->menu(), ofMenu);
        }
        if (!ofMenu.empty()) {
            keys.push_back({{}, withoutMnemonic(entry->text())});
            keys.insert(keys.end(), ofMenu.begin(), ofMenu.end());
        }
    }
    return keys;
}

void showKeys(MainWindow& window) {
    const Texts& texts = window.texts();
    QDialog dialog(&window);
    dialog.setObjectName(QStringLiteral("keys"));
    dialog.setWindowTitle(withoutMnemonic(texts(Text::Keys)));
    auto* list = new QTreeWidget(&dialog);
    list->setColumnCount(2);
    list->setHeaderLabels({texts(Text::ColumnKey), texts(Text::ColumnAct)});
    list->setRootIsDecorated(false);
    list->setWordWrap(true); // what a key does is read whole also in a narrow window
    list->setAccessibleName(dialog.windowTitle());
    QFont bold = list->font();
    bold.setBold(true);
    for (const KeyHelp& key : keysOf(window)) {
        auto* row = new QTreeWidgetItem(
            list, {key.keys.isEmpty() ? key.what : key.keys, key.keys.isEmpty() ? QString() : key.what});
        row->setToolTip(1, key.what);
        if (key.keys.isEmpty()) {
            row->setFont(0, bold);
            row->setFirstColumnSpanned(true);
        }
    }
    list->resizeColumnToContents(0);
    // Once the header has taken its new widths.
    const auto fit = [list] { QTimer::singleShot(0, list, [list] { fitRows(*list); }); };
    QObject::connect(list->header(), &QHeaderView::sectionResized, list, fit);
    auto* buttons = new QDialogButtonBox(&dialog);
    QPushButton* close = buttons->addButton(texts(Text::OkButton), QDialogButtonBox::AcceptRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(list);
    layout->addWidget(buttons);
    dialog.resize(kHelpSize.boundedTo(window.screen()->availableSize() - kHelpFrame));
    fit();
    dialog.exec();
}

} // namespace fenmark::desk
