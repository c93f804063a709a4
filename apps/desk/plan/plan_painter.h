// Draws what is in view of a drawing, and no more.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/plan_object.h"
#include "desk/plan/plan_text.h"
#include "desk/plan/view_transform.h"
#include "drawing/drawing.h"

#include <QImage>
#include <QPainter>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace fenmark::desk {

class PlanPainter {
  public:
    PlanPainter(const drawing::Drawing& drawing, const PlanIndex& index) : drawing_(drawing), index_(index) {}

    // The whole view as a picture of its size in device pixels. An image of the right size is used again.
    void paint(QImage& image, const ViewTransform& view, const PlanLook& look, double devicePixelRatio,
               const QFont& font);
    // True if the last paint left out the names of entities because they are too many for every frame of a movement.
    bool leftManyNames() const { return leftManyNames_; }
    // These names on a transparent picture of the same view, to be laid over the last paint when the view rests.
    QImage paintManyNames(const ViewTransform& view, double devicePixelRatio, const QFont& font);
    // Paints below all else, on the paper; none for an empty function.
    using Underlay = std::function<void(QPainter& painter, const ViewTransform& view)>;
    void setUnderlay(Underlay underlay) { underlay_ = std::move(underlay); }

    // Marks one object on top of a painted view: the selected one, or that under the pointer.
    void paintSelected(QPainter& painter, const ViewTransform& view, const PlanObject& object) const;
    void paintHovered(QPainter& painter, const ViewTransform& view, const PlanObject& object) const;

    // Objects that the last paint drew.
    std::size_t drawn() const { return drawn_; }
    // Names for which it found no free place.
    std::size_t namesLeftOut() const { return namesLeftOut_; }
    // Lines and areas under so many others that it did not draw them.
    std::size_t linesLeftOut() const { return linesLeftOut_; }
    // Lines of alignments that it drew thin, since there are so many.
    std::size_t linesDrawnThin() const { return linesDrawnThin_; }

  private:
    void collect(const ViewTransform& view, const PlanLook& look, QImage& image);
    void thinLines(const ViewTransform& view);
    void paintLines(QPainter& painter, const ViewTransform& view) const;
    void paintMarkers(QImage& image, const ViewTransform& view) const;
    void paintAlignments(QPainter& painter, const ViewTransform& view, const PlanLook& look, LabelRoom& room);
    void paintMarked(QPainter& painter, const ViewTransform& view, const PlanObject& object, const QColor& mark,
                     double width) const;
    void labelEntities(QPainter& painter, const ViewTransform& view, LabelRoom& room);
    void labelLots(QPainter& painter, const ViewTransform& view, LabelRoom& room);
    // Keeps names off symbols, lines and alignments.
    void keepFree(const ViewTransform& view, const PlanLook& look, LabelRoom& room) const;
    // Alignments in view whose stations are named: the chosen one, or one of several that run on one line.
    std::vector<std::size_t> alignmentsToName(const std::vector<std::size_t>& seen, const PlanLook& look) const;

    // The colour of a figure: that of its layer, or of its kind.
    QRgb inkOf(const PlanFigure& figure) const { return inks_[figure.layer][figure.style]; }
    QColor inkOf(const drawing::Alignment& alignment, drawing::ElementType type) const;

    const drawing::Drawing& drawing_;
    const PlanIndex& index_;
    Underlay underlay_;
    std::vector<std::array<QRgb, kFigureStyles>> inks_; // by layer, of the paint under way
    std::size_t drawn_ = 0;
    std::size_t namesLeftOut_ = 0;
    std::size_t linesLeftOut_ = 0;
    std::size_t linesDrawnThin_ = 0;
    bool leftManyNames_ = false;
    std::optional<LabelRoom> room_;   // what the last paint left free
    PlanLook look_;                   // of the last paint
    std::vector<PlanFigure> lines_;   // in view and larger than a dot
    std::vector<PlanFigure> markers_; // points in view, if they are few enough to be more than dots
};

} // namespace fenmark::desk
