// The small top-most window that shows how far a file has been read, and that keeps the program answering meanwhile.
#pragma once

#include "sima/reader/progress.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPoint>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace fenmark::ui {

class CProgressWnd : public QWidget {
    Q_OBJECT

  public:
    CProgressWnd(QWidget* parent, const QString& title, bool smooth);
    ~CProgressWnd() override;

    // Disables the main window until the end: the parent's window, or without a parent the window in use. It is not
    // closed meanwhile either. The title and the look of the bar are for a window that has to be made anew, since it was
    // destroyed. Always 1: a window here is always made.
    std::int32_t goModal(const QString& title, bool smooth);
    void setRange(std::int32_t lower, std::int32_t upper, std::int32_t step);
    void setText(const QString& text);
    // percent = position * 100 / (upper - lower) in 32-bit signed integers: the product can wrap, so that a file beyond
    // 21,474,836 bytes shows nonsense percentages. The lower bound is not subtracted. Both are kept as they are.
    // A hidden window is shown again. Returns the stored position, which a missing window leaves as it is.
    std::int32_t setPosition(std::int32_t position);
    void pump();
    // Keeps the window's place, gives the main window back, and leaves an object without a window.
    void DestroyWindow();

    std::int32_t position() const { return position_; }
    std::optional<std::int32_t> percent() const { return percent_; }
    bool cancelled() const { return cancelled_; }
    bool modal() const { return modal_; }
    std::int32_t pumpCount() const { return pumpCount_; }

    // Times that the title was written: it changes with the whole percent only.
    std::int32_t titleChanges() const { return titleChanges_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private slots:
    void cancel();

  private:
    void createChildren();
    void layOut();
    void placeWindow();
    QPoint origin() const; // of the screen that places are measured from

    QString caption_;
    QPointer<QWidget> mainWindow_;
    QPointer<QWidget> mainFocus_; // what had the focus in it
    QLabel* label_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* button_ = nullptr;
    std::int32_t lower_ = 0;
    std::int32_t upper_ = 100;
    std::int32_t step_ = 1;
    std::int32_t position_ = 0;
    std::optional<std::int32_t> percent_;
    std::int32_t pumpCount_ = 0;
    std::int32_t titleChanges_ = 0;
    bool exists_ = true;
    bool cancelled_ = false;
    bool modal_ = false;
    bool savePosition_ = true;
    bool showCancel_ = false;
    QElapsedTimer sincePump_;
};

// Makes the windows for the reader, below the dialog that is open, or below the given parent.
class ProgressWindows : public sima::ProgressFactory {
  public:
    explicit ProgressWindows(QWidget* parent) : parent_(parent) {}
    std::unique_ptr<sima::Progress> create(std::string_view title, bool smooth) override;

  private:
    QPointer<QWidget> parent_;
};

} // namespace fenmark::ui
