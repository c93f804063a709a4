// A section with its tools.
#include "desk/window/section_panel.h"

#include "desk/plan/plan_text.h"

#include <QVBoxLayout>

#include <array>

namespace fenmark::desk {

namespace {

constexpr std::array kTimes{1, 2, 5, 10, 20, 50, 100};

} // namespace

SectionPanel::SectionPanel(SectionView* view, const Texts& texts, QWidget* parent)
    : QWidget(parent), view_(view), crossSections_(qobject_cast<CrossSectionView*>(view)), texts_(texts),
      exaggerationName_(new QLabel(this)), exaggeration_(new QComboBox(this)), print_(new QAction(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    auto* tools = new QToolBar(this);
    tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
    layout->addWidget(tools);
    layout->addWidget(view, 1);
    exaggeration_->addItem(QString(), 0.0);
    for (const int times : kTimes) {
        exaggeration_->addItem(QString(), static_cast<double>(times));
    }
    tools->addWidget(exaggerationName_);
    tools->addWidget(exaggeration_);
    connect(exaggeration_, &QComboBox::currentIndexChanged, this,
            [this] { view_->setExaggeration(exaggeration_->currentData().toDouble()); });
    if (crossSections_ != nullptr) {
        exaggeration_->setCurrentIndex(1); // cross-sections are drawn as they are
        tools->addSeparator();
        previous_ = tools->addAction(QStringLiteral("◀"));
        sections_ = new QComboBox(this);
        sections_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        tools->addWidget(sections_);
        next_ = tools->addAction(QStringLiteral("▶"));
        connect(previous_, &QAction::triggered, this, [this] {
            if (crossSections_->current() > 0) {
                crossSections_->showSection(crossSections_->current() - 1);
            }
        });
        connect(next_, &QAction::triggered, this,
                [this] { crossSections_->showSection(crossSections_->current() + 1); });
        connect(sections_, &QComboBox::activated, this,
                [this](int index) { crossSections_->showSection(static_cast<std::size_t>(index)); });
        connect(crossSections_, &CrossSectionView::sectionShown, this, [this] {
            const QStringList names = crossSections_->names();
            QStringList shown;
            for (int i = 0; i < sections_->count(); ++i) {
                shown << sections_->itemText(i);
            }
            if (shown != names) {
                sections_->clear();
                sections_->addItems(names);
            }
            sections_->setCurrentIndex(names.isEmpty() ? -1 : static_cast<int>(crossSections_->current()));
            previous_->setEnabled(crossSections_->current() > 0);
            next_->setEnabled(crossSections_->current() + 1 < crossSections_->count());
        });
    }
    tools->addSeparator();
    tools->addAction(print_);
    connect(print_, &QAction::triggered, this, &SectionPanel::printWanted);
    setFocusProxy(view);
    retranslate();
}

void SectionPanel::retranslate() {
    exaggerationName_->setText(workText(texts_, WorkText::Exaggeration) + QLatin1Char(' '));
    exaggeration_->setAccessibleName(workText(texts_, WorkText::Exaggeration));
    exaggeration_->setItemText(0, workText(texts_, WorkText::ExaggerationFit));
    for (std::size_t i = 0; i < kTimes.size(); ++i) {
        exaggeration_->setItemText(static_cast<int>(i) + 1,
                                   workText(texts_, WorkText::ExaggerationTimes).arg(kTimes[i]));
    }
    print_->setText(workText(texts_, WorkText::PrintShort));
    if (crossSections_ != nullptr) {
        previous_->setToolTip(workText(texts_, WorkText::PreviousSection));
        next_->setToolTip(workText(texts_, WorkText::NextSection));
    }
    view_->setAccessibleName(
        workText(texts_, crossSections_ != nullptr ? WorkText::CrossPanel : WorkText::ProfilePanel));
    view_->update();
}

} // namespace fenmark::desk
