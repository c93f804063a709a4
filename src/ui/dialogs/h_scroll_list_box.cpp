// A list box that keeps its horizontal extent fitted to its longest line.
#include "ui/dialogs/h_scroll_list_box.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>

namespace fenmark::ui {

namespace {

constexpr int kTextMargin = 3;   // pixels added to a plain line
constexpr int kTabbedMargin = 2; // pixels added to a line whose tabs are expanded

// Every line is as wide as the extent, so that the list asks for one size whatever the number of its lines.
class ExtentDelegate : public QStyledItemDelegate {
  public:
    explicit ExtentDelegate(CHScrollListBox& list) : QStyledItemDelegate(&list), list_(list) {}

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        // The style keeps these pixels free on both sides of a text; without them the longest line would be cut.
        const int margin = list_.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, &list_) + 1;
        return {list_.horizontalExtent() + 2 * margin, QStyledItemDelegate::sizeHint(option, index).height()};
    }

  private:
    const CHScrollListBox& list_;
};

} // namespace

CHScrollListBox::CHScrollListBox(QWidget* parent) : QListWidget(parent) {
    setItemDelegate(new ExtentDelegate(*this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(false);
    setTextElideMode(Qt::ElideNone);
    setUniformItemSizes(true);
}

int CHScrollListBox::lineWidth(const QString& text) const {
    const QFontMetrics metrics(font());
    if (expandsTabs_) {
        return metrics.size(Qt::TextExpandTabs | Qt::TextSingleLine, text).width() + kTabbedMargin;
    }
    return metrics.horizontalAdvance(text) + kTextMargin;
}

void CHScrollListBox::setExtent(int extent) {
    if (extent_ == extent) {
        return;
    }
    extent_ = extent;
    // Once for all lines that are added before the next painting.
    scheduleDelayedItemsLayout();
}

int CHScrollListBox::addLine(const QString& text) {
    return insertLine(count(), text);
}

int CHScrollListBox::insertLine(int index, const QString& text) {
    if (index < 0 || index > count()) {
        return -1;
    }
    insertItem(index, text);
    setExtent(std::max(extent_, lineWidth(text)));
    return index;
}

int CHScrollListBox::deleteLine(int index) {
    if (index < 0 || index >= count()) {
        return -1;
    }
    delete takeItem(index);
    measureAll();
    return count();
}

int CHScrollListBox::addDirectory(const QString& pattern) {
    const QFileInfo info(pattern);
    const QStringList names = info.dir().entryList({info.fileName()}, QDir::Files, QDir::Name);
    addItems(names);
    measureAll();
    return count() - 1;
}

void CHScrollListBox::resetContent() {
    clear();
    setExtent(0);
}

void CHScrollListBox::measureAll() {
    if (count() == 0) {
        setExtent(0);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    int widest = 0;
    for (int i = 0; i < count(); ++i) {
        widest = std::max(widest, lineWidth(item(i)->text()));
    }
    setExtent(widest);
    QApplication::restoreOverrideCursor();
}

QStringList CHScrollListBox::lines() const {
    QStringList all;
    for (int i = 0; i < count(); ++i) {
        all.append(item(i)->text());
    }
    return all;
}

void CHScrollListBox::resizeEvent(QResizeEvent* event) {
    QListWidget::resizeEvent(event);
    doItemsLayout();
}

} // namespace fenmark::ui
