// Finds objects by name or number.
#include "desk/window/find_panel.h"

#include "desk/window/properties.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace fenmark::desk {

namespace {

constexpr std::size_t kMostShown = 500;

} // namespace

FindPanel::FindPanel(const Texts& texts, QWidget* parent)
    : QWidget(parent), texts_(texts), edit_(new QLineEdit(this)), count_(new QLabel(this)),
      list_(new QListWidget(this)) {
    edit_->setObjectName(QStringLiteral("findText"));
    edit_->setClearButtonEnabled(true);
    edit_->installEventFilter(this);
    list_->setObjectName(QStringLiteral("findList"));
    list_->installEventFilter(this);
    auto* row = new QHBoxLayout;
    row->addWidget(edit_, 1);
    row->addWidget(count_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addLayout(row);
    column->addWidget(list_);
    setFocusProxy(edit_);
    connect(edit_, &QLineEdit::textChanged, this, &FindPanel::search);
    connect(list_, &QListWidget::itemClicked, this, [this] { choose(list_->currentRow()); });
}

void FindPanel::setDrawing(const drawing::Drawing* drawing) {
    drawing_ = drawing;
    names_.reset();
    if (isVisible()) {
        search();
    } else {
        list_->clear();
    }
}

void FindPanel::retranslate() {
    edit_->setPlaceholderText(texts_(Text::FindHint));
    edit_->setAccessibleName(texts_(Text::FindHint));
    list_->setAccessibleName(texts_(Text::FindPanel));
}

void FindPanel::startTyping() {
    search();
    edit_->setFocus(Qt::ShortcutFocusReason);
    edit_->selectAll();
}

void FindPanel::search() {
    list_->clear();
    found_.clear();
    count_->clear();
    if (drawing_ == nullptr || edit_->text().trimmed().isEmpty()) {
        return;
    }
    if (names_ == nullptr) {
        names_ = std::make_unique<NameSearch>(*drawing_);
    }
    NameSearch::Result result = names_->find(edit_->text(), kMostShown);
    found_ = std::move(result.objects);
    for (const PlanObject& object : found_) {
        list_->addItem(objectTitle(*drawing_, object, texts_));
    }
    if (found_.empty()) {
        count_->setText(texts_(Text::FindNothing));
    } else if (found_.size() < result.total) {
        count_->setText(texts_(Text::FindCountCut).arg(result.total).arg(found_.size()));
    } else {
        count_->setText(texts_(Text::FindCount).arg(result.total));
    }
    list_->setCurrentRow(found_.empty() ? -1 : 0);
}

void FindPanel::choose(int row) {
    if (row >= 0 && static_cast<std::size_t>(row) < found_.size()) {
        emit objectChosen(found_[static_cast<std::size_t>(row)]);
    }
}

bool FindPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(list_->currentRow());
        return true;
    case Qt::Key_Escape:
        emit left();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (watched != edit_) {
            break;
        }
        QApplication::sendEvent(list_, event);
        return true;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenmark::desk
