// The panels around the plan: tree of alignments, layers, properties.
#pragma once

#include "desk/language/texts.h"
#include "desk/plan/plan_object.h"
#include "desk/window/properties.h"
#include "drawing/drawing.h"

#include <QListWidget>
#include <QTreeWidget>

#include <optional>
#include <vector>

namespace fenmark::desk {

inline constexpr int kLeastSideWidth = 200; // pixels, of the panels beside the plan: names and values can be read

// Sites, their alignments, and the elements of these with length, radius and station.
class SitesPanel : public QTreeWidget {
    Q_OBJECT

  public:
    explicit SitesPanel(const Texts& texts, QWidget* parent = nullptr);

    void fill(const drawing::Drawing& drawing);
    // Marks the object's row, or none.
    void mark(const std::optional<PlanObject>& object);

  signals:
    void chosen(const fenmark::desk::PlanObject& object);
    void activatedObject(const fenmark::desk::PlanObject& object);

  private:
    std::optional<PlanObject> objectOf(const QTreeWidgetItem* item) const;

    const Texts& texts_;
    std::vector<QTreeWidgetItem*> alignments_; // by index
    bool marking_ = false;
};

// Layers with a box each, their colours and the numbers of their objects: ticked layers are shown.
class LayersPanel : public QListWidget {
    Q_OBJECT

  public:
    explicit LayersPanel(const Texts& texts, QWidget* parent = nullptr);

    // Boxes of layers that were there keep their ticks, unless all are to be shown.
    void fill(const drawing::Drawing& drawing, bool showAll);
    std::vector<bool> hidden() const;
    void setAllShown(bool shown);
    void showLayer(std::size_t layer);
    void showOnly(std::size_t layer);
    void hideLayer(std::size_t layer);

  signals:
    void shownChanged();
    void renameAsked(std::size_t layer);
    void removalAsked(std::size_t layer);

  protected:
    void keyPressEvent(QKeyEvent* event) override; // F2 and Delete

  private:
    const Texts& texts_;
    std::vector<std::uint64_t> ids_; // of the layers, by row
    bool filling_ = false;
};

class PropertiesPanel : public QTreeWidget {
    Q_OBJECT

  public:
    explicit PropertiesPanel(const Texts& texts, QWidget* parent = nullptr);

    void show(const drawing::Drawing& drawing, const std::optional<PlanObject>& object);
    void show(const drawing::Drawing& drawing, const std::vector<PlanObject>& several);

  protected:
    void keyPressEvent(QKeyEvent* event) override; // copies the rows

  private:
    void showLines(const std::vector<Property>& lines);

    const Texts& texts_;
};

} // namespace fenmark::desk
