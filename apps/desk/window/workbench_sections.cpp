// The sections beside the plan: they follow the selection, and the selection follows them.
#include "desk/window/main_window.h"
#include "desk/window/workbench.h"

namespace fenmark::desk {

void Workbench::makeSectionDocks() {
    profile_ = new ProfileView(sections_, window_.texts());
    crossSections_ = new CrossSectionView(sections_, window_.texts());
    profilePanel_ = new SectionPanel(profile_, window_.texts());
    crossPanel_ = new SectionPanel(crossSections_, window_.texts());
    QDockWidget* before = window_.dock(Text::LotPanel);
    for (const auto& [text, panel, name] : {std::tuple(WorkText::ProfilePanel, profilePanel_, "profileDock"),
                                            std::tuple(WorkText::CrossPanel, crossPanel_, "crossSectionDock")}) {
        auto* dock = new QDockWidget(&window_);
        dock->setObjectName(QLatin1String(name));
        dock->setWidget(panel);
        window_.addDockWidget(Qt::BottomDockWidgetArea, dock);
        window_.tabifyDockWidget(before, dock);
        dock->hide(); // until it is asked for
        sectionDocks_.emplace_back(dock, text);
        growWhenShown(*dock, 0.55);
        connect(dock, &QDockWidget::visibilityChanged, this, [this](bool shown) {
            if (shown) {
                window_.guarded([this] { showSections(); });
            }
        });
    }
    connect(profilePanel_, &SectionPanel::printWanted, this, [this] { showPaper(PaperKind::Profile); });
    connect(crossPanel_, &SectionPanel::printWanted, this, [this] { showPaper(PaperKind::CrossSections); });
    connect(profile_, &SectionView::placeChosen, this,
            [this](qulonglong alignment, double station, double offset, double height) {
                choosePlace(alignment, station, offset, height, FigureStyle::Longitudinal);
            });
    connect(crossSections_, &SectionView::placeChosen, this,
            [this](qulonglong alignment, double station, double offset, double height) {
                choosePlace(alignment, station, offset, height, FigureStyle::CrossSection);
            });
}

void Workbench::makeSectionMenu() {
    QMenu* menu = addMenu(nullptr, WorkText::SectionMenu);
    int key = Qt::Key_4;
    for (const auto& [dock, text] : sectionDocks_) {
        addAction(menu, text, QKeySequence(Qt::CTRL | Qt::Key(key++)), [dock = dock] {
            dock->show();
            dock->raise();
            dock->widget()->setFocus();
        });
    }
}

// What nobody looks at is not worked out: finding the results walks through the drawing.
void Workbench::showSections() {
    if (window_.session().isRunning() || (!profile_->isVisible() && !crossSections_->isVisible())) {
        return;
    }
    const auto& selected = window_.plan().selected();
    auto alignment = sections_.alignmentOf(selected);
    if (!alignment && profile_->alignment() && *profile_->alignment() < window_.session().drawing().alignmentCount()) {
        alignment = profile_->alignment(); // the one that was looked at stays
    }
    if (profile_->isVisible()) {
        profile_->show(alignment, selected);
    }
    if (crossSections_->isVisible()) {
        crossSections_->show(alignment, selected);
    }
}

void Workbench::choosePlace(std::size_t alignment, double station, double offset, double height, FigureStyle style) {
    window_.guarded([&] {
        const drawing::Drawing& drawing = window_.session().drawing();
        if (window_.session().isRunning() || alignment >= drawing.alignmentCount()) {
            return;
        }
        const auto at = drawing.geometry(alignment).pointAt(station, offset);
        if (!at) {
            return;
        }
        auto found = resultAt(drawing, window_.plan().index(), style, *at, height);
        if (!found) { // the ground of a profile may come from cross-sections
            found = resultAt(drawing, window_.plan().index(), FigureStyle::CrossSection, *at, height);
        }
        if (found) {
            window_.plan().select(PlanObject{PlanObject::Kind::Entity, *found, {}}, true);
        }
    });
}

} // namespace fenmark::desk
