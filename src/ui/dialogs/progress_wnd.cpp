// The small top-most window that shows how far a file has been read, and that keeps the program answering meanwhile.
#include "ui/dialogs/progress_wnd.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QSettings>

namespace fenmark::ui {

namespace {

// Pixels at 96 dots an inch, as the window's own layout has them.
constexpr int kMargin = 10;
constexpr int kLabelWidth = 390;
constexpr int kInitialWidth = 390;
constexpr int kInitialHeight = 130;
constexpr int kFrameAcross = 20;
constexpr int kFrameDown = 30;
constexpr int kEdge = 2;
constexpr int kTextLines = 4;
constexpr int kPaintedPumps = 10;
// Looking for waiting messages costs more than reading a line of a file; twice a frame is often enough.
constexpr qint64 kPumpIntervalMs = 8;

// The section "Settings" of the program's own store. A program without a name of its own has none.
// Keys and names that the toolkit keeps are made on the heap: literals would go with the library when it is unloaded.
QSettings profile() {
    if (QCoreApplication::organizationName().isEmpty()) {
        return QSettings(QString::fromLatin1("Fenmark"), QString::fromLatin1("Fenmark"));
    }
    return QSettings();
}

} // namespace

CProgressWnd::CProgressWnd(QWidget* parent, const QString& title, bool smooth)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint),
      caption_(title) {
    Q_UNUSED(smooth); // the bar has one look
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    setCursor(Qt::BusyCursor);
    resize(kInitialWidth, kInitialHeight);
    setWindowTitle(caption_);
    createChildren();
    layOut();
    placeWindow();
    sincePump_.start();
}

CProgressWnd::~CProgressWnd() {
    DestroyWindow();
}

void CProgressWnd::createChildren() {
    label_ = new QLabel(this);
    label_->setObjectName(QStringLiteral("id11"));
    label_->setTextFormat(Qt::PlainText);
    label_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label_->setWordWrap(false);
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("id12"));
    bar_->setTextVisible(false);
    bar_->setAccessibleName(caption_);
    bar_->setRange(lower_, upper_);
    button_ = new QPushButton(QStringLiteral(" Cancel "), this);
    button_->setObjectName(QStringLiteral("id10"));
    button_->setVisible(showCancel_);
    button_->setEnabled(showCancel_);
    connect(button_, &QPushButton::clicked, this, &CProgressWnd::cancel);
}

void CProgressWnd::layOut() {
    const QFontMetrics metrics(font());
    QString lines = QStringLiteral("M");
    for (int i = 1; i < kTextLines; ++i) {
        lines += QStringLiteral("\nM");
    }
    const int labelHeight = metrics.boundingRect(QRect(0, 0, kLabelWidth, 1000), Qt::AlignLeft, lines).height();
    label_->setGeometry(kMargin, kMargin, kLabelWidth, labelHeight);

    const QString text = button_->text() + QStringLiteral("  ");
    const int buttonWidth = metrics.horizontalAdvance(text) + 4 * kEdge;
    const int rowHeight = metrics.height() + 3 * kEdge;
    const int rowTop = kMargin + labelHeight + kMargin;
    const int buttonLeft = kMargin + kLabelWidth - buttonWidth;
    button_->setGeometry(buttonLeft, rowTop, buttonWidth, rowHeight);
    // Without the button the bar takes the room that the button would have had.
    const int barRight = buttonLeft + (showCancel_ ? -10 : 50);
    bar_->setGeometry(kMargin, rowTop + kEdge, barRight - kMargin, rowHeight - 2 * kEdge);
    setFixedSize(kLabelWidth + kFrameAcross, rowTop + rowHeight + kFrameDown - kMargin);
}

// Places count from the corner of the primary screen, wherever that lies among the others.
QPoint CProgressWnd::origin() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->geometry().topLeft() : QPoint();
}

void CProgressWnd::placeWindow() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    const QRect area = screen->geometry();
    int x = -1;
    int y = -1;
    if (savePosition_) {
        const QSettings settings = profile();
        x = settings.value(QString::fromLatin1("Settings/X"), -1).toInt();
        y = settings.value(QString::fromLatin1("Settings/Y"), -1).toInt();
    }
    if (x >= 0 && x < area.width() && y >= 0 && y < area.height()) {
        move(origin() + QPoint(x, y));
    } else {
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
    show();
    raise();
}

std::int32_t CProgressWnd::goModal(const QString& title, bool) {
    if (!exists_) {
        exists_ = true;
        cancelled_ = false;
        caption_ = title;
        percent_.reset();
        setWindowTitle(caption_);
        placeWindow();
    }
    if (modal_) {
        return 1;
    }
    mainWindow_ = parentWidget() != nullptr ? parentWidget()->window() : QApplication::activeWindow();
    if (mainWindow_ == this) {
        mainWindow_ = nullptr;
    }
    if (mainWindow_ != nullptr) {
        mainFocus_ = mainWindow_->focusWidget();
        mainWindow_->setEnabled(false);
        mainWindow_->installEventFilter(this);
    }
    setEnabled(true);
    modal_ = true;
    return 1;
}

void CProgressWnd::setRange(std::int32_t lower, std::int32_t upper, std::int32_t step) {
    lower_ = lower;
    upper_ = upper;
    step_ = step;
    if (exists_) {
        bar_->setRange(lower_, upper_);
    }
}

void CProgressWnd::setText(const QString& text) {
    if (exists_) {
        label_->setText(text);
    }
}

std::int32_t CProgressWnd::setPosition(std::int32_t position) {
    if (!exists_) {
        return position_;
    }
    if (!isVisible()) {
        show();
    }
    position_ = position;
    std::int32_t percent = 0;
    if (upper_ > lower_) {
        const auto product =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(position_) * static_cast<std::uint32_t>(100));
        const auto span =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(upper_) - static_cast<std::uint32_t>(lower_));
        // In 64 bits, since the lowest value divided by -1 has no place in 32.
        percent = static_cast<std::int32_t>(std::int64_t{product} / std::int64_t{span});
    }
    if (percent_ != percent) {
        percent_ = percent;
        setWindowTitle(QStringLiteral("%1 [%2%]").arg(caption_).arg(percent));
        ++titleChanges_;
    }
    bar_->setValue(position_);
    return position_;
}

void CProgressWnd::pump() {
    if (!exists_) {
        return;
    }
    ++pumpCount_;
    // The early calls get the window painted at all.
    const bool early = pumpCount_ < kPaintedPumps;
    if (!early && sincePump_.elapsed() < kPumpIntervalMs) {
        return;
    }
    sincePump_.restart();
    // The focus within the program: a user who went on to another program meanwhile keeps it there.
    if (modal_ && !isActiveWindow() && QGuiApplication::applicationState() == Qt::ApplicationActive) {
        activateWindow();
    }
    if (early) {
        update();
    }
    if (cancelled_) {
        return;
    }
    QCoreApplication::processEvents();
}

// A cancel of the modal phase ends the window. The read goes on, and nothing is pumped any more until it is done.
void CProgressWnd::cancel() {
    cancelled_ = true;
    hide();
    if (modal_) {
        close();
    }
    if (mainWindow_ != nullptr) {
        mainWindow_->raise();
        mainWindow_->activateWindow();
    }
}

void CProgressWnd::DestroyWindow() {
    if (!exists_) {
        return;
    }
    exists_ = false;
    if (savePosition_) {
        QSettings settings = profile();
        const QPoint place = pos() - origin();
        settings.setValue(QString::fromLatin1("Settings/X"), place.x());
        settings.setValue(QString::fromLatin1("Settings/Y"), place.y());
    }
    if (modal_) {
        modal_ = false;
        if (mainWindow_ != nullptr) {
            mainWindow_->removeEventFilter(this);
            mainWindow_->setEnabled(true);
            // A disabled window forgets where its keyboard was.
            if (mainFocus_ != nullptr) {
                mainFocus_->setFocus();
            }
        }
    }
    hide();
}

// A disabled window can still be closed by its frame, which would end it in the middle of a read.
bool CProgressWnd::eventFilter(QObject* watched, QEvent* event) {
    if (modal_ && !cancelled_ && watched == mainWindow_ && event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

// The window has no close button, and a close request from elsewhere must not end it while a file is read.
void CProgressWnd::closeEvent(QCloseEvent* event) {
    if (cancelled_) {
        DestroyWindow();
    }
    if (exists_) {
        event->ignore();
    } else {
        QWidget::closeEvent(event);
    }
}

// Help requests are swallowed.
void CProgressWnd::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 || event->key() == Qt::Key_Help) {
        event->accept();
    } else {
        QWidget::keyPressEvent(event);
    }
}

namespace {

// The reader's view of the window. Positions are cut to 32 bits, as the window counts in them.
class WindowProgress : public sima::Progress {
  public:
    WindowProgress(QWidget* parent, std::string_view title, bool smooth)
        : window_(std::make_unique<CProgressWnd>(
              parent, QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())), smooth)) {}

    std::int32_t goModal(std::string_view title, bool smooth) override {
        return window_->goModal(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())), smooth);
    }
    void setRange(std::int64_t lower, std::int64_t upper, std::int32_t step) override {
        window_->setRange(static_cast<std::int32_t>(lower), static_cast<std::int32_t>(upper), step);
    }
    void setText(std::string_view text) override {
        window_->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    void setPosition(std::int64_t position) override { window_->setPosition(static_cast<std::int32_t>(position)); }
    void pump() override { window_->pump(); }

  private:
    std::unique_ptr<CProgressWnd> window_;
};

} // namespace

std::unique_ptr<sima::Progress> ProgressWindows::create(std::string_view title, bool smooth) {
    // A dialog that is open reads on behalf of its user: it is what has to wait, since the main window waits for it.
    QWidget* dialog = QApplication::activeModalWidget();
    return std::make_unique<WindowProgress>(dialog != nullptr ? dialog : parent_.data(), title, smooth);
}

} // namespace fenmark::ui
