// Backgrounds under the plan: chosen in their menu, and kept with the drawing.
#include "desk/window/main_window.h"
#include "desk/window/workbench.h"

#include <QActionGroup>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

namespace fenmark::desk {

namespace {

constexpr const char* kKeptPaths = "background/"; // and a number
constexpr int kStrengths[] = {25, 50, 75, 100};

} // namespace

void Workbench::makeBackgroundMenu() {
    askFolder = [](QWidget* parent, const QString& title, const QString& folder) {
        return QFileDialog::getExistingDirectory(parent, title, folder);
    };
    QMenu* view = nullptr;
    for (const auto& [menu, text] : window_.menus_) {
        view = text == Text::ViewMenu ? menu : view;
    }
    QMenu* menu = addMenu(view, WorkText::BackgroundMenu);
    addAction(menu, WorkText::BackgroundAdd, {}, [this] {
        const QString path =
            window_.questions().open(&window_, withoutMnemonic(workText(window_.texts(), WorkText::BackgroundAdd)),
                                     window_.lastFolder_, workText(window_.texts(), WorkText::BackgroundFilter));
        if (!path.isEmpty()) {
            addBackground(path);
        }
    });
    addAction(menu, WorkText::BackgroundAddFolder, {}, [this] {
        const QString path = askFolder(
            &window_, withoutMnemonic(workText(window_.texts(), WorkText::BackgroundAddFolder)), window_.lastFolder_);
        if (!path.isEmpty()) {
            addBackground(path);
        }
    });
    addAction(menu, WorkText::BackgroundRemoveAll, {}, [this] { removeBackgrounds(); });
    menu->addSeparator();
    QAction* shown = addAction(menu, WorkText::BackgroundShow, {}, [this] {
        backgroundShown_ = action(WorkText::BackgroundShow)->isChecked();
        showBackground();
    });
    shown->setCheckable(true);
    shown->setChecked(true);
    auto* group = new QActionGroup(this);
    for (const int percent : kStrengths) {
        auto* strength = new QAction(&window_);
        strength->setCheckable(true);
        strength->setChecked(percent == backgroundStrength_);
        strength->setData(percent);
        menu->addAction(strength);
        group->addAction(strength);
        strengths_.push_back(strength);
        connect(strength, &QAction::triggered, this, [this, percent] {
            backgroundStrength_ = percent;
            showBackground();
        });
    }
}

QString Workbench::reasonOf(const BackgroundRead& read) const {
    const bool japanese = window_.texts().language() == Language::Japanese;
    switch (read.error) {
    case BackgroundError::NeedsZone:
        return workText(window_.texts(), WorkText::BackgroundNeedsZone);
    case BackgroundError::UnknownReference:
        return (japanese ? QStringLiteral("対応していない座標系です ") : QStringLiteral("unknown reference system ")) +
               QString::fromStdString(read.detail);
    case BackgroundError::TooLarge:
        return japanese ? QStringLiteral("ファイルが大きすぎます") : QStringLiteral("the file is too large");
    case BackgroundError::TooMany:
        return (japanese ? QStringLiteral("背景は %1 個までです")
                         : QStringLiteral("no more than %1 backgrounds are shown"))
            .arg(Background::kMostLayers);
    case BackgroundError::TooMuch:
        return (japanese ? QStringLiteral(
                               "図面と一緒に開く背景は合計 %1 MBまでです。［背景］＞［ファイルを追加］で表示できます")
                         : QStringLiteral("with a drawing, backgrounds of %1 MB in all are opened; "
                                          "Background > Add File shows this one"))
            .arg(Background::kMostBytesUnasked >> 20);
    case BackgroundError::NotReadable:
        return japanese ? QStringLiteral("ファイルを読めません") : QStringLiteral("the file cannot be read");
    case BackgroundError::NotThisFormat:
    case BackgroundError::None:
        break;
    }
    return japanese ? QStringLiteral("この形式のファイルではありません") : QStringLiteral("no file of this format");
}

bool Workbench::addBackground(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    for (const BackgroundLayer& layer : background_.layers()) {
        if (layer.path == whole) {
            return true; // it lies there already
        }
    }
    const BackgroundRead read = background_.add(whole, window_.session().drawing().zone());
    if (read.error != BackgroundError::None) {
        const QString message =
            workText(window_.texts(), WorkText::BackgroundFailed).arg(QDir::toNativeSeparators(path), reasonOf(read));
        window_.command_->say(message);
        window_.tell(message);
        return false;
    }
    window_.command_->say(workText(window_.texts(), WorkText::BackgroundAdded)
                              .arg(QFileInfo(path).fileName(), QString::number(read.shapes.points.size()),
                                   QString::number(read.shapes.lines.size())));
    chosen_.insert(whole);
    const auto keeps = [&](const auto& text) {
        return text.first.starts_with(kKeptPaths) && text.second == whole.toStdString();
    };
    if (std::none_of(keptTexts_.begin(), keptTexts_.end(), keeps)) { // so that the next morning shows the same
        std::size_t number = 1;
        while (keptTexts_.contains(kKeptPaths + std::to_string(number))) {
            ++number;
        }
        keptTexts_[kKeptPaths + std::to_string(number)] = whole.toStdString();
    }
    window_.updateTitle();
    showBackground();
    return true;
}

void Workbench::removeBackgrounds() {
    background_.clear();
    std::erase_if(keptTexts_, [](const auto& text) { return text.first.starts_with(kKeptPaths); });
    window_.updateTitle();
    showBackground();
}

// Those that the drawing keeps, for its zone: each file once, however often and by whatever names it is kept, not
// endlessly many, and not endless bytes but of those that were chosen here. What is left out is reported, and stays kept.
void Workbench::readBackgrounds() {
    zone_ = window_.session().drawing().zone();
    background_.clear();
    std::set<QString> tried;
    std::int64_t bytes = 0;
    for (const auto& [name, path] : keptTexts_) {
        if (name.starts_with(kKeptPaths)) {
            const QString file = QString::fromStdString(path);
            const QString behindLinks = QFileInfo(file).canonicalFilePath(); // empty if nothing is there
            if (!tried.insert(behindLinks.isEmpty() ? file : behindLinks).second) {
                continue; // it lies there already
            }
            if (tried.size() > Background::kMostLayers) {
                window_.command_->say(workText(window_.texts(), WorkText::BackgroundFailed)
                                          .arg(file, reasonOf({{}, BackgroundError::TooMany, {}})));
                break;
            }
            const std::int64_t more = chosen_.contains(file) ? 0 : Background::bytesToRead(file);
            if (more > Background::kMostBytesUnasked - bytes) {
                window_.command_->say(workText(window_.texts(), WorkText::BackgroundFailed)
                                          .arg(file, reasonOf({{}, BackgroundError::TooMuch, {}})));
                continue;
            }
            bytes += more;
            if (background_.add(file, zone_).error != BackgroundError::None) {
                window_.command_->say(workText(window_.texts(), WorkText::BackgroundMissing).arg(file));
            }
        }
    }
    showBackground();
}

void Workbench::showBackground() {
    if (!backgroundShown_ || background_.layers().empty()) {
        window_.plan().setUnderlay({});
        return;
    }
    window_.plan().setUnderlay([this](QPainter& painter, const ViewTransform& view) {
        background_.paint(painter, view, window_.session().drawing().zone(), backgroundStrength_ / 100.0);
    });
}

} // namespace fenmark::desk
