// A user for the tests: does one thing to each modal window that opens, in order.
#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QObject>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>

namespace fenmark::ui::test {

class User {
  public:
    using Action = std::function<void(QWidget&)>;

    User() { wait(); }
    ~User() { EXPECT_TRUE(steps_.empty()) << "the window \"" << title() << "\" was never shown"; }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    // The next window to open has this title.
    User& then(const QString& title, Action action) {
        steps_.push_back({title, std::move(action)});
        return *this;
    }
    User& press(const QString& title, int button) {
        return then(title, [button](QWidget& window) { click(window, button); });
    }
    static void click(QWidget& window, int button) {
        auto* found = window.findChild<QPushButton*>(QStringLiteral("id%1").arg(button));
        ASSERT_NE(found, nullptr) << button;
        ASSERT_TRUE(found->isEnabled()) << button;
        found->click();
    }
    // Names the file in the real file-open dialog.
    User& open(const QString& path) {
        return then(QStringLiteral("SIMAファイルを選択"), [path](QWidget& window) {
            auto* dialog = dynamic_cast<QFileDialog*>(&window);
            ASSERT_NE(dialog, nullptr);
            dialog->setDirectory(QFileInfo(path).absolutePath());
            dialog->selectFile(QFileInfo(path).fileName());
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }

  private:
    struct Step {
        QString title;
        Action action;
    };

    std::string title() const { return steps_.empty() ? std::string() : steps_.front().title.toStdString(); }
    // A new timer each time: one that is at work rests while the windows that it opens wait for their answers.
    void wait() {
        QTimer::singleShot(1, &context_, [this] {
            wait();
            look();
        });
    }
    void look() {
        QWidget* window = QApplication::activeModalWidget();
        // A dialog that reads a file waits, with all of its buttons.
        if (window == nullptr || !window->isVisible() || !window->isEnabled()) {
            return;
        }
        if (steps_.empty()) {
            // Nothing may stay open, or the test would never end.
            ADD_FAILURE() << "an unexpected window: " << window->windowTitle().toStdString();
            window->close();
            return;
        }
        if (window->windowTitle() != steps_.front().title) {
            return; // the window before it, not closed yet
        }
        const Step step = std::move(steps_.front());
        steps_.pop_front();
        step.action(*window);
        if (::testing::Test::HasFatalFailure()) {
            steps_.clear(); // what is still open is closed
        }
    }

    QObject context_;
    std::deque<Step> steps_;
};

} // namespace fenmark::ui::test
