// Paper: the dialog for printing and PDF, and the texts that the drawing keeps for it.
#include "desk/window/main_window.h"
#include "desk/window/workbench.h"

#include <QDir>
#include <QFileInfo>

namespace fenmark::desk {

void Workbench::makePaperMenu() {
    QMenu* file = nullptr;
    for (const auto& [menu, text] : window_.menus_) {
        file = text == Text::FileMenu ? menu : file;
    }
    QAction* print = addAction(file, WorkText::PaperMenu, QKeySequence::Print, [this] {
        const auto& selected = window_.plan().selected();
        const bool alignment = selected && selected->kind == PlanObject::Kind::Alignment;
        showPaper(alignment ? PaperKind::Along : PaperKind::Plan);
    });
    file->insertAction(window_.action(Text::Export), print);
}

void Workbench::showPaper(PaperKind kind) {
    if (window_.session().isRunning()) {
        return;
    }
    const drawing::Drawing& drawing = window_.session().drawing();
    const auto& selected = window_.plan().selected();
    PaperStart start;
    start.kind = kind;
    start.view = window_.plan().view().visible();
    if (selected) {
        start.selection = extentOf(drawing, *selected);
    }
    start.alignment = profile_->alignment().value_or(0);
    if (selected && selected->kind == PlanObject::Kind::Alignment) {
        start.alignment = selected->index;
    }
    PaperDialog dialog(drawing, keptTexts_, start, window_.texts(), &window_);
    const QString path = QString::fromStdString(window_.session().path());
    dialog.setProposal(path.isEmpty()
                           ? QDir(window_.lastFolder_).filePath(window_.texts()(Text::Untitled))
                           : QDir(QFileInfo(path).absolutePath()).filePath(QFileInfo(path).completeBaseName()));
    if (!beforePaper || beforePaper(dialog)) {
        dialog.exec();
    }
    window_.updateTitle(); // the title block may have changed
}

void Workbench::drawingReplaced() {
    sections_.setDrawing(&window_.session().drawing()); // before anything asks: the one that they knew is gone
    keptTexts_.clear();
    if (const std::string& path = window_.session().path(); !path.empty()) {
        keptTexts_ = drawing::readTexts(path);
    }
    savedTexts_ = keptTexts_;
    chosen_.clear();
    readBackgrounds();
}

void Workbench::recoverTexts(const std::string& copy) {
    keptTexts_ = drawing::readTexts(copy);
    savedTexts_.clear();
    readBackgrounds();
}

} // namespace fenmark::desk
