// Drawings, files and answers for the tests of the desktop program.
#pragma once

#include "desk/window/main_window.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::desk::test {

// A folder of its own with copies of the examples in it, so that logs are written there.
class Folder {
  public:
    QString path(const QString& name) const { return folder_.filePath(name); }
    QString example(const QString& name) const {
        const QString copy = folder_.filePath(name);
        QFile::copy(QStringLiteral(FENMARK_SOURCE_DIR "/examples/") + name, copy);
        return copy;
    }
    QString write(const QString& name, const QByteArray& content) const {
        QFile file(folder_.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

  private:
    QTemporaryDir folder_;
};

// How long a test waits in ms for what comes at once on a machine that has nothing else to do.
constexpr int kPatience = 60000;

// Answers modal windows as they come, one act each, in order. Every act must have been used in the end.
class Answers {
  public:
    using Act = std::function<void(QWidget& dialog)>;

    Answers() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { answer(); });
        timer_.start(2);
    }
    ~Answers() { EXPECT_TRUE(acts_.empty()) << acts_.size() << " windows did not come"; }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;

    Answers& then(Act act) {
        acts_.push_back(std::move(act));
        return *this;
    }
    // Clicks the button of that object name.
    Answers& click(const QString& button) {
        return then([button](QWidget& dialog) {
            auto* found = dialog.findChild<QPushButton*>(button);
            ASSERT_NE(found, nullptr) << button.toStdString() << " in " << dialog.windowTitle().toStdString();
            found->click();
        });
    }
    Answers& accept() { return click(QStringLiteral("id1")); }
    // The only button of a message.
    Answers& ok() {
        return then([this](QWidget& dialog) {
            said = dialog.property("text").toString();
            dialog.findChild<QPushButton*>()->click();
        });
    }

    QString said; // the text of the last message

  private:
    void answer() {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || !dialog->isVisible() || acts_.empty()) {
            return;
        }
        const Act act = std::move(acts_.front());
        acts_.erase(acts_.begin());
        act(*dialog);
    }

    QTimer timer_;
    std::vector<Act> acts_;
};

// A main window with the module loaded, as the program shows it.
struct DeskWindow : ::testing::Test {
    Folder folder;
    std::unique_ptr<MainWindow> window;

    QTimer watch;
    int modalRounds = 0;

    void SetUp() override {
        // A window that nobody answers must not hold up the tests for ever.
        QObject::connect(&watch, &QTimer::timeout, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            modalRounds = dialog != nullptr ? modalRounds + 1 : 0;
            if (modalRounds < 600) {
                return;
            }
            ADD_FAILURE() << "unanswered: " << dialog->windowTitle().toStdString() << " "
                          << dialog->property("text").toString().toStdString();
            modalRounds = 0;
            dialog->close();
        });
        watch.start(100);
        make(Language::Japanese);
    }
    void make(Language language) {
        window.reset(); // one host at a time
        window = std::make_unique<MainWindow>(WindowOptions{language, false});
        ASSERT_TRUE(window->loadModule({FENMARK_MODULE_PATH})) << window->command().said().toStdString();
        // A test that wants to be asked takes this away.
        window->questions().again = [](QWidget*) { return Again::Add; };
        window->resize(1200, 800);
        window->show();
        QApplication::processEvents();
    }

    // A key for the whole window, which hears it only while it is active.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), kPatience));
        QTest::keyClick(window.get(), key, modifiers);
    }
    const drawing::Drawing& drawing() { return window->session().drawing(); }
    PlanView& plan() { return window->plan(); }

    // Imports a file through the command's own dialogs.
    void import(const QString& path) {
        Answers answers;
        answers.accept().accept();
        EXPECT_TRUE(window->openFile(path));
    }
    std::size_t entityNamed(const std::string& name) {
        for (std::size_t i = 0; i < drawing().entityCount(); ++i) {
            const auto row = drawing().entity(i).row;
            // Names of fixed width are filled up with blanks.
            if (row && (row->name == name || row->name.starts_with(name + " "))) {
                return i;
            }
        }
        ADD_FAILURE() << "no entity named " << name;
        return 0;
    }
    QPoint pixelOf(std::size_t entity) {
        const host::MdGePoint3d& at = drawing().entity(entity).position();
        return plan().view().toPixel(at.x, at.y).toPoint();
    }
    // The value beside a name in the properties panel.
    QString property(const QString& name) {
        PropertiesPanel& panel = window->properties();
        for (int i = 0; i < panel.topLevelItemCount(); ++i) {
            if (panel.topLevelItem(i)->text(0) == name) {
                return panel.topLevelItem(i)->text(1);
            }
        }
        return QStringLiteral("(no such property)");
    }
    void type(const QString& command) {
        QTest::keyClicks(window->command().edit(), command);
        QTest::keyClick(window->command().edit(), Qt::Key_Return);
    }
    bool said(const QString& part) { return window->command().said().contains(part); }
};

} // namespace fenmark::desk::test
