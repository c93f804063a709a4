// A section with its tools: the scale of the heights, printing, and for cross-sections the way from one to the next.
#pragma once

#include "desk/sections/section_view.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QToolBar>
#include <QWidget>

namespace fenmark::desk {

class SectionPanel : public QWidget {
    Q_OBJECT

  public:
    // The panel takes the view.
    SectionPanel(SectionView* view, const Texts& texts, QWidget* parent = nullptr);

    QComboBox& exaggeration() { return *exaggeration_; }
    void retranslate();

  signals:
    void printWanted();

  private:
    SectionView* view_;
    CrossSectionView* crossSections_; // the view, if it is one
    const Texts& texts_;
    QLabel* exaggerationName_;
    QComboBox* exaggeration_;
    QAction* print_;
    QComboBox* sections_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* next_ = nullptr;
};

} // namespace fenmark::desk
