// Finds objects by name or number: a line to type in and the list of what was found.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/name_search.h"
#include "drawing/drawing.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace fenmark::desk {

// Arrows go through the list from the line, and Enter shows the object; so does a click. Escape leaves.
class FindPanel : public QWidget {
    Q_OBJECT

  public:
    explicit FindPanel(const Texts& texts, QWidget* parent = nullptr);

    // The drawing changed, or is another one: names are read anew when they are next asked for.
    void setDrawing(const drawing::Drawing* drawing);
    void retranslate();
    void startTyping();

    QLineEdit* edit() const { return edit_; }
    QListWidget* list() const { return list_; }
    QString countText() const { return count_->text(); }

  signals:
    void objectChosen(const fenmark::desk::PlanObject& object);
    void left();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void search();
    void choose(int row);

    const Texts& texts_;
    const drawing::Drawing* drawing_ = nullptr;
    std::unique_ptr<NameSearch> names_;
    std::vector<PlanObject> found_;
    QLineEdit* edit_;
    QLabel* count_;
    QListWidget* list_;
};

} // namespace fenmark::desk
