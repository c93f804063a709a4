// The plan of a drawing as a widget: pan, zoom, selection, and where the pointer is.
//
// What is drawn is kept as a picture and drawn anew when the view or the drawing changes; the selection, the object under
// the pointer and the furniture (north arrow, scale bar) lie on top of it.
#pragma once

#include "desk/plan/plan_index.h"
#include "desk/plan/plan_object.h"
#include "desk/plan/plan_painter.h"
#include "desk/plan/plan_tool.h"
#include "desk/plan/view_transform.h"
#include "drawing/drawing.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace fenmark::desk {

class PlanView : public QWidget {
    Q_OBJECT

  public:
    explicit PlanView(QWidget* parent = nullptr);

    // Shows another drawing from its whole extent; null shows none. The drawing must outlive the view.
    void setDrawing(const drawing::Drawing* drawing);
    // The drawing grew or shrank: what is shown and selected follows.
    void drawingChanged();
    // While a command changes the drawing, the last picture stands and nothing is asked of the drawing.
    void setFrozen(bool frozen);

    const ViewTransform& view() const { return view_; }
    const PlanIndex& index() const { return index_; }
    const PlanLook& look() const { return look_; }
    void setLook(const PlanLook& look);

    const std::optional<PlanObject>& selected() const { return selected_; }
    // Brings the object into view if it is not, on demand.
    void select(const std::optional<PlanObject>& object, bool bringIntoView = false);
    // All that is selected, the object of selected() among it.
    const std::vector<PlanObject>& selection() const { return selection_; }
    void selectSeveral(std::vector<PlanObject> objects);
    // Adds the object to the selection, or takes it out.
    void toggle(const PlanObject& object);
    // Selects everything that is shown.
    void selectAllShown();
    // Brings an object into view and lights it, whatever is selected.
    void lookAt(const PlanObject& object);
    // The object that a click at the pixel takes.
    std::optional<PlanObject> objectAtPixel(const QPointF& pixel) const;
    // Names that the picture has no room for.
    std::size_t namesLeftOut() const { return painter_ ? painter_->namesLeftOut() : 0; }
    std::size_t linesLeftOut() const { return painter_ ? painter_->linesLeftOut() : 0; }
    // Lines of alignments that the last paint drew thin.
    std::size_t linesDrawnThin() const { return painter_ ? painter_->linesDrawnThin() : 0; }
    // Say in the user's language how many names, and lines and areas, were left out; %1 is their number.
    void setLeftOutTexts(const QString& names, const QString& lines) {
        namesLeftOutText_ = names;
        linesLeftOutText_ = lines;
    }

    // The object under the pointer, which is lit up.
    const std::optional<PlanObject>& hovered() const { return hovered_; }
    // What a tip says of the object under the pointer.
    void setDescriber(std::function<QString(const PlanObject&)> describe) { describe_ = std::move(describe); }

    // The tool that takes clicks and keys in place of the selection; null for none. It must outlive its use.
    void setTool(PlanTool* tool);
    const PlanTool* tool() const { return tool_; }

    // What lies under the plan. Ask for it anew when it has changed.
    void setUnderlay(PlanPainter::Underlay underlay);

    // Lines of text in the middle of an empty plan.
    void setHint(const QString& large, const QString& small);

    // Draws the picture at once if it is out of date; the objects drawn.
    std::size_t render();
    // Names of many objects are placed when the view rests, and stay where they are while it is panned. This places
    // them at once.
    void placeNames();

    QSize sizeHint() const override { return {800, 600}; }
    QSize minimumSizeHint() const override { return {200, 150}; }

  public slots:
    void fitAll();
    void fitSelected();
    void zoomIn() { zoomMiddle(kZoomStep); }
    void zoomOut() { zoomMiddle(1.0 / kZoomStep); }
    void startZoomWindow(); // the next drag with the left button names the window
    void selectNext(int step);
    void panPixels(double dx, double dy);
    void zoomAt(const QPointF& pixel, double factor);

  signals:
    void selectionChanged();
    void activated(); // the selected object is to be looked at more closely
    void viewChanged();
    // The pointer's place in the drawing, x east and y north.
    void pointerMoved(double x, double y);
    void pointerLeft();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    static constexpr double kZoomStep = 1.25;

    enum class Drag { None, Press, Pan, Window, Select };

    void hoverAt(const QPointF& pixel);
    void setHovered(const std::optional<PlanObject>& object);
    QRect pixelsAround(const PlanObject& object) const;
    bool ready() const { return drawing_ != nullptr && !frozen_; }
    void viewMoved();
    void paintNames(QPainter& painter);
    void zoomMiddle(double factor);
    void clickAt(const QPointF& pixel, bool toggles);
    void selectBox(const QPointF& from, const QPointF& to);
    void dropWhatIsGone();
    void updateCursor();
    bool toolKey(int key);
    bool bringIntoView(const PlanObject& object);
    bool stepSelection(int step, bool around);

    const drawing::Drawing* drawing_ = nullptr;
    PlanIndex index_;
    std::optional<PlanPainter> painter_;
    PlanLook look_;
    ViewTransform view_;
    QImage picture_;
    QImage names_; // of many objects, over the picture; null for none
    ViewTransform namesView_;
    QTimer rest_;
    bool dirty_ = true;
    bool frozen_ = false;
    bool fitPending_ = true; // fit as soon as the widget has its size
    std::optional<PlanObject> selected_;
    std::vector<PlanObject> selection_;
    std::optional<PlanObject> hovered_;
    std::function<QString(const PlanObject&)> describe_;
    PlanTool* tool_ = nullptr;
    PlanPainter::Underlay underlay_;
    QString hintLarge_;
    QString hintSmall_;
    QString namesLeftOutText_;
    QString linesLeftOutText_;

    Drag drag_ = Drag::None;
    Qt::MouseButton dragButton_ = Qt::NoButton;
    QPointF dragFrom_;
    QPointF dragLast_;
    bool windowArmed_ = false;
    bool spaceHeld_ = false;
    std::optional<QPointF> lastClick_; // a further click at the same place takes the next object there
    std::size_t clickRound_ = 0;
};

} // namespace fenmark::desk
